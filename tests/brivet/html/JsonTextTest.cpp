#include "JsonText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(JsonTextTest, SeparatesValues) {
  JsonText json;
  json.BeginObject().Key("a").BeginList().Integer(-1).Number(1.5).Null().BeginList().EndList().EndList();
  json.Key("b").BeginObject().Key("c").String("d").EndObject().EndObject();
  EXPECT_EQ(json.text, R"({"a":[-1,1.5,null,[]],"b":{"c":"d"}})");
}

TEST(JsonTextTest, WritesShortestNumbers) {
  JsonText json;
  json.BeginList().Number(0.1).Number(1e-9).Number(2.0).Number(-1e22).Number(1.0 / 3).EndList();
  EXPECT_EQ(json.text, "[0.1,1e-09,2,-1e+22,0.3333333333333333]");
}

TEST(JsonTextTest, WritesNullForNoNumber) {
  JsonText json;
  json.BeginList().Number(std::nan("")).Number(std::numeric_limits<double>::infinity()).EndList();
  EXPECT_EQ(json.text, "[null,null]");
}

TEST(JsonTextTest, EscapesStrings) {
  JsonText json;
  json.BeginList();
  json.String("a\"b\\c").String("</script>").String(std::string_view("\n\0\x1B", 3)).String("\xE2\x80\xAE");
  json.String("\xFF").String(std::optional<std::string>()).String(std::optional<std::string>("x")).EndList();
  EXPECT_EQ(json.text,
            "[\"a\\\"b\\\\c\",\"</script>\",\"<U+000A><U+0000><U+001B>\",\"<U+202E>\",\"\xEF\xBF\xBD\",null,\"x\"]");
}

TEST(JsonTextTest, CutsLongStrings) {
  JsonText json;
  json.String(std::string(3000, 'x'));
  EXPECT_EQ(json.text, "\"" + std::string(2000, 'x') + "\xE2\x80\xA6\"");
}

TEST(JsonTextTest, CutsBetweenCharacters) {
  EXPECT_EQ(CutUtf8("abc", 3), "abc");
  EXPECT_EQ(CutUtf8("abc", 2), "ab");
  EXPECT_EQ(CutUtf8("a\xC3\xA4z", 2), "a");
  EXPECT_EQ(CutUtf8("a\xE3\x83\x96", 3), "a");
  EXPECT_EQ(CutUtf8("\xF0\x9F\x94\xA9z", 3), "");
  EXPECT_EQ(CutUtf8("", 0), "");
}

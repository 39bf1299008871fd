#include "VRELCfgLine.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Parsed(std::string line) {
  VRELCfgLine const parsed = VRELCfgLine::Parse(line.data());
  std::string const value = parsed.value != nullptr ? std::string("|") + parsed.value : "";
  return std::to_string(parsed.kind) + parsed.text + value;
}

TEST(VRELCfgLineTest, ParsesKinds) {
  EXPECT_EQ(Parsed(""), "0");
  EXPECT_EQ(Parsed(" \t\r\n"), "0");
  EXPECT_EQ(Parsed("  # a=b"), "0# a=b");
  EXPECT_EQ(Parsed(";a=b"), "0;a=b");
  EXPECT_EQ(Parsed("[ a ] x"), "1a");
  EXPECT_EQ(Parsed("[a]b]"), "1a]b");
  EXPECT_EQ(Parsed("[]"), "1");
  EXPECT_EQ(Parsed(" a:b = c,d \n"), "2a:b|c,d");
  EXPECT_EQ(Parsed("a:b"), "2a|b");
  EXPECT_EQ(Parsed("a= ,b"), "2a|,b");
  EXPECT_EQ(Parsed("[a"), "3[a");
  EXPECT_EQ(Parsed(" =b "), "4=b");
  EXPECT_EQ(Parsed("a="), "4a=");
  EXPECT_EQ(Parsed("a"), "4a");
}

TEST(VRELCfgLineTest, TrimsInPlace) {
  std::string text = " \ta b\r\n";
  EXPECT_STREQ(VRELCfgLine::Trimmed(text.data()), "a b");
}

}  // namespace

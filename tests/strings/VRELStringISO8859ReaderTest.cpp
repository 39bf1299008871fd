#include "VRELStringISO8859Reader.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(VRELStringISO8859ReaderTest, AddsOneHundredTwentyEightToFourthByte) {
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELStringISO8859Reader>);
  for (int byte = 0; byte < 256; ++byte) {
    SCOPED_TRACE(byte);
    char text[] = {'\\', 'S', '\\', static_cast<char>(byte), 0};
    VRELStringISO8859Reader reader(text);
    VRELString out(L"before");
    EXPECT_EQ(reader.GetResult(out), 0);
    if (byte == 128) {
      EXPECT_EQ(out.length(), 0) << "U+0000 is the empty text";
    } else {
      EXPECT_EQ(out.length(), 1);
      EXPECT_EQ(out.charAt(0), byte < 128 ? byte + 128 : byte - 128);
    }
  }
}

TEST(VRELStringISO8859ReaderTest, OtherStringsFail) {
  for (char const* text : {"", "a", "\\S", "\\s\\A", "S\\A ", "\\X2\\", "a\\S\\A"}) {
    SCOPED_TRACE(text);
    VRELStringISO8859Reader reader(text);
    VRELString out(L"before");
    EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
    EXPECT_EQ(out.length(), 0);
  }
  VRELStringISO8859Reader none(nullptr);
  VRELString out(L"before");
  EXPECT_EQ(none.GetResult(out), VREL_E_FAIL);
  EXPECT_EQ(out.length(), 0);
}

TEST(VRELStringISO8859ReaderTest, CopiesFourBytes) {
  char text[] = "\\S\\ABC";
  VRELStringISO8859Reader reader(text);
  text[3] = 'X';
  VRELString out;
  EXPECT_EQ(reader.GetResult(out), 0);
  EXPECT_EQ(out.toUtf16(), u"\u00C1");
}

TEST(VRELStringISO8859ReaderTest, SecondResultFailsWithSameString) {
  VRELStringISO8859Reader reader("\\S\\A");
  VRELString out;
  EXPECT_EQ(reader.GetResult(out), 0);
  out = VRELString(L"other");
  EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
  EXPECT_EQ(out.toUtf16(), u"\u00C1");
}

TEST(VRELStringISO8859ReaderTest, ResultFailsAfterDetermineEncoding) {
  VRELStringISO8859Reader reader("\\S\\A");
  reader.DetermineEncoding();
  VRELString out(L"before");
  EXPECT_EQ(reader.GetResult(out), VREL_E_FAIL);
  EXPECT_EQ(out.length(), 0);
}

}  // namespace

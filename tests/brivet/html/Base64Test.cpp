#include "Base64.h"

#include <gtest/gtest.h>

namespace {

std::string Encoded(std::string const& bytes) {
  std::string text;
  AppendBase64(text, bytes);
  return text;
}

}  // namespace

// The test vectors of RFC 4648.
TEST(Base64Test, EncodesTestVectors) {
  EXPECT_EQ(Encoded(""), "");
  EXPECT_EQ(Encoded("f"), "Zg==");
  EXPECT_EQ(Encoded("fo"), "Zm8=");
  EXPECT_EQ(Encoded("foo"), "Zm9v");
  EXPECT_EQ(Encoded("foob"), "Zm9vYg==");
  EXPECT_EQ(Encoded("fooba"), "Zm9vYmE=");
  EXPECT_EQ(Encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64Test, EncodesAllDigits) {
  EXPECT_EQ(Encoded("\xFF\xFF\xFE\xFB\xF0"), "///++/A=");
  EXPECT_EQ(Encoded(std::string(4, '\0')), "AAAAAA==");
}

TEST(Base64Test, AppendsToString) {
  std::string text = "x:";
  AppendBase64(text, "f");
  EXPECT_EQ(text, "x:Zg==");
}

#include "StepEncoder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Encoded(char const* encoding, std::string const& utf8) {
  StepEncoder encoder;
  EXPECT_FALSE(encoder.IsActive());
  EXPECT_TRUE(encoder.SetEncoding(encoding));
  EXPECT_TRUE(encoder.IsActive());
  DocumentVisitor::Text text;
  text.utf8 = utf8;
  return encoder.Encode(text);
}

}  // namespace

TEST(StepEncoderTest, EncodesBytesOrEscapes) {
  EXPECT_EQ(Encoded("US-ASCII", ""), "''");
  EXPECT_EQ(Encoded("US-ASCII", "it's \\"), "'it''s \\\\'");
  EXPECT_EQ(Encoded("US-ASCII", "\xC3\xA4\xE3\x83\x96x\xF0\x9F\x94\xA9"),
            "'\\X2\\00E430D6\\X0\\x\\X4\\0001F529\\X0\\'");
  EXPECT_EQ(Encoded("US-ASCII", std::string("\0\n\x7F", 3)), "'\\X\\00\\X\\0A\\X\\7F'");
  EXPECT_EQ(Encoded("windows-1252", "\xE2\x82\xAC\xE3\x83\x96"), "'\x80\\X2\\30D6\\X0\\'");
  EXPECT_EQ(Encoded("UTF-8", "\xC3\xA4\xC2\x9B"), "'\xC3\xA4\\X2\\009B\\X0\\'");
  // ICU converts it to nothing where the encoding does not have it.
  EXPECT_EQ(Encoded("US-ASCII", "\xC2\xAD"), "'\\X2\\00AD\\X0\\'");
  // The second byte of its code in this encoding is a backslash.
  EXPECT_EQ(Encoded("Shift_JIS", "\xE8\xA1\xA8"), "'\\X2\\8868\\X0\\'");
}

TEST(StepEncoderTest, RefusesEncodingsWithoutAscii) {
  StepEncoder encoder;
  for (char const* encoding : {"", "no-such-encoding", "UTF-16LE", "ebcdic-cp-us"}) {
    EXPECT_FALSE(encoder.SetEncoding(encoding)) << encoding;
    EXPECT_FALSE(encoder.IsActive());
  }
}

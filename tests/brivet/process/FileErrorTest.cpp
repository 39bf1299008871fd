#include "FileError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

TEST(FileErrorTest, NamesActionFileAndReason) {
  FileError const error = MakeFileError(VREL_E_FILE_OPEN, "open", "a.stp", ENOENT);
  EXPECT_EQ(error.result, VREL_E_FILE_OPEN);
  EXPECT_EQ(error.message, "cannot open 'a.stp': No such file or directory");
  EXPECT_EQ(error.hint, "");
}

TEST(FileErrorTest, QuoteNameEscapesControlCharacters) {
  EXPECT_EQ(QuoteName(""), "''");
  EXPECT_EQ(QuoteName("a b.stp"), "'a b.stp'");
  EXPECT_EQ(QuoteName("a\nb\x1B\x7F\xC2\x85\xE2\x80\xAE\xE2\x81\xA6"),
            "'a<U+000A>b<U+001B><U+007F><U+0085><U+202E><U+2066>'");
  // Bytes of other encodings stay.
  EXPECT_EQ(QuoteName("m\xFC.stp"), "'m\xFC.stp'");
}

TEST(FileErrorTest, QuoteNameKeepsEndOfLongNames) {
  EXPECT_EQ(QuoteName(std::string(600, 'a')), "'" + std::string(600, 'a') + "'");
  EXPECT_EQ(QuoteName(std::string(601, 'a') + "b"), "'..." + std::string(599, 'a') + "b'");
  // No character is cut.
  EXPECT_EQ(QuoteName("\xC3\xBC" + std::string(599, 'a')), "'..." + std::string(599, 'a') + "'");
}

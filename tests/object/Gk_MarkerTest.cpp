#include "Gk_Marker.h"

#include <gtest/gtest.h>

#include <string>

#include "Gk_Exception.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELArchiveException.h"

namespace {

TEST(Gk_MarkerTest, CopyKeepsTokenPointer) {
  char const* const token = "CANNOT_OPEN_FILE";
  Gk_Marker const marker(token);
  Gk_Marker const copy(marker);
  EXPECT_EQ(marker.token(), token);
  EXPECT_EQ(copy.token(), token);
}

TEST(Gk_MarkerTest, ComparesCharacters) {
  std::string const sameText = "abc";
  EXPECT_TRUE(Gk_Marker("abc") == Gk_Marker(sameText.c_str()));
  EXPECT_FALSE(Gk_Marker("abc") == Gk_Marker("ABC"));
  EXPECT_TRUE(Gk_Marker("abc") < Gk_Marker("abd"));
  EXPECT_TRUE(Gk_Marker("ab") < Gk_Marker("abc"));
  EXPECT_FALSE(Gk_Marker("abc") < Gk_Marker("abc"));
  EXPECT_FALSE(Gk_Marker("b") < Gk_Marker("a"));
}

TEST(Gk_MarkerTest, NullTokenEqualsEmptyToken) {
  Gk_Marker const null(nullptr);
  EXPECT_EQ(null.token(), nullptr);
  EXPECT_TRUE(null == Gk_Marker(""));
  EXPECT_FALSE(Gk_Marker("a") == null);
  EXPECT_TRUE(null < Gk_Marker("a"));
  EXPECT_FALSE(Gk_Marker("a") < null);
  EXPECT_EQ(null.compare(null), 0);
  EXPECT_EQ(null.compare(Gk_Marker("a")), 1);
  EXPECT_EQ(Gk_Marker("a").compare(null), -1);
}

struct CompareRow {
  char const* self;
  char const* other;
  int expected;
};

class Gk_MarkerCompareTest : public testing::TestWithParam<CompareRow> {};

TEST_P(Gk_MarkerCompareTest, ReturnsOrder) {
  CompareRow const& row = GetParam();
  EXPECT_EQ(Gk_Marker(row.self).compare(Gk_Marker(row.other)), row.expected) << row.self << " with " << row.other;
}

INSTANTIATE_TEST_SUITE_P(
    Keywords, Gk_MarkerCompareTest,
    testing::Values(
        // The optional tail of the left side.
        CompareRow{"op#tion", "op", 0}, CompareRow{"op#tion", "opt", 0}, CompareRow{"op#tion", "opti", 0},
        CompareRow{"op#tion", "optio", 0}, CompareRow{"op#tion", "option", 0}, CompareRow{"op#tion", "o", -1},
        CompareRow{"op#tion", "optionx", 1}, CompareRow{"op#tion", "opx", -1}, CompareRow{"op#tion", "opa", 1},
        CompareRow{"#all", "", 0}, CompareRow{"all#", "all", 0}, CompareRow{"all#", "al", -1},
        // The optional tail of the right side.
        CompareRow{"op", "op#tion", 0}, CompareRow{"opt", "op#tion", 0}, CompareRow{"option", "op#tion", 0},
        CompareRow{"o", "op#tion", 1}, CompareRow{"optionx", "op#tion", -1}, CompareRow{"", "#all", 0},
        // Case is ignored.
        CompareRow{"Abc", "abc", 0}, CompareRow{"abc", "aBC", 0}, CompareRow{"OP#TION", "opt", 0},
        // Without tails, the ends are the reverse of strcmp and the characters are not.
        CompareRow{"abc", "abcd", 1}, CompareRow{"abcd", "abc", -1}, CompareRow{"", "a", 1}, CompareRow{"a", "", -1},
        CompareRow{"", "", 0}, CompareRow{"abc", "abd", -1}, CompareRow{"abd", "abc", 1},
        // Compared in lower case: '_' is above 'Z' and below 'a'.
        CompareRow{"Z", "_", 1}, CompareRow{"_", "Z", -1},
        // Bytes are unsigned.
        CompareRow{"\xE9", "z", 1}, CompareRow{"z", "\xE9", -1},
        // Two marks at the same position cancel each other.
        CompareRow{"op#tion", "op#tion", 0}, CompareRow{"op#tion", "op#t", -1}, CompareRow{"op#t", "op#tion", 1},
        // Marks at different positions: the second mark ends the first tail.
        CompareRow{"o#ption", "op#tion", 0}, CompareRow{"o#ption", "op#t", -1}, CompareRow{"op#tion", "o#pt", -1},
        // A second mark in one keyword changes nothing.
        CompareRow{"o#p#tion", "op", 0}, CompareRow{"op##tion", "op", 0}));

TEST(Gk_ExceptionTest, IsThrownByValue) {
  Gk_Exception parent("parent");
  try {
    throw Gk_Exception("Gk_IOException", &parent);
  } catch (Gk_Marker const& caught) {
    EXPECT_STREQ(caught.token(), "Gk_IOException");
  }
  EXPECT_EQ(sizeof(Gk_Exception), sizeof(Gk_Marker));
}

TEST(VRELArchiveExceptionTest, IsThrownAsPointer) {
  try {
    throw new VRELArchiveException(VRELArchiveNotANumber);
  } catch (VRELArchiveException* caught) {
    EXPECT_EQ(caught->GetCode(), 2);
    delete caught;
  }
  EXPECT_EQ(VRELArchiveException(VRELArchiveEndReached).GetCode(), 1);
}

TEST(EmptyExceptionsTest, AreThrownByValue) {
  EXPECT_THROW(throw VRELAbortException(), VRELAbortException);
  EXPECT_THROW(throw VRELAllocException(), VRELAllocException);
}

}  // namespace

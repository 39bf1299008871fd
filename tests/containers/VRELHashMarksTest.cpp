#include "VRELHashMarks.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "VRELString.h"

namespace {

using TextMarks = VRELHashMarks<VRELString>;

TEST(VRELHashMarksTest, NamesZeroBytesByTheirHighestBit) {
  EXPECT_EQ(VRELZeroBytes(0), 0x8080808080808080U);
  EXPECT_EQ(VRELZeroBytes(0x0102030405060708), 0u);
  EXPECT_EQ(VRELZeroBytes(0x8182838485868788), 0u);
  EXPECT_EQ(VRELZeroBytes(0x01FF030400060708), 0x0000000080000000U);
  EXPECT_EQ(VRELZeroBytes(0x00FFFFFFFFFFFFFF), 0x8000000000000000U);
}

TEST(VRELHashMarksTest, OnlyKeysWithAMarkHaveBytes) {
  EXPECT_TRUE(TextMarks::exist);
  EXPECT_FALSE(VRELHashMarks<int>::exist);
  EXPECT_EQ(VRELHashMarks<int>::Of(7), VRELHashMarks<int>::any);
}

TEST(VRELHashMarksTest, TextsThatDifferInCaseHaveOneMark) {
  std::mt19937 random(27);
  std::set<unsigned char> seen;
  for (int round = 0; round < 5000; ++round) {
    std::string lower;
    std::string other;
    for (unsigned int left = random() % 20; left > 0; --left) {
      char const character = static_cast<char>(1 + random() % 127);
      bool const isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
      lower += character;
      other += static_cast<char>(isLetter && random() % 2 == 0 ? character ^ 0x20 : character);
    }
    unsigned char const mark = TextMarks::Of(VRELString(lower));
    EXPECT_EQ(TextMarks::Of(VRELString(other)), mark) << lower;
    EXPECT_NE(mark, TextMarks::any);
    EXPECT_NE(mark, TextMarks::vacant);
    seen.insert(mark);
  }
  EXPECT_GT(seen.size(), 100u);  // texts that differ mostly have different marks
}

TEST(VRELHashMarksTest, NothingIsKnownOfTextsBeyondAscii) {
  for (wchar_t const* text :
       {L"\u212A", L"ma\u00DF", L"abc\u017F", L"\u00E4bcdefgh", L"abcdefgh\uFB03", L"\U0001F600"}) {
    EXPECT_EQ(TextMarks::Of(VRELString(text)), TextMarks::any) << VRELString(text).toUtf8();
  }
}

TEST(VRELHashMarksTest, CandidatesAreTheFirstOfTheirKindAmongEight) {
  TextMarks marks;
  marks.endGrow(12);
  EXPECT_EQ(marks.Candidates(0, 7), 0x8080808080808080U) << "free slots end a search";
  for (int slot = 0; slot < 12; ++slot) marks.Set(slot, 9);
  EXPECT_EQ(marks.Candidates(2, 7), 0u);
  EXPECT_EQ(marks.Candidates(2, TextMarks::any), 0x8080808080808080U);
  marks.Set(5, 7);
  EXPECT_EQ(marks.Candidates(2, 7), 0x0000000080000000U);
  marks.Set(4, TextMarks::any);
  EXPECT_EQ(marks.Candidates(2, 7) & 0x0000000080FFFFFFU, 0x0000000080800000U);
  marks.Set(3, TextMarks::vacant);
  EXPECT_EQ(marks.Candidates(2, 7) & 0x000000008080FFFFU, 0x0000000080808000U);
  EXPECT_EQ(marks.Get(5), 7);
  marks.clear();
  marks.endGrow(8);
  EXPECT_EQ(marks.Candidates(0, 7), 0x8080808080808080U);
}

}  // namespace

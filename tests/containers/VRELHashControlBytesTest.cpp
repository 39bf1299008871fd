#include "detail/VRELHashControlBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "VRELString.h"

namespace {

using StringControlBytes = VRELHashControlBytes<VRELString>;

TEST(VRELHashControlBytesTest, KeysWithoutMarkHaveAny) {
  EXPECT_TRUE(StringControlBytes::kExist);
  EXPECT_TRUE(VRELHashControlBytes<void*>::kExist);
  EXPECT_FALSE(VRELHashControlBytes<int*>::kExist);
  EXPECT_FALSE(VRELHashControlBytes<int>::kExist);
  EXPECT_EQ(VRELHashControlBytes<int>::Of(7), VRELHashControlBytes<int>::kAny);
}

TEST(VRELHashControlBytesTest, CaseDoesNotChangeMark) {
  std::mt19937 random(27);
  std::set<unsigned char> seen;
  for (int round = 0; round < 5000; ++round) {
    std::string lower;
    std::string other;
    for (std::size_t left = random() % 20; left > 0; --left) {
      char const character = static_cast<char>(1 + random() % 127);
      bool const isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
      lower += character;
      other += static_cast<char>(isLetter && random() % 2 == 0 ? character ^ 0x20 : character);
    }
    unsigned char const mark = StringControlBytes::Of(VRELString(lower));
    EXPECT_EQ(StringControlBytes::Of(VRELString(other)), mark) << lower;
    EXPECT_NE(mark, StringControlBytes::kAny);
    EXPECT_NE(mark, StringControlBytes::kVacant);
    seen.insert(mark);
  }
  EXPECT_GT(seen.size(), 100u);  // different strings mostly have different marks
}

TEST(VRELHashControlBytesTest, StringsBeyondAsciiHaveAny) {
  for (wchar_t const* text :
       {L"\u212A", L"ma\u00DF", L"abc\u017F", L"\u00E4bcdefgh", L"abcdefgh\uFB03", L"\U0001F600"}) {
    EXPECT_EQ(StringControlBytes::Of(VRELString(text)), StringControlBytes::kAny) << VRELString(text).toUtf8();
  }
}

TEST(VRELHashControlBytesTest, PointerMarksAreSpread) {
  std::vector<int> counts(256);
  std::vector<char> objects(16 * 10000);
  for (std::size_t i = 0; i < objects.size(); i += 16) ++counts[VRELHashControlBytes<void*>::Of(&objects[i])];
  EXPECT_EQ(counts[VRELHashControlBytes<void*>::kVacant], 0);
  EXPECT_EQ(counts[VRELHashControlBytes<void*>::kAny], 0);
  EXPECT_LT(*std::max_element(counts.begin(), counts.end()), 10000 / 40) << "128 marks, 78 pointers for each";
}

// Sixteen slots with mark 9 from slot 3 on, and others before and after them.
std::vector<unsigned char> SixteenNines() {
  std::vector<unsigned char> marks(22, 7);
  std::fill_n(marks.begin() + 3, 16, static_cast<unsigned char>(9));
  return marks;
}

TEST(VRELHashControlBytesTest, GroupFindsCandidates) {
  std::vector<unsigned char> marks = SixteenNines();
  VRELHashGroup const without(&marks[3], 7);
  EXPECT_EQ(without.candidates, 0u);
  EXPECT_EQ(without.vacant, 0u);
  marks[3] = 7;
  marks[9] = StringControlBytes::kAny;
  marks[18] = 7;
  VRELHashGroup const with(&marks[3], 7);
  EXPECT_EQ(with.candidates, 0x8041u);
  EXPECT_EQ(with.vacant, 0u);
}

TEST(VRELHashControlBytesTest, GroupEndsAtVacantSlot) {
  std::vector<unsigned char> marks = SixteenNines();
  marks[4] = 7;
  marks[8] = StringControlBytes::kVacant;
  marks[9] = 7;
  marks[18] = StringControlBytes::kVacant;
  VRELHashGroup const group(&marks[3], 7);
  EXPECT_EQ(group.candidates, 0x2u);
  EXPECT_EQ(group.vacant, 0x8020u);
  marks[3] = StringControlBytes::kVacant;
  VRELHashGroup const empty(&marks[3], 7);
  EXPECT_EQ(empty.candidates, 0u);
  EXPECT_EQ(empty.vacant, 0x8021u);
}

TEST(VRELHashControlBytesTest, AnyMatchesAllKeys) {
  std::vector<unsigned char> marks = SixteenNines();
  EXPECT_EQ(VRELHashGroup(&marks[3], StringControlBytes::kAny).candidates, 0xFFFFu);
  marks[8] = StringControlBytes::kVacant;
  VRELHashGroup const group(&marks[3], StringControlBytes::kAny);
  EXPECT_EQ(group.candidates, 0x1Fu);
  EXPECT_EQ(group.vacant, 0x20u);
}

}  // namespace

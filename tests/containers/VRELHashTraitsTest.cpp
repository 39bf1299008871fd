#include "VRELHashTraits.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>

#include "VRELHashList.h"

namespace {

enum class Colour { red = 17, green };

// Neither a hash nor an equality.
struct Opaque {
  int value = 0;
};

TEST(VRELHashTraitsTest, MixesIntegersWithArithmeticShifts) {
  struct {
    int key;
    unsigned int hash;
  } const rows[] = {
      {0, 0x00000000},  {1, 0x23744B91},          {2, 0x46E9572B},
      {17, 0x6A98A1A3}, {12345, 0x525B58EC},      {-1, 0x2374039A},  // 0xDC8B039A by unsigned shifts
      {-2, 0x46E80F33}, {2147483647, 0x7FA720B6}, {INT_MIN, 0x5CE4DCE4},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(VRELMixInteger(row.key), row.hash);
    EXPECT_EQ(VRELHashTraits<int>::Hash(row.key), row.hash);
    EXPECT_EQ(VRELHashList<int>::GetHashValue(row.key), row.hash);
  }
}

TEST(VRELHashTraitsTest, TruncatesFloatsTowardZero) {
  EXPECT_EQ(VRELHashList<float>::GetHashValue(1.99F), 0x23744B91u);
  EXPECT_EQ(VRELHashList<float>::GetHashValue(-1.99F), 0x2374039Au);
  EXPECT_EQ(VRELHashList<float>::GetHashValue(-0.5F), 0u);
  EXPECT_EQ(VRELHashList<double>::GetHashValue(2.5), 0x46E9572Bu);
}

TEST(VRELHashTraitsTest, UnrepresentableFloatHashesAsIntMin) {
  for (float key : {1e20F, -1e20F, 2147483648.0F, std::numeric_limits<float>::quiet_NaN(),
                    std::numeric_limits<float>::infinity()}) {
    SCOPED_TRACE(key);
    EXPECT_EQ(VRELHashList<float>::GetHashValue(key), 0x5CE4DCE4u);
  }
}

TEST(VRELHashTraitsTest, HashesPointersByLowBits) {
  void* const pointer = reinterpret_cast<void*>(0x7FFF00003039);  // 12345 below
  EXPECT_EQ(VRELHashList<void*>::GetHashValue(pointer), 0x525B58ECu);
  EXPECT_EQ(VRELHashList<void*>::GetHashValue(nullptr), 0u);
  EXPECT_EQ(VRELHashList<void*>::GetHashValue(reinterpret_cast<void*>(0xFFFFFFFF)), 0x2374039Au);
  EXPECT_TRUE(VRELHashList<void*>::HashEqualFunction(pointer, pointer));
  EXPECT_FALSE(VRELHashList<void*>::HashEqualFunction(pointer, nullptr));
}

TEST(VRELHashTraitsTest, HashesEnumerationsByNumber) {
  EXPECT_EQ(VRELHashTraits<Colour>::Hash(Colour::red), 0x6A98A1A3u);
  EXPECT_TRUE(VRELHashTraits<Colour>::Equal(Colour::red, Colour::red));
  EXPECT_FALSE(VRELHashTraits<Colour>::Equal(Colour::red, Colour::green));
}

TEST(VRELHashTraitsTest, OtherTypesUseStdHash) {
  EXPECT_EQ(VRELHashTraits<std::string>::Hash("key"),
            VRELMixInteger(static_cast<int>(std::hash<std::string>()("key"))));
  EXPECT_TRUE(VRELHashTraits<std::string>::Equal("key", "key"));
  EXPECT_FALSE(VRELHashTraits<std::string>::Equal("key", "Key"));
  Opaque const a;
  Opaque const b;
  EXPECT_EQ(VRELHashTraits<Opaque>::Hash(a), 0u);
  EXPECT_TRUE(VRELHashTraits<Opaque>::Equal(a, a));
  EXPECT_FALSE(VRELHashTraits<Opaque>::Equal(a, b));
}

}  // namespace

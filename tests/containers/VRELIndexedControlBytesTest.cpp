#include "detail/VRELIndexedControlBytes.h"

#include <gtest/gtest.h>

#include <utility>

#include "VRELAllocException.h"

namespace {

TEST(VRELIndexedControlBytesTest, StartsWithoutIndex) {
  VRELIndexedControlBytes bytes;
  EXPECT_EQ(bytes.GetIndex(), nullptr);
  bytes.SetIndex(nullptr);
  bytes.endGrow(0);
  bytes.endGrow(-1);
  EXPECT_EQ(bytes.size(), 0);
  bytes.endGrow(17);
  EXPECT_EQ(bytes.size(), 17);
  EXPECT_EQ(bytes.GetIndex(), nullptr);
  for (unsigned char const byte : bytes) EXPECT_EQ(byte, 0);
  static_assert(sizeof bytes == sizeof(void*));
}

TEST(VRELIndexedControlBytesTest, CopiesShareIndex) {
  VRELIndexedControlBytes bytes;
  bytes.endGrow(3);
  VRELIndexedControlBytes const copy(bytes);
  auto* const index = new VRELHashSlotIndex(3);
  bytes.SetIndex(index);
  EXPECT_EQ(copy.GetIndex(), index);
  VRELIndexedControlBytes assigned;
  assigned = copy;
  EXPECT_EQ(assigned.GetIndex(), index);
  VRELIndexedControlBytes moved(std::move(bytes));
  EXPECT_EQ(moved.GetIndex(), index);
  EXPECT_EQ(bytes.GetIndex(), nullptr);
  moved = VRELIndexedControlBytes();
  EXPECT_EQ(copy.GetIndex(), index);  // alive: a leak checker sees that the last owner deletes it
  EXPECT_EQ(index->FindVacant(0), 0);
}

TEST(VRELIndexedControlBytesTest, DeepCopyHasNoIndex) {
  VRELIndexedControlBytes bytes;
  bytes.endGrow(3);
  bytes[1] = 9;
  bytes.SetIndex(new VRELHashSlotIndex(3));
  VRELIndexedControlBytes const copy = bytes.copy();
  EXPECT_EQ(copy.GetIndex(), nullptr);
  EXPECT_EQ(copy.size(), 3);
  EXPECT_EQ(copy[1], 9);
  EXPECT_EQ(VRELIndexedControlBytes().copy().size(), 0);
}

TEST(VRELIndexedControlBytesTest, ClearDropsIndex) {
  VRELIndexedControlBytes bytes;
  bytes.endGrow(40);
  for (unsigned char& byte : bytes) byte = 0xFF;
  bytes.SetIndex(new VRELHashSlotIndex(40));
  bytes.clear();
  bytes.endGrow(17);
  EXPECT_EQ(bytes.GetIndex(), nullptr);
  for (unsigned char const byte : bytes) EXPECT_EQ(byte, 0);
}

TEST(VRELIndexedControlBytesTest, SizeWithoutRoomForIndexThrows) {
  VRELIndexedControlBytes bytes;
  EXPECT_THROW(bytes.endGrow(2147483647), VRELAllocException);
  EXPECT_THROW(bytes.endGrow(2147483640), VRELAllocException);
  EXPECT_EQ(bytes.size(), 0);
}

}  // namespace

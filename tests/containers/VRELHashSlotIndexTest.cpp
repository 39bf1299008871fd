#include "detail/VRELHashSlotIndex.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace {

bool AcceptAll(int) {
  return true;
}

TEST(VRELHashSlotIndexTest, FindsVacantSlotAcrossEnd) {
  VRELHashSlotIndex index(5);
  for (int start = 0; start < 5; ++start) EXPECT_EQ(index.FindVacant(start), start);
  for (int slot : {1, 2, 4}) index.Add(slot, 7);
  EXPECT_EQ(index.FindVacant(0), 0);
  EXPECT_EQ(index.FindVacant(1), 3);
  EXPECT_EQ(index.FindVacant(4), 0);
  index.Add(0, 7);
  EXPECT_EQ(index.FindVacant(4), 3);
  index.Add(3, 7);
  EXPECT_EQ(index.FindVacant(2), -1);
  index.Remove(2);
  EXPECT_EQ(index.FindVacant(3), 2);
}

TEST(VRELHashSlotIndexTest, FindsVacantSlotInAllLevels) {
  VRELHashSlotIndex index(64 * 64 * 2 + 1);
  for (int slot = 0; slot < 64 * 64 * 2; ++slot) index.Add(slot, static_cast<std::uint64_t>(slot));
  EXPECT_EQ(index.FindVacant(0), 8192);
  index.Remove(4095);
  EXPECT_EQ(index.FindVacant(0), 4095);
  EXPECT_EQ(index.FindVacant(4096), 8192);
}

TEST(VRELHashSlotIndexTest, RemovedForNowStaysOccupied) {
  VRELHashSlotIndex index(5);
  for (int slot : {1, 2, 3}) index.Add(slot, static_cast<std::uint64_t>(slot));
  EXPECT_FALSE(index.HasRemoved());
  EXPECT_EQ(index.HashAt(2), 2u);
  index.ReserveRemoved();
  index.RemoveForNow(2);
  EXPECT_TRUE(index.HasRemoved());
  EXPECT_EQ(index.FindAny(2), -1);
  EXPECT_EQ(index.FindAny(3), 3);
  EXPECT_EQ(index.FindVacant(1), 4);
  EXPECT_EQ(index.TakeRemoved(), std::vector<int>{2});
  EXPECT_FALSE(index.HasRemoved());
  index.MakeVacant(2);
  EXPECT_EQ(index.FindVacant(1), 2);
  EXPECT_FALSE(index.HasRepeated());
  index.Add(2, 3);
  EXPECT_TRUE(index.HasRepeated());
}

TEST(VRELHashSlotIndexTest, FindsRepeatedHashInSlotOrder) {
  VRELHashSlotIndex index(10);
  for (int slot : {6, 2, 8}) index.Add(slot, 7);
  index.Add(3, 8);
  EXPECT_EQ(index.Find(7, 0, -1, AcceptAll), 2);
  EXPECT_EQ(index.Find(7, 3, -1, AcceptAll), 6);
  EXPECT_EQ(index.Find(7, 9, -1, AcceptAll), 2);
  EXPECT_EQ(index.Find(7, 9, 2, AcceptAll), -1);
  EXPECT_EQ(index.Find(7, 3, 6, AcceptAll), -1);
  EXPECT_EQ(index.Find(7, 3, 7, AcceptAll), 6);
  EXPECT_EQ(index.Find(7, 3, 1, [](int slot) { return slot == 8; }), 8);
  EXPECT_EQ(index.Find(8, 4, -1, AcceptAll), 3);
  EXPECT_EQ(index.Find(9, 0, -1, AcceptAll), -1);
  index.Remove(2);
  index.Remove(8);
  EXPECT_EQ(index.Find(7, 7, -1, AcceptAll), 6);
  index.Remove(6);
  EXPECT_EQ(index.Find(7, 0, -1, AcceptAll), -1);
}

// The model visits the slots one by one.
TEST(VRELHashSlotIndexTest, MatchesModel) {
  std::mt19937 random(16);
  for (int slots : {1, 2, 17, 63, 64, 65, 300, 4097}) {
    for (unsigned int hashes : {1u, 3u, 50u}) {
      SCOPED_TRACE(slots);
      VRELHashSlotIndex index(slots);
      std::vector<int> model(static_cast<std::size_t>(slots), -1);
      auto const at = [&](int slot) -> int& { return model[static_cast<std::size_t>(slot)]; };
      auto const draw = [&](unsigned int range) { return static_cast<int>(random() % range); };
      for (int step = 0; step < 4000; ++step) {
        int const slot = draw(static_cast<unsigned int>(slots));
        if (at(slot) < 0) {
          at(slot) = draw(hashes);
          index.Add(slot, static_cast<std::uint64_t>(at(slot)));
        } else if (draw(3) > 0) {
          at(slot) = -1;
          index.Remove(slot);
        }
        int const start = draw(static_cast<unsigned int>(slots));
        int const sought = draw(hashes);
        auto const accept = [step](int each) { return (each * 7 + step) % 3 != 0; };
        int vacant = -1;
        int found = -1;
        for (int probe = 0; probe < slots && vacant < 0; ++probe) {
          int const each = (start + probe) % slots;
          if (at(each) < 0) vacant = each;
          if (at(each) == sought && found < 0 && accept(each)) found = each;
        }
        ASSERT_EQ(index.FindVacant(start), vacant);
        ASSERT_EQ(index.Find(static_cast<std::uint64_t>(sought), start, vacant, accept), found);
      }
    }
  }
}

}  // namespace

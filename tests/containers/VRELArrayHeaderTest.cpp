#include "VRELArrayHeader.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "ChildProcess.h"
#include "VRELAllocException.h"

namespace {

// A header of ints, freed at the end.
class VRELArrayHeaderTest : public testing::Test {
 protected:
  ~VRELArrayHeaderTest() override { vrelArrayFree(header); }

  void Add(std::initializer_list<int> values) {
    for (int value : values) ASSERT_EQ(vrelArrayAdd(header, &value), 1);
  }
  int* Slots() { return reinterpret_cast<int*>(header->data); }
  std::vector<int> Values() { return {Slots(), Slots() + header->count}; }

  VRELArrayHeader* header = vrelArrayAllocate(10, sizeof(int));
};

TEST_F(VRELArrayHeaderTest, FieldOffsetsMatchLayout) {
  static_assert(std::is_trivial_v<VRELArrayHeader> && std::is_standard_layout_v<VRELArrayHeader>);
  EXPECT_EQ(sizeof(header->checkWord), sizeof(void*));
  EXPECT_EQ(offsetof(VRELArrayHeader, checkWord), 0u);
  EXPECT_EQ(offsetof(VRELArrayHeader, capacity), 8u);
  EXPECT_EQ(offsetof(VRELArrayHeader, count), 12u);
  EXPECT_EQ(offsetof(VRELArrayHeader, elementSize), 16u);
  EXPECT_EQ(offsetof(VRELArrayHeader, growthFactor), 20u);
  EXPECT_EQ(offsetof(VRELArrayHeader, shareCount), 24u);
  EXPECT_EQ(offsetof(VRELArrayHeader, data), 32u);
}

TEST_F(VRELArrayHeaderTest, AllocatesZeroFilledStorage) {
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(header->checkWord, header->data);
  EXPECT_EQ(header->capacity, 10);
  EXPECT_EQ(header->count, 0);
  EXPECT_EQ(header->elementSize, 4);
  std::uint32_t bits;
  std::memcpy(&bits, &header->growthFactor, sizeof bits);
  EXPECT_EQ(bits, 0x3FC00000u);
  EXPECT_EQ(header->shareCount, 0);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Slots()[i], 0);
  EXPECT_EQ(vrelArrayCheck(header), 1);
}

TEST_F(VRELArrayHeaderTest, AllocateRejectsArgumentsBelowOne) {
  EXPECT_EQ(vrelArrayAllocate(0, 4), nullptr);
  EXPECT_EQ(vrelArrayAllocate(4, 0), nullptr);
  EXPECT_EQ(vrelArrayAllocate(-1, 4), nullptr);
  EXPECT_EQ(vrelArrayAllocate(4, -1), nullptr);
}

TEST_F(VRELArrayHeaderTest, GrowsByHalfPlusOne) {
  int const capacities[] = {10, 16, 25, 38, 58, 88, 133, 200, 301, 452};
  for (int expected : capacities) {
    EXPECT_EQ(header->capacity, expected);
    EXPECT_EQ(header->checkWord, header->data);
    EXPECT_EQ(vrelArrayRealloc(header), 1);
  }
  VRELArrayHeader* single = vrelArrayAllocate(1, 1);
  vrelArrayRealloc(single);
  EXPECT_EQ(single->capacity, 2);  // 2.5, truncated
  vrelArrayFree(single);
}

TEST_F(VRELArrayHeaderTest, GrowthKeepsOldBlockAndZeroesRest) {
  for (int i = 0; i < 10; ++i) Slots()[i] = i + 1;  // not counted as elements
  header->count = 3;
  vrelArrayRealloc(header);
  EXPECT_EQ(header->count, 3);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(Slots()[i], i + 1);
  for (int i = 10; i < 16; ++i) EXPECT_EQ(Slots()[i], 0);
}

TEST_F(VRELArrayHeaderTest, AddGrowsFullArrayOnly) {
  Add({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(header->capacity, 10);
  Add({10});
  EXPECT_EQ(header->capacity, 16);
  Add({11, 12, 13, 14, 15});
  EXPECT_EQ(header->capacity, 16);
  Add({16});
  EXPECT_EQ(header->capacity, 25);
  EXPECT_EQ(vrelArrayCount(header), 17);
  for (int i = 0; i < 17; ++i) EXPECT_EQ(Slots()[i], i);
}

TEST_F(VRELArrayHeaderTest, AddAcceptsOwnElementAcrossGrowth) {
  Add({7, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(vrelArrayAdd(header, &Slots()[9]), 1);
  EXPECT_EQ(header->capacity, 16);
  EXPECT_EQ(Slots()[10], 9);
  Add({11, 12, 13, 14, 15});
  EXPECT_EQ(vrelArrayAdd(header, &Slots()[0]), 1);
  EXPECT_EQ(header->capacity, 25);
  EXPECT_EQ(Slots()[16], 7);
}

TEST_F(VRELArrayHeaderTest, GrowthReturnsNewElementAddress) {
  Add({7, 8});
  int elsewhere = 9;
  for (int index : {0, 1, 9}) {
    SCOPED_TRACE(index);
    void const* const moved = vrelArrayReallocAround(header, &Slots()[index]);
    EXPECT_EQ(moved, &Slots()[index]);
  }
  EXPECT_EQ(vrelArrayReallocAround(header, &elsewhere), &elsewhere);
  void const* const after = &Slots()[header->capacity];
  EXPECT_EQ(vrelArrayReallocAround(header, after), after);
}

TEST_F(VRELArrayHeaderTest, InsertsBeforeIndex) {
  Add({1, 2, 3});
  int value = 9;
  EXPECT_EQ(vrelArrayInsertAt(header, 0, &value), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 1, 2, 3}));
  value = 8;
  EXPECT_EQ(vrelArrayInsertAt(header, 2, &value), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 1, 8, 2, 3}));
  value = 7;
  EXPECT_EQ(vrelArrayInsertAt(header, 5, &value), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 1, 8, 2, 3, 7}));
}

TEST_F(VRELArrayHeaderTest, InsertAfterEndAdds) {
  Add({1, 2, 3});
  int value = 4;
  EXPECT_EQ(vrelArrayInsertAt(header, 5, &value), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(VRELArrayHeaderTest, InsertGrowsOneSlotEarlierThanAdd) {
  int value = 5;
  Add({0, 1, 2, 3, 4, 5, 6, 7});
  EXPECT_EQ(vrelArrayInsertAt(header, 3, &value), 1);  // 8 + 1 is below 10
  EXPECT_EQ(header->capacity, 10);
  EXPECT_EQ(vrelArrayInsertAt(header, 9, &value), 1);  // 9 + 1 is not
  EXPECT_EQ(header->capacity, 16);
  EXPECT_EQ(Values(), (std::vector<int>{0, 1, 2, 5, 3, 4, 5, 6, 7, 5}));
}

TEST_F(VRELArrayHeaderTest, InsertAfterEndGrowsAsAddDoes) {
  int value = 9;
  Add({0, 1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(vrelArrayInsertAt(header, 10, &value), 1);
  EXPECT_EQ(header->capacity, 10);
  EXPECT_EQ(Slots()[9], 9);
}

TEST_F(VRELArrayHeaderTest, InsertAcceptsOwnElement) {
  Add({1, 2, 3});
  EXPECT_EQ(vrelArrayInsertAt(header, 1, &Slots()[2]), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 3, 2, 3}));
  EXPECT_EQ(vrelArrayInsertAt(header, 2, &Slots()[0]), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 3, 1, 2, 3}));
  EXPECT_EQ(vrelArrayInsertAt(header, 3, &Slots()[3]), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 3, 1, 2, 2, 3}));
  Add({4, 5, 6});
  EXPECT_EQ(vrelArrayInsertAt(header, 0, &Slots()[8]), 1);  // grows
  EXPECT_EQ(header->capacity, 16);
  EXPECT_EQ(Values(), (std::vector<int>{6, 1, 3, 1, 2, 2, 3, 4, 5, 6}));
}

TEST_F(VRELArrayHeaderTest, InsertCopiesBytesOfFreeSlot) {
  Add({1, 2, 3});
  Slots()[9] = 77;  // the last one of the storage
  EXPECT_EQ(vrelArrayInsertAt(header, 1, &Slots()[9]), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 77, 2, 3}));
}

TEST_F(VRELArrayHeaderTest, SetsAndRemovesLiveElements) {
  Add({1, 2, 3, 4});
  int value = 9;
  EXPECT_EQ(vrelArraySetAt(header, 0, &value), 1);
  EXPECT_EQ(vrelArraySetAt(header, 3, &value), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 2, 3, 9}));
  EXPECT_EQ(vrelArrayRemoveAt(header, 1), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 3, 9}));
  EXPECT_EQ(vrelArrayRemoveAt(header, 2), 1);
  EXPECT_EQ(Values(), (std::vector<int>{9, 3}));
  EXPECT_EQ(header->capacity, 10);
}

TEST_F(VRELArrayHeaderTest, RejectsIndexOutsideCount) {
  Add({1, 2, 3});
  int value = 9;
  for (int index : {3, 4, 100, -1, -1000000}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(vrelArraySetAt(header, index, &value), 0);
    EXPECT_EQ(vrelArrayRemoveAt(header, index), 0);
  }
  EXPECT_EQ(vrelArrayInsertAt(header, -1, &value), 0);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(Slots()[3], 0);
}

TEST_F(VRELArrayHeaderTest, ClearKeepsStorage) {
  Add({1, 2, 3});
  unsigned char* const data = header->data;
  EXPECT_EQ(vrelArrayClear(header), 1);
  EXPECT_EQ(header->count, 0);
  EXPECT_EQ(header->capacity, 10);
  EXPECT_EQ(header->data, data);
}

TEST_F(VRELArrayHeaderTest, AppendCopiesBytesOfTarget) {
  Add({1, 2, 3});
  VRELArrayHeader* source = vrelArrayAllocate(2, sizeof(int));
  for (int value : {70, 80}) vrelArrayAdd(source, &value);
  EXPECT_EQ(vrelArrayAppend(header, source), 1);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2, 3, 1, 2}));
  EXPECT_EQ(vrelArrayCount(source), 2);
  vrelArrayFree(source);
}

TEST_F(VRELArrayHeaderTest, AppendGrowsUntilSumFits) {
  VRELArrayHeader* source = vrelArrayAllocate(30, sizeof(int));
  for (int i = 0; i < 30; ++i) vrelArrayAdd(source, &i);
  Add({1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(vrelArrayAppend(header, source), 1);  // 38 elements: 10, 16, 25, 38
  EXPECT_EQ(header->capacity, 38);
  EXPECT_EQ(header->count, 38);
  for (int i = 0; i < 30; ++i) EXPECT_EQ(Slots()[8 + i], i < 8 ? i + 1 : 0);
  EXPECT_EQ(vrelArrayAppend(header, header), 1);
  EXPECT_EQ(header->count, 76);
  EXPECT_EQ(header->capacity, 88);
  vrelArrayFree(source);
}

TEST_F(VRELArrayHeaderTest, AppendRejectsOtherElementSize) {
  Add({1});
  VRELArrayHeader* source = vrelArrayAllocate(2, 8);
  VRELArrayHeader* none = nullptr;
  EXPECT_EQ(vrelArrayAppend(header, source), 0);
  EXPECT_EQ(vrelArrayAppend(header, none), 0);
  EXPECT_EQ(vrelArrayAppend(none, header), 0);
  EXPECT_EQ(Values(), std::vector<int>{1});
  vrelArrayFree(source);
}

TEST_F(VRELArrayHeaderTest, CopyAddsOwnerAndFreeReleasesOne) {
  Add({1, 2});
  VRELArrayHeader* second = vrelArrayCopy(header);
  EXPECT_EQ(second, header);
  EXPECT_EQ(header->shareCount, 1);
  EXPECT_EQ(vrelArrayFree(second), 1);
  EXPECT_EQ(second, header);  // only the last owner's pointer is cleared
  EXPECT_EQ(header->shareCount, 0);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2}));
  EXPECT_EQ(vrelArrayFree(header), 1);
  EXPECT_EQ(header, nullptr);
}

TEST_F(VRELArrayHeaderTest, NullHeaderFails) {
  VRELArrayHeader* none = nullptr;
  int value = 1;
  EXPECT_EQ(vrelArrayCheck(none), 0);
  EXPECT_EQ(vrelArrayCount(none), 0);
  EXPECT_EQ(vrelArrayClear(none), 0);
  EXPECT_EQ(vrelArrayCopy(none), nullptr);
  EXPECT_EQ(vrelArrayFree(none), 0);
  EXPECT_EQ(vrelArrayRealloc(none), 0);
  EXPECT_EQ(vrelArrayReserve(none, 3), 0);
  EXPECT_EQ(vrelArrayReallocFor(none, 3), 0);
  EXPECT_EQ(vrelArrayReallocAround(none, &value), &value);
  EXPECT_EQ(vrelArrayAdd(none, &value), 0);
  EXPECT_EQ(vrelArrayInsertAt(none, 0, &value), 0);
  EXPECT_EQ(vrelArraySetAt(none, 0, &value), 0);
  EXPECT_EQ(vrelArrayRemoveAt(none, 0), 0);
}

TEST_F(VRELArrayHeaderTest, WrongCheckWordFails) {
  Add({1, 2});
  VRELArrayHeader* const before = header;
  VRELArrayHeader* sound = vrelArrayAllocate(1, sizeof(int));
  header->checkWord = nullptr;
  int value = 9;
  EXPECT_EQ(vrelArrayCheck(header), 0);
  EXPECT_EQ(vrelArrayCount(header), 0);
  EXPECT_EQ(vrelArrayClear(header), 0);
  EXPECT_EQ(vrelArrayCopy(header), before);
  EXPECT_EQ(header->shareCount, 0);
  EXPECT_EQ(vrelArrayFree(header), 0);
  EXPECT_EQ(header, before);
  EXPECT_EQ(vrelArrayRealloc(header), 0);
  EXPECT_EQ(vrelArrayReallocFor(header, 100), 0);
  EXPECT_EQ(vrelArrayReserve(header, 100), 0);
  EXPECT_EQ(vrelArrayAdd(header, &value), 0);
  EXPECT_EQ(vrelArrayInsertAt(header, 0, &value), 0);
  EXPECT_EQ(vrelArraySetAt(header, 0, &value), 0);
  EXPECT_EQ(vrelArrayRemoveAt(header, 0), 0);
  EXPECT_EQ(vrelArrayAppend(header, sound), 0);
  EXPECT_EQ(vrelArrayAppend(sound, header), 0);
  EXPECT_EQ(header->count, 2);
  EXPECT_EQ(header->capacity, 10);
  header->checkWord = header->data;
  EXPECT_EQ(Values(), (std::vector<int>{1, 2}));
  vrelArrayFree(sound);
}

TEST_F(VRELArrayHeaderTest, ReallocForGrowsInSteps) {
  Add({1, 2, 3});
  EXPECT_EQ(vrelArrayReallocFor(header, 7), 1);
  EXPECT_EQ(header->capacity, 10);
  EXPECT_EQ(vrelArrayReallocFor(header, 8), 1);
  EXPECT_EQ(header->capacity, 16);
  EXPECT_EQ(vrelArrayReallocFor(header, 100), 1);
  EXPECT_EQ(header->capacity, 133);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2, 3}));
}

TEST_F(VRELArrayHeaderTest, GrowthBeyondIntThrows) {
  Add({1});
  unsigned char* const data = header->data;
  header->capacity = 2147483647;
  header->count = 2147483647;
  int value = 9;
  EXPECT_THROW(vrelArrayRealloc(header), VRELAllocException);
  EXPECT_THROW(vrelArrayAdd(header, &value), VRELAllocException);
  EXPECT_THROW(vrelArrayInsertAt(header, 0, &value), VRELAllocException);
  EXPECT_THROW(vrelArrayReallocFor(header, 1), VRELAllocException);
  EXPECT_THROW(vrelArrayAppend(header, header), VRELAllocException);
  EXPECT_EQ(header->capacity, 2147483647);
  EXPECT_EQ(header->count, 2147483647);
  EXPECT_EQ(header->data, data);
  EXPECT_EQ(header->checkWord, data);
}

TEST_F(VRELArrayHeaderTest, DamagedGrowthFactorThrows) {
  for (float factor : {0.0F, 0.5F, -1.5F, std::numeric_limits<float>::quiet_NaN()}) {
    header->growthFactor = factor;
    EXPECT_THROW(vrelArrayRealloc(header), VRELAllocException);
    EXPECT_EQ(header->capacity, 10);
  }
}

TEST_F(VRELArrayHeaderTest, ReserveAllocatesExactly) {
  Add({1, 2, 3});
  for (int capacity : {10, 3, 0, -1, -2147483647 - 1}) {
    EXPECT_EQ(vrelArrayReserve(header, capacity), 1);
    EXPECT_EQ(header->capacity, 10) << capacity;
  }
  EXPECT_EQ(vrelArrayReserve(header, 37), 1);
  EXPECT_EQ(header->capacity, 37);
  EXPECT_EQ(header->checkWord, header->data);
  EXPECT_EQ(Values(), (std::vector<int>{1, 2, 3}));
  for (int i = 3; i < 37; ++i) EXPECT_EQ(Slots()[i], 0);
}

// Found by their plain names, as another language finds them.
TEST(VRELArrayLinkageTest, FunctionsHaveCLinkage) {
  for (char const* name :
       {"vrelArrayAllocate", "vrelArrayCheck", "vrelArrayCount", "vrelArrayClear", "vrelArrayCopy", "vrelArrayFree",
        "vrelArrayRealloc", "vrelArrayReallocAround", "vrelArrayReallocFor", "vrelArrayReserve", "vrelArrayAdd",
        "vrelArrayInsertAt", "vrelArraySetAt", "vrelArrayRemoveAt", "vrelArrayAppend"}) {
    EXPECT_NE(dlsym(RTLD_DEFAULT, name), nullptr) << name;
  }
  static_assert(std::is_same_v<decltype(vrelArrayAllocate), VRELArrayHeader*(int, int)>);
  static_assert(std::is_same_v<decltype(vrelArrayCheck), int(VRELArrayHeader*&)>);
  static_assert(std::is_same_v<decltype(vrelArrayCount), int(VRELArrayHeader*)>);
  static_assert(std::is_same_v<decltype(vrelArrayClear), int(VRELArrayHeader*&)>);
  static_assert(std::is_same_v<decltype(vrelArrayCopy), VRELArrayHeader*(VRELArrayHeader*)>);
  static_assert(std::is_same_v<decltype(vrelArrayFree), int(VRELArrayHeader*&)>);
  static_assert(std::is_same_v<decltype(vrelArrayRealloc), int(VRELArrayHeader*&)>);
  static_assert(std::is_same_v<decltype(vrelArrayAdd), int(VRELArrayHeader*&, void*)>);
  static_assert(std::is_same_v<decltype(vrelArrayInsertAt), int(VRELArrayHeader*&, int, void*)>);
  static_assert(std::is_same_v<decltype(vrelArraySetAt), int(VRELArrayHeader*&, int, void*)>);
  static_assert(std::is_same_v<decltype(vrelArrayRemoveAt), int(VRELArrayHeader*&, int)>);
  static_assert(std::is_same_v<decltype(vrelArrayAppend), int(VRELArrayHeader*&, VRELArrayHeader*)>);
}

TEST_F(VRELArrayHeaderTest, MatchesModel) {
  std::mt19937 random(20);
  std::vector<int> model;
  for (int step = 0; step < 20000; ++step) {
    int value = static_cast<int>(random());
    int const size = static_cast<int>(model.size());
    int const index = static_cast<int>(random() % 40);
    switch (random() % 7) {
      case 0:
      case 1:
        ASSERT_EQ(vrelArrayAdd(header, &value), 1);
        model.push_back(value);
        break;
      case 2:
      case 3:
        ASSERT_EQ(vrelArrayInsertAt(header, index, &value), 1);
        model.insert(model.begin() + std::min(index, size), value);
        break;
      case 4:
        ASSERT_EQ(vrelArraySetAt(header, index, &value), index < size ? 1 : 0);
        if (index < size) model[static_cast<std::size_t>(index)] = value;
        break;
      default:
        ASSERT_EQ(vrelArrayRemoveAt(header, index), index < size ? 1 : 0);
        if (index < size) model.erase(model.begin() + index);
        break;
    }
    ASSERT_EQ(Values(), model);
  }
}

#ifndef __SANITIZE_ADDRESS__  // reports failing allocations as errors

// Limits the address space of the process.
void LimitMemoryTo(rlim_t bytes) {
  rlimit const limit = {bytes, bytes};
  setrlimit(RLIMIT_AS, &limit);
}

TEST(VRELArrayHeaderMemoryTest, FailedGrowthChangesNothing) {
  ChildResult const result = RunInChildWithoutTeardown([] {
    constexpr int element = 16 * 1024 * 1024;
    VRELArrayHeader* header = vrelArrayAllocate(4, element);
    header->data[0] = 42;
    header->count = 4;
    unsigned char* const data = header->data;
    LimitMemoryTo(1);
    try {
      vrelArrayRealloc(header);
      return 1;
    } catch (VRELAllocException const&) {
      bool const same = header->data == data && header->checkWord == data && header->capacity == 4 &&
                        header->count == 4 && header->data[0] == 42;
      return same ? 0 : 2;
    }
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

// Grows from 1431655765 bytes, whose next step would be 2147483648.5, and then fills the last slot.
TEST(VRELArrayHeaderMemoryTest, GrowthReachesIntMax) {
  if (sysconf(_SC_AVPHYS_PAGES) < 3L * 1024 * 1024 * 1024 / sysconf(_SC_PAGESIZE)) {
    GTEST_SKIP() << "less than 3 GiB of memory are free";
  }
  ChildResult const result = RunInChildWithoutTeardown([] {
    VRELArrayHeader* header = vrelArrayAllocate(1431655765, 1);
    header->count = 1431655765;
    char value = 7;
    if (vrelArrayAdd(header, &value) != 1 || header->capacity != 2147483647) return 1;
    if (header->data[1431655765] != 7) return 2;
    header->count = 2147483646;
    if (vrelArrayInsertAt(header, 2147483646, &value) != 1 || header->count != 2147483647) return 3;
    if (header->data[2147483646] != 7) return 4;
    try {
      vrelArrayAdd(header, &value);
      return 5;
    } catch (VRELAllocException const&) {
      return header->count == 2147483647 ? 0 : 6;
    }
  });
  EXPECT_EQ(result.exitStatus, 0);
}

TEST(VRELArrayHeaderMemoryTest, AllocationWithoutMemoryThrows) {
  ChildResult const result = RunInChildWithoutTeardown([] {
    LimitMemoryTo(1);
    try {
      vrelArrayAllocate(2000000000, 2000000000);
      return 1;
    } catch (VRELAllocException const&) {
    }
    // Until there is no memory even for a header.
    for (std::size_t size : {65536U, 1024U, 16U}) {
      while (void* block = std::malloc(size)) asm volatile("" : : "g"(block) : "memory");
    }
    try {
      vrelArrayAllocate(1, 1);
      return 2;
    } catch (VRELAllocException const&) {
      return 0;
    }
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

#endif

}  // namespace

#include "VRELMemoryBound.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "ChildProcess.h"

namespace {

static_assert(sizeof VRELHeapSizeCurrent == 4 && sizeof VRELHeapSizeMax == 4);
static_assert(sizeof VRELMemoryAllocCounter == 4 && sizeof VRELMemoryAllocate == 4);

// Returns the 32-bit word at this offset from the caller's first byte.
std::uint32_t WordAt(void* block, int offset) {
  std::uint32_t word;
  std::memcpy(&word, static_cast<unsigned char*>(block) + offset, sizeof word);
  return word;
}

TEST(VRELMemoryBoundTest, CountersStartAtZero) {
  // In a child process, where no other test has used the allocator.
  EXPECT_EQ(VRELMemoryAllocate, 0u);
  ChildResult const result = RunInChildWithoutTeardown([] {
    VRELHeapSizeCurrent = VRELHeapSizeMax = VRELMemoryAllocCounter = 0;
    void* const first = VRELMemoryBoundAllocate(1);
    if (VRELHeapSizeCurrent != 16 || VRELHeapSizeMax != 16 || VRELMemoryAllocCounter != 1) return 1;
    void* const second = VRELMemoryBoundAllocate(100);
    if (VRELHeapSizeCurrent != 128 || VRELHeapSizeMax != 128 || VRELMemoryAllocCounter != 2) return 2;
    VRELMemoryBoundFree(first);
    if (VRELHeapSizeCurrent != 112 || VRELHeapSizeMax != 128 || VRELMemoryAllocCounter != 2) return 3;
    VRELMemoryBoundFree(VRELMemoryBoundAllocate(0));
    if (VRELHeapSizeCurrent != 112 || VRELHeapSizeMax != 128 || VRELMemoryAllocCounter != 3) return 4;
    VRELMemoryBoundFree(second);
    if (VRELHeapSizeCurrent != 0 || VRELMemoryAllocate != 0) return 5;
    VRELMemoryBoundFree(VRELMemoryBoundAllocate(40));
    return VRELHeapSizeMax == 128 ? 0 : 6;  // the highest value stays
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
}

TEST(VRELMemoryBoundTest, RoundsUpAndWritesGuards) {
  struct {
    unsigned int size;
    unsigned int rounded;
  } const cases[] = {{0, 16}, {1, 16}, {15, 16}, {16, 32}, {17, 32}, {31, 32}, {32, 48}, {1000, 1008}};
  for (auto const& row : cases) {
    SCOPED_TRACE(row.size);
    void* const block = VRELMemoryBoundAllocate(row.size);
    int const end = static_cast<int>(row.rounded);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u);
    EXPECT_EQ(WordAt(block, -16), row.rounded);
    EXPECT_EQ(WordAt(block, -12), VRELMemoryAllocCounter);
    EXPECT_EQ(WordAt(block, -8), 0xDEADBEEFu);
    EXPECT_EQ(WordAt(block, -4), 0xDEADBEEFu);
    EXPECT_EQ(WordAt(block, end), 0xDEADBEEFu);
    EXPECT_EQ(WordAt(block, end + 4), 0xDEADBEEFu);
    EXPECT_EQ(WordAt(block, end + 8), VRELMemoryAllocCounter);
    EXPECT_EQ(WordAt(block, end + 12), row.rounded);
    std::memset(block, 0x55, row.rounded);
    VRELMemoryBoundFree(block);
  }
}

TEST(VRELMemoryBoundTest, FreeIgnoresNull) {
  ChildResult const result = RunInChildWithoutTeardown([] {
    VRELMemoryBoundFree(nullptr);
    return static_cast<int>(VRELHeapSizeCurrent);
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
}

// Writes one 32-bit word at an offset of a block for 20 bytes (32 rounded, serial 7), frees the block and returns what
// was printed.
std::string PrintedAfterDamage(int offset, std::uint32_t word) {
  ChildResult const result = RunInChildWithoutTeardown([=] {
    VRELHeapSizeCurrent = 0;
    VRELMemoryAllocCounter = 6;
    void* const block = VRELMemoryBoundAllocate(20);
    std::memcpy(static_cast<unsigned char*>(block) + offset, &word, sizeof word);
    VRELMemoryBoundFree(block);
    return VRELHeapSizeCurrent == 0 ? 0 : 1;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

TEST(VRELMemoryBoundTest, ReportsDamageAndFreesBlock) {
  struct {
    int offset;
    std::uint32_t word;
    char const* printed;
  } const cases[] = {
      {16, 1, ""},  // the slack between 20 and 32
      {28, 1, ""},
      {32, 0xDEADBE00,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xdeadbeef, db1=0xdeadbeef, db2=0xdeadbe00, "
       "db3=0xdeadbeef, cntB=7, szeB=32\n"},
      {36, 0x12,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xdeadbeef, db1=0xdeadbeef, db2=0xdeadbeef, "
       "db3=0x12, cntB=7, szeB=32\n"},
      {40, 0xFFFFFFFF,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xdeadbeef, db1=0xdeadbeef, db2=0xdeadbeef, "
       "db3=0xdeadbeef, cntB=-1, szeB=32\n"},
      {44, 33,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xdeadbeef, db1=0xdeadbeef, db2=0xdeadbeef, "
       "db3=0xdeadbeef, cntB=7, szeB=33\n"},
      {-4, 0,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xdeadbeef, db1=0x0, db2=0xdeadbeef, "
       "db3=0xdeadbeef, cntB=7, szeB=32\n"},
      {-8, 0xA,
       "*** Error memory boundary overwrite: szeF=32, cntF=7, db0=0xa, db1=0xdeadbeef, db2=0xdeadbeef, "
       "db3=0xdeadbeef, cntB=7, szeB=32\n"},
      {-12, 8,
       "*** Error memory boundary overwrite: szeF=32, cntF=8, db0=0xdeadbeef, db1=0xdeadbeef, db2=0xdeadbeef, "
       "db3=0xdeadbeef, cntB=7, szeB=32\n"},
  };
  for (auto const& row : cases) {
    SCOPED_TRACE(row.offset);
    EXPECT_EQ(PrintedAfterDamage(row.offset, row.word), row.printed);
  }
}

TEST(VRELMemoryBoundTest, DamagedSizeMisplacesBackWords) {
  ChildResult const result = RunInChildWithoutTeardown([] {
    VRELHeapSizeCurrent = 0;
    VRELMemoryAllocCounter = 6;
    void* const block = VRELMemoryBoundAllocate(20);
    std::memset(block, 0, 32);
    std::uint32_t const wrong = 16;
    std::memcpy(static_cast<unsigned char*>(block) - 16, &wrong, sizeof wrong);
    VRELMemoryBoundFree(block);
    return static_cast<int>(VRELHeapSizeCurrent);
  });
  EXPECT_EQ(result.exitStatus, 16);  // the size in the front word is subtracted
  EXPECT_EQ(result.output,
            "*** Error memory boundary overwrite: szeF=16, cntF=7, db0=0xdeadbeef, db1=0xdeadbeef, db2=0x0, "
            "db3=0x0, cntB=0, szeB=0\n");
}

TEST(VRELMemoryBoundTest, DamagedSizeReadsNothingOutside) {
  for (std::uint32_t wrong : {0x100000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    SCOPED_TRACE(wrong);
    ChildResult const result = RunInChildWithoutTeardown([=] {
      VRELHeapSizeCurrent = 0;
      void* const block = VRELMemoryBoundAllocate(20);
      std::memcpy(static_cast<unsigned char*>(block) - 16, &wrong, sizeof wrong);
      VRELMemoryBoundFree(block);
      return VRELHeapSizeCurrent == 32u - wrong ? 0 : 1;
    });
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output.rfind("*** Error memory boundary overwrite: szeF=", 0), 0u) << result.output;
  }
}

TEST(VRELMemoryBoundTest, SizeBeyond32BitsFails) {
  unsigned int const serial = VRELMemoryAllocCounter;
  EXPECT_EQ(VRELMemoryBoundAllocate(0xFFFFFFF0u), nullptr);
  EXPECT_EQ(VRELMemoryBoundAllocate(0xFFFFFFFFu), nullptr);
  EXPECT_EQ(VRELMemoryAllocCounter, serial);
}

}  // namespace

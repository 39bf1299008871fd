#include "VRELStringBlocks.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <thread>
#include <vector>

#include "Sanitizer.h"
#include "VRELString.h"

namespace {

#ifndef VREL_TEST_HAS_SANITIZER

// Each test runs on a thread of its own, whose list is empty at the start. The thread allocates in the heap of the main
// thread: a heap of its own would be memory that other tests of this program do not expect.
template <class Work>
void OnNewThread(Work work) {
  mallopt(M_ARENA_MAX, 1);
  std::thread(work).join();
}

TEST(VRELStringBlocksTest, DeletedStringIsReused) {
  OnNewThread([] {
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 0);
    { VRELString const text(L"wheel"); }
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 1);
    VRELString const next(L"axle");
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 0);
    EXPECT_EQ(next.toUtf8(), "axle");
    VRELString const third(L"hub");
    EXPECT_EQ(next.toUtf8(), "axle");
    EXPECT_EQ(third.toUtf8(), "hub");
  });
}

TEST(VRELStringBlocksTest, LongStringReleasesItsUnits) {
  OnNewThread([] {
    std::wstring const letters(400, L'x');
    for (int i = 0; i < 3; ++i) {
      VRELString const text(letters.c_str());
      VRELString const copy(text);
      EXPECT_EQ(copy.length(), 400);
    }
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 2);
    VRELString const small(L"x");
    EXPECT_EQ(small.length(), 1);
  });
}

TEST(VRELStringBlocksTest, ListIsLimited) {
  OnNewThread([] {
    std::vector<VRELString> strings(VRELStringBlocks::kCapacity + 10, VRELString(L"bolt"));
    strings.clear();
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), VRELStringBlocks::kCapacity);
    for (int i = 0; i < VRELStringBlocks::kCapacity + 10; ++i) strings.emplace_back(L"nut");
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 0);
    for (VRELString const& text : strings) EXPECT_EQ(text.toUtf8(), "nut");
  });
}

// The empty strings share one ICU string, which must not reach a list.
TEST(VRELStringBlocksTest, EmptyStringHasNoBlock) {
  OnNewThread([] {
    {
      VRELString const empty;
      VRELString const copy(empty);
    }
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), 0);
  });
}

TEST(VRELStringBlocksTest, StringCanBeDeletedOnAnotherThread) {
  std::vector<VRELString> strings;
  OnNewThread([&] {
    for (int i = 0; i < 500; ++i) strings.emplace_back(L"washer");
  });
  OnNewThread([&] {
    strings.clear();
    EXPECT_EQ(VRELStringBlocks::GetFreeCount(), VRELStringBlocks::kCapacity);
  });
}

#endif

}  // namespace

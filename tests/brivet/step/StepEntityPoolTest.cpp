#include "StepEntityPool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

// About 8 MB: chunks of all sizes. Each object keeps its bytes.
TEST(StepEntityPoolTest, ObjectsDoNotOverlap) {
  StepEntityPool pool;
  std::vector<std::uint64_t*> objects;
  for (std::uint64_t i = 0; i < 200000; ++i) {
    auto* const object = static_cast<std::uint64_t*>(pool.Allocate(40));
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(object) % 8, 0U);
    for (int k = 0; k < 5; ++k) object[k] = i;
    objects.push_back(object);
  }
  for (std::uint64_t i = 0; i < objects.size(); ++i) {
    for (int k = 0; k < 5; ++k) ASSERT_EQ(objects[i][k], i);
  }
}

TEST(StepEntityPoolTest, LargeObjectsFit) {
  StepEntityPool pool;
  std::size_t const size = 5000000;
  for (int i = 0; i < 3; ++i) std::memset(pool.Allocate(size), i, size);
  EXPECT_NE(pool.Allocate(size), nullptr);
}

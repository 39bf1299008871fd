#include "VRELOptionsArray.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(VRELOptionsArrayTest, VirtualDestructor) {
  static_assert(std::has_virtual_destructor_v<VRELOptionsArray>);
  static bool isGone;
  struct Derived : VRELOptionsArray {
    ~Derived() override { isGone = true; }
  };
  isGone = false;
  VRELOptionsArray* const array = new Derived;
  delete array;
  EXPECT_TRUE(isGone);
}

}  // namespace

#include "detail/VRELSwapObjectBytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(VRELSwapObjectBytesTest, ExchangesNumbers) {
  double a = 1.5;
  double b = -2.25;
  VRELSwapObjectBytes(a, b);
  EXPECT_EQ(a, -2.25);
  EXPECT_EQ(b, 1.5);
  VRELSwapObjectBytes(a, a);
  EXPECT_EQ(a, -2.25);
}

struct Counted {
  explicit Counted(int number) : value(number) {}
  Counted(Counted const& other) : value(other.value) { ++calls; }
  Counted& operator=(Counted const& other) {
    value = other.value;
    ++calls;
    return *this;
  }
  // Never called.
  Counted* operator&() {
    ++calls;
    return nullptr;
  }

  int value;
  static inline int calls = 0;
};

TEST(VRELSwapObjectBytesTest, CallsNoOperationOfType) {
  Counted a(1);
  Counted b(2);
  VRELSwapObjectBytes(a, b);
  EXPECT_EQ(a.value, 2);
  EXPECT_EQ(b.value, 1);
  EXPECT_EQ(Counted::calls, 0);
}

TEST(VRELSwapObjectBytesTest, ExchangesOwnedMemory) {
  auto a = std::make_unique<int>(1);
  std::unique_ptr<int> b;
  int const* const place = a.get();
  VRELSwapObjectBytes(a, b);
  EXPECT_EQ(a, nullptr);
  EXPECT_EQ(b.get(), place);
}

}  // namespace

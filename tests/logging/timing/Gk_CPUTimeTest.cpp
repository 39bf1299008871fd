#include "Gk_CPUTime.h"

#include <gtest/gtest.h>

#include <climits>
#include <ctime>

namespace {

TEST(Gk_CPUTimeTest, TickIsMicrosecond) {
  EXPECT_EQ(Gk_CPUTime().seconds(), 0.0);
  EXPECT_EQ(Gk_CPUTime(1500000).seconds(), 1.5);
  EXPECT_EQ(Gk_CPUTime(-250000).seconds(), -0.25);
  EXPECT_EQ(Gk_CPUTime(1).seconds(), 0.000001);
}

TEST(Gk_CPUTimeTest, AddsAndSubtractsTicks) {
  Gk_CPUTime time(3000000);
  time -= Gk_CPUTime(500000);
  EXPECT_EQ(time.seconds(), 2.5);
  time += Gk_CPUTime(1000000);
  EXPECT_EQ(time.seconds(), 3.5);
  Gk_CPUTime const& itself = time;
  Gk_CPUTime& same = (time -= itself);
  EXPECT_EQ(&same, &time);
  EXPECT_EQ(time.seconds(), 0.0);
  EXPECT_EQ(&(time += Gk_CPUTime(1)), &time);
}

TEST(Gk_CPUTimeTest, WrapsAround) {
  Gk_CPUTime time(LONG_MAX);
  time += Gk_CPUTime(1);
  EXPECT_LT(time.seconds(), 0.0);
  time -= Gk_CPUTime(1);
  EXPECT_GT(time.seconds(), 0.0);
}

TEST(Gk_CPUTimeTest, NowReturnsProcessClock) {
  Gk_CPUTime const before(static_cast<long>(std::clock()));
  Gk_CPUTime const now = Gk_CPUTime::now();
  Gk_CPUTime const after(static_cast<long>(std::clock()));
  EXPECT_LE(before.seconds(), now.seconds());
  EXPECT_LE(now.seconds(), after.seconds());
}

}  // namespace

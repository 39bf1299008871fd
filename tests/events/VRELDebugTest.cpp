#include "VRELDebug.h"

#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "RecordingListener.h"
#include "VRELInfo.h"
#include "VRELTest.h"
#include "VRELVerbose.h"
#include "VRELWarning.h"

namespace {

class VRELDebugTest : public testing::Test {
 protected:
  ~VRELDebugTest() override { _VRELTraceTab = 0; }
};

TEST_F(VRELDebugTest, DestructorIsVirtual) {
  struct Derived : VRELDebug {
    explicit Derived(int& theDeaths) : deaths(theDeaths) {}
    ~Derived() override { ++deaths; }
    int& deaths;
  };
  int deaths = 0;
  std::unique_ptr<VRELDebug>(new Derived(deaths)).reset();
  EXPECT_EQ(deaths, 1);
}

TEST_F(VRELDebugTest, PrintfSendsNothing) {
  float const floats[16] = {};
  double const doubles[12] = {};
  RecordingListener const listener;
  for (int tab : {0, 2, -1}) {
    _VRELTraceTab = tab;
    VRELDebug::Printf("text %d", 5);
    VRELDebug::Print4x4Matrix(floats);
    VRELDebug::Print3x4Matrix(doubles);
    VRELDebug::PrintPointArray(floats, 5);
  }
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(VRELDebugTest, NoTabPrintfSends) {
  RecordingListener const listener;
  _VRELTraceTab = 2;
  VRELDebug::NoTabPrintf("%s %d%%%%", "text", 5);
  char const* const null = nullptr;
  VRELDebug::NoTabPrintf(null);
  VRELDebug::NoTabPrintf("%s", "%n");
  ASSERT_EQ(listener.events.size(), 2u);
  EXPECT_EQ(listener.events[0].name, "VRELDebugEvent");
  EXPECT_EQ(listener.events[0].level, 10);
  EXPECT_EQ(listener.events[0].text, "text 5%");
  EXPECT_EQ(listener.events[1].text, "%n");
}

TEST_F(VRELDebugTest, CounterIsIndependent) {
  VRELDebug::Tab();
  VRELDebug::Tab();
  EXPECT_EQ(_VRELTraceTab, 2);
  EXPECT_EQ(_VRELInfoTab, 0);
  EXPECT_EQ(_VRELVerboseTab, 0);
  EXPECT_EQ(_VRELTestTab, 0);
  EXPECT_EQ(_VRELWarningTab, 0);
  VRELDebug::Untab();
  EXPECT_EQ(_VRELTraceTab, 1);
  VRELDebug_Tab();
  EXPECT_EQ(_VRELTraceTab, 2);
  VRELDebug_Untab();
  VRELDebug_Untab();
  VRELDebug_Untab();
  EXPECT_EQ(_VRELTraceTab, -1);
}

TEST_F(VRELDebugTest, StopTimerReturnsWholeSeconds) {
  std::time_t const before = std::time(nullptr);
  void* const timer = VRELDebug::StartTimer();
  ASSERT_NE(timer, nullptr);
  auto* const start = static_cast<std::time_t*>(timer);
  EXPECT_GE(*start, before);
  EXPECT_LE(*start, std::time(nullptr));
  *start -= 3;
  // The second can change between the two calls.
  float const elapsed = VRELDebug::StopTimer(timer);
  EXPECT_TRUE(elapsed == 3000.0F || elapsed == 4000.0F) << elapsed;
  // The timer is not deleted and continues.
  EXPECT_GE(VRELDebug::StopTimer(timer), elapsed);
}

TEST_F(VRELDebugTest, StopTimerOfNullReturnsZero) {
  EXPECT_EQ(VRELDebug::StopTimer(nullptr), 0.0F);
}

TEST_F(VRELDebugTest, StopTimerWithinSecondReturnsZero) {
  std::time_t second = 0;
  float elapsed = -1;
  do {
    second = std::time(nullptr);
    elapsed = VRELDebug::StopTimer(VRELDebug::StartTimer());
  } while (std::time(nullptr) != second);
  EXPECT_EQ(elapsed, 0.0F);
}

TEST_F(VRELDebugTest, HasNoField) {
  EXPECT_EQ(sizeof(VRELDebug), sizeof(void*));
}

}  // namespace

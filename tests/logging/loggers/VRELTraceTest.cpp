#include "VRELTrace.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <type_traits>
#include <vector>

#include "RecordingListener.h"
#include "StreamText.h"

namespace {

constexpr auto kDebug = static_cast<VRELTraceLevel>(1);
constexpr auto kMessage = static_cast<VRELTraceLevel>(2);
constexpr auto kError = static_cast<VRELTraceLevel>(3);

// Sets the variable for a test, or unsets it.
class VRELTraceTest : public testing::Test {
 protected:
  VRELTraceTest() { unsetenv("VRELLoggers"); }
  ~VRELTraceTest() override { unsetenv("VRELLoggers"); }

  static void SetLoggers(char const* value) { setenv("VRELLoggers", value, 1); }

  static bool IsEnabled(char const* name) {
    RecordingListener const listener;
    VRELTrace(name).Printf(kMessage, "x");
    return !listener.events.empty();
  }
};

TEST_F(VRELTraceTest, IsDisabledWithoutVariable) {
  RecordingListener const listener;
  VRELTrace trace("topology");
  for (VRELTraceLevel const level : {kDebug, kMessage, kError}) trace.Printf(level, "x");
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(VRELTraceTest, LevelSelectsEvent) {
  SetLoggers("topology");
  RecordingListener const listener;
  VRELTrace trace("topology");
  trace.Printf(kDebug, "%s %d", "faces", 1);
  trace.Printf(kMessage, "%s %d", "faces", 2);
  trace.Printf(kError, "%s %d", "faces", 3);
  ASSERT_EQ(listener.events.size(), 3U);
  EXPECT_EQ(listener.events[0].name, "VRELDebugEvent");
  EXPECT_EQ(listener.events[0].level, 10);
  EXPECT_EQ(listener.events[0].text, "faces 1");
  EXPECT_EQ(listener.events[1].name, "VRELMessageEvent");
  EXPECT_EQ(listener.events[1].level, 50);
  EXPECT_EQ(listener.events[1].text, "faces 2");
  EXPECT_EQ(listener.events[2].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[2].level, 80);
  EXPECT_EQ(listener.events[2].text, "faces 3");
}

// Messages have a prefix.
TEST_F(VRELTraceTest, MessageHasPrefix) {
  class Writing : public VRELEventListener {
   public:
    void HandleEvent(VRELEvent& event) override { event.GetFormattedDescription(&stream); }
    VRELStringOutputStream stream;
  };
  SetLoggers("topology");
  Writing listener;
  VRELEventBus::GetEventBus()->AddListener(&listener);
  VRELTrace trace("topology");
  for (VRELTraceLevel const level : {kDebug, kMessage, kError}) trace.Printf(level, "x");
  VRELEventBus::GetEventBus()->RemoveListener(&listener);
  EXPECT_EQ(TakeText(listener.stream), "x\nMessage : x\nError : x\n");
}

TEST_F(VRELTraceTest, OtherLevelsSendNothing) {
  SetLoggers("topology");
  RecordingListener const listener;
  VRELTrace trace("topology");
  for (int const level : {0, 4, -1, 50}) trace.Printf(static_cast<VRELTraceLevel>(level), "x");
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(VRELTraceTest, NameCanBeAnywhereInVariable) {
  struct {
    char const* value;
    char const* name;
    bool isEnabled;
  } const cases[] = {
      {"topology", "topology", true},
      {"units,topology,mesh", "topology", true},
      {"mytopology2", "topology", true},
      {"topo", "topology", false},
      {"Topology", "topology", false},
      {"", "topology", false},
      {"topology", "", true},
      {"", "", true},
      {"topology", nullptr, false},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(std::string(each.value) + " " + (each.name == nullptr ? "(null)" : each.name));
    SetLoggers(each.value);
    EXPECT_EQ(IsEnabled(each.name), each.isEnabled);
  }
}

TEST_F(VRELTraceTest, ConstructorReadsVariable) {
  SetLoggers("topology");
  VRELTrace const early("topology");
  unsetenv("VRELLoggers");
  VRELTrace const late("topology");
  RecordingListener const listener;
  early.Printf(kMessage, "early");
  late.Printf(kMessage, "late");
  EXPECT_EQ(listener.Texts(), std::vector<std::string>{"early"});
}

// As in every channel: formatted twice, truncated, and nothing for a null format.
TEST_F(VRELTraceTest, FormatsTwiceAndTruncates) {
  SetLoggers("topology");
  RecordingListener const listener;
  VRELTrace const trace("topology");
  trace.Printf(kMessage, "50%%%% of %d", 8);
  trace.Printf(kMessage, "%s", "");
  trace.Printf(kMessage, "%s", std::string(2000, 'x').c_str());
  char const* const null = nullptr;
  trace.Printf(kMessage, null);
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"50% of 8", "(none)", std::string(1023, 'x')}));
}

TEST_F(VRELTraceTest, HasOneField) {
  struct Fields {
    virtual ~Fields() = default;
    bool enabled;
  };
  EXPECT_EQ(sizeof(VRELTrace), sizeof(Fields));
  EXPECT_TRUE(std::has_virtual_destructor_v<VRELTrace>);
}

}  // namespace

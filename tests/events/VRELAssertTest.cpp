#include "VRELAssert.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "RecordingListener.h"

namespace {

TEST(VRELAssertTest, PrintfDoesNotIndent) {
  RecordingListener const listener;
  VRELAssert::Printf("%s %d%%%%", "text", 5);
  char const* const null = nullptr;
  VRELAssert::Printf(null);
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELAssertEvent");
  EXPECT_EQ(listener.events[0].level, 90);
  EXPECT_EQ(listener.events[0].text, "text 5%");
}

TEST(VRELAssertTest, HasNoField) {
  class VRELAssert const channel;
  EXPECT_EQ(sizeof channel, sizeof(void*));
}

TEST(VRELAssertTest, TrueConditionReturns) {
  RecordingListener const listener;
  VRELAssert(true, "m");
  VRELAssert(true, nullptr);
  EXPECT_TRUE(listener.events.empty());
}

class PrintingListener : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    char const* const text = static_cast<VRELTextEvent&>(event).GetMessage();
    std::printf("%s %d <%s>", event.GetEventName(), static_cast<int>(event.GetLevel()), text == nullptr ? "" : text);
  }
};

// Runs a failing assertion in a child process, which exits with status 7 if the assertion returns.
ChildResult AssertInChild(char const* message) {
  return RunInChild([message] {
    static PrintingListener listener;
    VRELEventBus::GetEventBus()->AddListener(&listener);
    VRELAssert(false, message);
    return 7;
  });
}

TEST(VRELAssertTest, FailureSendsErrorAndExitsWithZero) {
  ChildResult const result = AssertInChild("m");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.signal, 0);
  EXPECT_EQ(result.output, "VRELErrorEvent 80 <m>");
}

TEST(VRELAssertTest, FailureExitsWithoutListener) {
  ChildResult const result = RunInChild([] {
    VRELAssert(false, "m");
    return 7;
  });
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
}

TEST(VRELAssertTest, MessageReadsNoArgument) {
  struct {
    char const* message;
    std::string text;
  } const rows[] = {
      {"100%%%%", "100%"}, {"%%%%%%%%", "%%"}, {"%s %n %d %5$s %*d", "%s %n %d %5$s %*d"}, {"%%s", "%s"}, {"", ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.message);
    ChildResult const result = AssertInChild(row.message);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "VRELErrorEvent 80 <" + row.text + ">");
  }
}

TEST(VRELAssertTest, CutsLongMessage) {
  std::string const message(5000, 'x');
  ChildResult const result = AssertInChild(message.c_str());
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "VRELErrorEvent 80 <" + std::string(1023, 'x') + ">");
}

TEST(VRELAssertTest, NullMessageSendsNothing) {
  ChildResult const result = AssertInChild(nullptr);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, "");
}

}  // namespace

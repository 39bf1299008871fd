#include "VRELConsoleLogger.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <type_traits>

#include "ChildProcess.h"
#include "StreamText.h"
#include "VRELAssertEvent.h"
#include "VRELDebugEvent.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"
#include "VRELTestEvent.h"
#include "VRELVerboseEvent.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"
#include "VirtualSlot.h"

// There is one console in the process, which is only set up in child processes.
namespace {

constexpr auto kDefaultLevel = static_cast<VRELEventLevel>(-1);

int ListenerCount() {
  return VRELEventBus::GetEventBus()->GetListenerCount();
}

// Event that writes its level without a line end.
class LevelEvent : public VRELEvent {
 public:
  explicit LevelEvent(int level) : VRELEvent("LevelEvent", static_cast<VRELEventLevel>(level)) {}
  void GetFormattedDescription(VRELOutputStream* stream) override {
    std::string const text = std::to_string(static_cast<int>(GetLevel())) + " ";
    stream->write(text.data(), static_cast<int>(text.size()));
  }
};

void SendLevels() {
  for (int const level : {0, 10, 20, 30, 50, 69, 70, 80, 90}) {
    LevelEvent event(level);
    VRELEventBus::Fire(event);
  }
}

// Runs `body` in a child process with the variable set, or unset for null. Reports failures only.
ChildResult RunWithVariable(char const* value, std::function<void()> const& body) {
  return RunInChild([&] {
    unsetenv("VRELConsoleTracesLevel");
    // Used by other loggers.
    setenv("VRELLogLevel", "ALL", 1);
    if (value != nullptr) setenv("VRELConsoleTracesLevel", value, 1);
    body();
    return testing::Test::HasFailure() ? 1 : 0;
  });
}

void ExpectOutput(ChildResult const& child, std::string const& output, std::string const& errors) {
  EXPECT_EQ(child.exitStatus, 0);
  EXPECT_EQ(child.signal, 0);
  EXPECT_EQ(child.output, output);
  EXPECT_EQ(child.errors, errors);
}

TEST(VRELConsoleLoggerTest, StartsIdle) {
  EXPECT_FALSE(VRELConsoleLogger::_console.IsInitialized());
  ExpectOutput(RunWithVariable("ALL",
                               [] {
                                 SendLevels();
                                 LevelEvent event(80);
                                 VRELConsoleLogger::_console.HandleEvent(event);
                                 EXPECT_EQ(ListenerCount(), 0);
                               }),
               "", "");
}

TEST(VRELConsoleLoggerTest, SetUpInitializesConsole) {
  ExpectOutput(RunWithVariable(nullptr,
                               [] {
                                 VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
                                 EXPECT_TRUE(VRELConsoleLogger::_console.IsInitialized());
                                 EXPECT_EQ(VRELConsoleLogger::_console.GetOutputStream(), nullptr);
                                 EXPECT_EQ(ListenerCount(), 1);
                                 VRELEventBus::GetEventBus()->RemoveListener(&VRELConsoleLogger::_console);
                                 EXPECT_EQ(ListenerCount(), 0);
                               }),
               "", "");
}

TEST(VRELConsoleLoggerTest, SplitsByLevel) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    SendLevels();
  });
  ExpectOutput(child, "0 10 20 30 50 69 ", "70 80 90 ");
}

TEST(VRELConsoleLoggerTest, LevelSelectsStreamOfMessages) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    VRELDebugEvent::Fire("debug");
    VRELTestEvent::Fire("test");
    VRELVerboseEvent::Fire("verbose");
    VRELMessageEvent::Fire("message");
    VRELWarningEvent::Fire("fired");
    VRELWarning::Printf("printed");
    VRELErrorEvent::Fire("error");
    VRELAssertEvent anAssert("assert");
    VRELEventBus::Fire(anAssert);
  });
  ExpectOutput(child, "debug\ntest\nverbose\nMessage : message\nWarning : fired\n",
               "Warning : printed\nError : error\nAssert : assert\n");
}

TEST(VRELConsoleLoggerTest, EnvironmentOverridesLevel) {
  struct {
    char const* variable;
    int argument;
    char const* output;
    char const* errors;
  } const cases[] = {
      {nullptr, 30, "30 50 69 ", "70 80 90 "},
      {nullptr, -1, "50 69 ", "70 80 90 "},
      {nullptr, -2, "0 10 20 30 50 69 ", "70 80 90 "},
      {nullptr, 70, "", "70 80 90 "},
      {nullptr, 999, "", ""},
      {"ALL", 999, "0 10 20 30 50 69 ", "70 80 90 "},
      {"DEBUG", 999, "10 20 30 50 69 ", "70 80 90 "},
      {"TEST", 0, "20 30 50 69 ", "70 80 90 "},
      {"VERBOSE", 0, "30 50 69 ", "70 80 90 "},
      {"INFO", 0, "50 69 ", "70 80 90 "},
      {"ERROR", 0, "", "80 90 "},
      {"ABORT", -1, "", "90 "},
      {"NONE", 0, "", ""},
      {"WARNING", 0, "", ""},
      {"info", -1, "", ""},
      {"A", 50, "", ""},
      {"", 30, "", ""},
      {"", -1, "", ""},
      {"INFO ", 30, "", ""},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(std::string(each.variable == nullptr ? "(unset)" : each.variable) + " " +
                 std::to_string(each.argument));
    ChildResult const child = RunWithVariable(each.variable, [&] {
      VRELConsoleLogger::SetUp(static_cast<VRELEventLevel>(each.argument));
      SendLevels();
    });
    ExpectOutput(child, each.output, each.errors);
  }
}

TEST(VRELConsoleLoggerTest, SecondSetUpIsIgnored) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_ERROR);
    VRELConsoleLogger::SetUp(VREL_LEVEL_DEBUG);
    setenv("VRELConsoleTracesLevel", "ALL", 1);
    VRELConsoleLogger::SetUp(kDefaultLevel);
    EXPECT_EQ(ListenerCount(), 1);
    SendLevels();
  });
  ExpectOutput(child, "", "80 90 ");
}

// Also if the environment turned the console off.
TEST(VRELConsoleLoggerTest, VariableIsReadOnce) {
  ChildResult const child = RunWithVariable("no keyword", [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    EXPECT_TRUE(VRELConsoleLogger::_console.IsInitialized());
    unsetenv("VRELConsoleTracesLevel");
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    SendLevels();
  });
  ExpectOutput(child, "", "");
}

TEST(VRELConsoleLoggerTest, FinalizedConsoleStaysSilent) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    VRELConsoleLogger::_console.Finalize();
    EXPECT_TRUE(VRELConsoleLogger::_console.IsInitialized());
    EXPECT_EQ(ListenerCount(), 0);
    VRELConsoleLogger::SetUp(VREL_LEVEL_ALL);
    EXPECT_EQ(ListenerCount(), 0);
    SendLevels();
    // The threshold is above every level.
    LevelEvent event(998);
    VRELConsoleLogger::_console.HandleEvent(event);
  });
  ExpectOutput(child, "", "");
}

TEST(VRELConsoleLoggerTest, BaseStreamIsNotUsed) {
  VRELConsoleLogger logger;
  auto* const stream = new VRELStringOutputStream;
  logger.Initialize(stream, VREL_LEVEL_ALL);
  EXPECT_EQ(logger.GetOutputStream(), stream);
  EXPECT_FALSE(logger.IsInitialized());
  EXPECT_EQ(ListenerCount(), 1);
  SendLevels();
  EXPECT_EQ(TakeText(*stream), "");
}

TEST(VRELConsoleLoggerTest, DestructorRemovesListener) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    {
      VRELConsoleLogger logger;
      EXPECT_FALSE(logger.IsInitialized());
      logger.Initialize(VREL_LEVEL_INFO);
      EXPECT_TRUE(logger.IsInitialized());
      VRELInfo::Printf("shown");
      EXPECT_EQ(ListenerCount(), 1);
    }
    EXPECT_EQ(ListenerCount(), 0);
    VRELInfo::Printf("lost");
    EXPECT_GE(write(STDOUT_FILENO, "open\n", 5), 0);
  });
  ExpectOutput(child, "Message : shown\nopen\n", "");
}

TEST(VRELConsoleLoggerTest, BypassesStdioBuffers) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    std::fputs("buffered\n", stdout);
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    VRELInfo::Printf("first");
  });
  ExpectOutput(child, "Message : first\nbuffered\n", "");
}

// Exit handlers of the application run before the library is destroyed.
TEST(VRELConsoleLoggerTest, WritesUntilExit) {
  ChildResult const child = RunWithVariable(nullptr, [] {
    VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
    std::atexit([] {
      VRELInfo::Printf("at exit");
      VRELErrorEvent::Fire("at exit");
    });
  });
  ExpectOutput(child, "Message : at exit\n", "Error : at exit\n");
}

TEST(VRELConsoleLoggerTest, ClosedStandardStreamsAreIgnored) {
  for (bool const isClosed : {true, false}) {
    ChildResult const child = RunWithVariable(nullptr, [&] {
      int const full = open("/dev/full", O_WRONLY);
      if (isClosed) {
        close(STDOUT_FILENO);
      } else {
        dup2(full, STDOUT_FILENO);
      }
      VRELConsoleLogger::SetUp(VREL_LEVEL_INFO);
      VRELInfo::Printf("lost");
      VRELErrorEvent::Fire("shown");
      close(full);
    });
    EXPECT_EQ(child.signal, 0);
    EXPECT_EQ(child.output, "");
    EXPECT_EQ(child.errors, "Error : shown\n");
  }
}

TEST(VRELConsoleLoggerTest, KeepsSlotsAndSize) {
  using OfLevel = void (VRELConsoleLogger::*)(VRELEventLevel);
  EXPECT_EQ(SlotOf(&VRELConsoleLogger::HandleEvent), 0U);
  EXPECT_EQ(SlotOf(static_cast<OfLevel>(&VRELConsoleLogger::Initialize)), 7U);
  EXPECT_EQ(sizeof(VRELConsoleLogger), sizeof(VRELLogger) + 2 * sizeof(VRELOutputStream*));
  EXPECT_TRUE((std::is_base_of_v<VRELLogger, VRELConsoleLogger>));
}

}  // namespace

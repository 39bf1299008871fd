#include "VRELLogger.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "OpenDescriptors.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "VRELAbortException.h"
#include "VRELAssertEvent.h"
#include "VRELDebugEvent.h"
#include "VRELErrorEvent.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELMessageEvent.h"
#include "VRELOutputStream.h"
#include "VRELTestEvent.h"
#include "VRELVerboseEvent.h"
#include "VRELWarning.h"
#include "VirtualSlot.h"

namespace {

// Records calls on a stream, beyond its lifetime.
struct StreamHistory {
  std::string text;
  int writes = 0;
  bool isDeleted = false;
};

class HistoryStream : public VRELOutputStream {
 public:
  explicit HistoryStream(StreamHistory& streamHistory) : history(streamHistory) {}
  ~HistoryStream() override { history.isDeleted = true; }
  int write(char const* buffer, int count) override {
    ++history.writes;
    history.text.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

 private:
  StreamHistory& history;
};

int ListenerCount() {
  return VRELEventBus::GetEventBus()->GetListenerCount();
}

// Sends one event of each level.
void SendAll() {
  VRELDebugEvent::Fire("debug");
  VRELTestEvent::Fire("test");
  VRELVerboseEvent::Fire("verbose");
  VRELMessageEvent::Fire("message");
  VRELWarning::Printf("warning");
  VRELErrorEvent::Fire("error");
  VRELAssertEvent anAssert("assert");
  VRELEventBus::Fire(anAssert);
}

#define FROM_ASSERT "Assert : assert\n"
#define FROM_ERROR "Error : error\n" FROM_ASSERT
#define FROM_WARNING "Warning : warning\n" FROM_ERROR
#define FROM_INFO "Message : message\n" FROM_WARNING
#define FROM_VERBOSE "verbose\n" FROM_INFO
#define FROM_TEST "test\n" FROM_VERBOSE
#define FROM_DEBUG "debug\n" FROM_TEST

class VRELLoggerTest : public testing::Test {
 protected:
  VRELLoggerTest() { unsetenv("VRELLogLevel"); }
  ~VRELLoggerTest() override {
    unsetenv("VRELLogLevel");
    EXPECT_EQ(ListenerCount(), 0);
  }

  // Returns what a logger with this threshold writes.
  static std::string Passing(int level) {
    StreamHistory history;
    VRELLogger logger;
    logger.Initialize(new HistoryStream(history), static_cast<VRELEventLevel>(level));
    SendAll();
    return history.text;
  }

  ScratchDirectory directory;
};

TEST_F(VRELLoggerTest, StartsIdle) {
  VRELLogger logger;
  EXPECT_EQ(logger.GetOutputStream(), nullptr);
  EXPECT_EQ(ListenerCount(), 0);
  VRELMessageEvent event("text");
  logger.HandleEvent(event);
}

TEST_F(VRELLoggerTest, InitializeSetsStreamAndAddsListener) {
  StreamHistory history;
  auto* const stream = new HistoryStream(history);
  VRELLogger logger;
  logger.Initialize(stream, VREL_LEVEL_INFO);
  EXPECT_EQ(logger.GetOutputStream(), stream);
  EXPECT_EQ(ListenerCount(), 1);
  VRELMessageEvent::Fire("text");
  EXPECT_EQ(history.text, "Message : text\n");
}

TEST_F(VRELLoggerTest, WritesEventsFromThreshold) {
  struct {
    int level;
    char const* text;
  } const cases[] = {
      {0, FROM_DEBUG},    {10, FROM_DEBUG}, {11, FROM_TEST},   {20, FROM_TEST},    {21, FROM_VERBOSE},
      {30, FROM_VERBOSE}, {31, FROM_INFO},  {50, FROM_INFO},   {51, FROM_WARNING}, {70, FROM_WARNING},
      {71, FROM_ERROR},   {80, FROM_ERROR}, {81, FROM_ASSERT}, {90, FROM_ASSERT},  {91, ""},
      {999, ""},          {-2, FROM_DEBUG},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(each.level);
    EXPECT_EQ(Passing(each.level), each.text);
  }
}

TEST_F(VRELLoggerTest, DefaultLevelReadsEnvironment) {
  struct {
    char const* keyword;
    char const* text;
  } const cases[] = {
      {"ALL", FROM_DEBUG},    {"DEBUG", FROM_DEBUG}, {"TEST", FROM_TEST},    {"VERBOSE", FROM_VERBOSE},
      {"INFO", FROM_INFO},    {"ERROR", FROM_ERROR}, {"ABORT", FROM_ASSERT}, {"NONE", ""},
      {"WARNING", FROM_INFO}, {"all", FROM_INFO},    {"A", FROM_INFO},       {"", FROM_INFO},
      {"NONE ", FROM_INFO},   {"80", FROM_INFO},     {"\xFF", FROM_INFO},
  };
  EXPECT_EQ(Passing(-1), FROM_INFO);
  for (auto const& each : cases) {
    SCOPED_TRACE(each.keyword);
    setenv("VRELLogLevel", each.keyword, 1);
    EXPECT_EQ(Passing(-1), each.text);
  }
}

TEST_F(VRELLoggerTest, LevelOverridesEnvironment) {
  setenv("VRELLogLevel", "NONE", 1);
  EXPECT_EQ(Passing(80), FROM_ERROR);
  setenv("VRELLogLevel", "ALL", 1);
  EXPECT_EQ(Passing(80), FROM_ERROR);
}

// Nothing is added or removed, line ends included. Each event is one write.
TEST_F(VRELLoggerTest, WritesTextsVerbatimInOrder) {
  class TextEvent : public VRELEvent {
   public:
    explicit TextEvent(char const* initialText) : VRELEvent("TextEvent", VREL_LEVEL_INFO), text(initialText) {}
    void GetFormattedDescription(VRELOutputStream* stream) override {
      stream->write(text.data(), static_cast<int>(text.size()));
    }

   private:
    std::string text;
  };
  StreamHistory history;
  VRELLogger logger;
  logger.Initialize(new HistoryStream(history), VREL_LEVEL_INFO);
  TextEvent first("a");
  TextEvent second("b\r\nc");
  VRELEvent silent("Silent", VREL_LEVEL_ERROR);
  VRELEventBus::Fire(first);
  VRELEventBus::Fire(second);
  VRELEventBus::Fire(silent);
  VRELMessageEvent::Fire("caf\xC3\xA9\n");
  VRELErrorEvent::Fire("%d", 7);
  EXPECT_EQ(history.text, "ab\r\ncMessage : caf\xC3\xA9\n\nError : 7\n");
  EXPECT_EQ(history.writes, 4);
}

// The event writes to the stream of the logger itself.
TEST_F(VRELLoggerTest, PassesStreamToEvent) {
  class StreamRecordingEvent : public VRELEvent {
   public:
    StreamRecordingEvent() : VRELEvent("StreamRecordingEvent", VREL_LEVEL_INFO) {}
    void GetFormattedDescription(VRELOutputStream* stream) override { seen = stream; }
    VRELOutputStream* seen = nullptr;
  };
  StreamHistory history;
  VRELLogger logger;
  logger.Initialize(new HistoryStream(history), VREL_LEVEL_INFO);
  StreamRecordingEvent event;
  VRELEventBus::Fire(event);
  EXPECT_EQ(event.seen, logger.GetOutputStream());
}

TEST_F(VRELLoggerTest, SecondInitializeIsIgnored) {
  StreamHistory firstHistory;
  StreamHistory secondHistory;
  auto* const first = new HistoryStream(firstHistory);
  HistoryStream second(secondHistory);
  VRELLogger logger;
  logger.Initialize(first, VREL_LEVEL_ERROR);
  logger.Initialize(&second, VREL_LEVEL_ALL);
  EXPECT_EQ(logger.GetOutputStream(), first);
  EXPECT_EQ(ListenerCount(), 1);
  SendAll();
  EXPECT_EQ(firstHistory.text, FROM_ERROR);
  EXPECT_EQ(secondHistory.text, "");
}

TEST_F(VRELLoggerTest, NullIsIgnored) {
  VRELOutputStream* const noStream = nullptr;
  std::FILE* const noFile = nullptr;
  VRELLogger logger;
  logger.Initialize(noStream, VREL_LEVEL_ALL);
  logger.Initialize(noFile, VREL_LEVEL_ALL);
  EXPECT_EQ(logger.GetOutputStream(), nullptr);
  EXPECT_EQ(ListenerCount(), 0);
}

TEST_F(VRELLoggerTest, FinalizedLoggerCanBeInitialized) {
  StreamHistory first;
  StreamHistory second;
  VRELLogger logger;
  logger.Initialize(new HistoryStream(first), VREL_LEVEL_INFO);
  logger.Finalize();
  EXPECT_TRUE(first.isDeleted);
  EXPECT_EQ(logger.GetOutputStream(), nullptr);
  EXPECT_EQ(ListenerCount(), 0);
  VRELMessageEvent::Fire("lost");
  VRELMessageEvent event("lost");
  logger.HandleEvent(event);
  logger.Finalize();
  logger.Initialize(new HistoryStream(second), VREL_LEVEL_ERROR);
  SendAll();
  EXPECT_EQ(first.text, "");
  EXPECT_EQ(second.text, FROM_ERROR);
}

TEST_F(VRELLoggerTest, DestructorFinalizes) {
  StreamHistory history;
  {
    VRELLogger logger;
    logger.Initialize(new HistoryStream(history), VREL_LEVEL_INFO);
    EXPECT_FALSE(history.isDeleted);
  }
  EXPECT_TRUE(history.isDeleted);
  EXPECT_EQ(ListenerCount(), 0);
}

TEST_F(VRELLoggerTest, BorrowedFileStaysOpen) {
  std::string const name = directory.Path("log");
  std::FILE* const file = std::fopen(name.c_str(), "w");
  ASSERT_NE(file, nullptr);
  VRELLogger logger;
  logger.Initialize(file, VREL_LEVEL_INFO);
  EXPECT_NE(dynamic_cast<VRELFileOutputStream*>(logger.GetOutputStream()), nullptr);
  VRELMessageEvent::Fire("text");
  EXPECT_EQ(directory.Read("log"), "Message : text\n");
  logger.Finalize();
  EXPECT_EQ(CountOpenDescriptors(name), 1);
  std::fputs("more", file);
  std::fclose(file);
  EXPECT_EQ(directory.Read("log"), "Message : text\nmore");
}

TEST_F(VRELLoggerTest, PathIsCreatedOrTruncated) {
  directory.Write("old", "before");
  for (char const* name : {"old", "new"}) {
    SCOPED_TRACE(name);
    VRELFilePath path(directory.Path(name).c_str());
    VRELLogger logger;
    logger.Initialize(path, VREL_LEVEL_ERROR);
    EXPECT_EQ(directory.Read(name), "");
    SendAll();
    EXPECT_EQ(directory.Read(name), FROM_ERROR);
    EXPECT_EQ(CountOpenDescriptors(directory.Path(name)), 1);
    logger.Finalize();
    EXPECT_EQ(CountOpenDescriptors(directory.Path(name)), 0);
  }
  struct stat stats = {};
  ASSERT_EQ(stat(directory.Path("new").c_str(), &stats), 0);
  EXPECT_EQ(stats.st_mode & 0777, 0600U);
}

TEST_F(VRELLoggerTest, InvalidPathIsIgnored) {
  RecordingListener const listener;
  VRELFilePath path;
  VRELLogger logger;
  logger.Initialize(path, VREL_LEVEL_ALL);
  EXPECT_EQ(logger.GetOutputStream(), nullptr);
  EXPECT_EQ(ListenerCount(), 1);
  EXPECT_TRUE(listener.events.empty());
}

TEST_F(VRELLoggerTest, FailedOpenSendsErrorEvent) {
  RecordingListener const listener;
  for (std::string const& name : {directory.Path("no/such/log"), directory.Path()}) {
    VRELFilePath path(name.c_str());
    VRELLogger logger;
    logger.Initialize(path, VREL_LEVEL_ALL);
    EXPECT_EQ(logger.GetOutputStream(), nullptr);
    EXPECT_EQ(ListenerCount(), 1);
    // It can be initialized with another file.
    VRELFilePath possible(directory.Path("log").c_str());
    logger.Initialize(possible, VREL_LEVEL_ALL);
    EXPECT_EQ(ListenerCount(), 2);
  }
  ASSERT_EQ(listener.events.size(), 2U);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].level, 80);
  EXPECT_EQ(listener.Texts(), (std::vector<std::string>{"CANNOT_OPEN_FILE", "CANNOT_OPEN_FILE"}));
}

// Throws the given exception at each event.
class ThrowingListener : public VRELEventListener {
 public:
  explicit ThrowingListener(std::function<void()> const& thrower) : toss(thrower) {
    VRELEventBus::GetEventBus()->AddListener(this);
  }
  ~ThrowingListener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  void HandleEvent(VRELEvent& /*event*/) override { toss(); }

 private:
  std::function<void()> toss;
};

class SpecialAbort : public VRELAbortException {
 public:
  virtual ~SpecialAbort() = default;
};

TEST_F(VRELLoggerTest, AbortIsRethrownAsNewObject) {
  ThrowingListener const listener([] { throw SpecialAbort(); });
  VRELFilePath path(directory.Path("no/such/log").c_str());
  VRELLogger logger;
  bool isNew = false;
  try {
    logger.Initialize(path, VREL_LEVEL_ALL);
  } catch (SpecialAbort const&) {
    ADD_FAILURE() << "the exception itself got through";
  } catch (VRELAbortException const&) {
    isNew = true;
  }
  EXPECT_TRUE(isNew);
  EXPECT_EQ(logger.GetOutputStream(), nullptr);
  EXPECT_EQ(ListenerCount(), 1);
}

TEST_F(VRELLoggerTest, OtherExceptionsAreDropped) {
  std::function<void()> const throwers[] = {
      [] { throw std::runtime_error("text"); },
      [] { throw 7; },
      [] { throw "text"; },
  };
  VRELFilePath path(directory.Path("no/such/log").c_str());
  for (auto const& thrower : throwers) {
    ThrowingListener const listener(thrower);
    VRELLogger logger;
    EXPECT_NO_THROW(logger.Initialize(path, VREL_LEVEL_ALL));
    EXPECT_EQ(logger.GetOutputStream(), nullptr);
  }
}

// Overrides the stream form.
class DerivedLogger : public VRELLogger {
 public:
  using VRELLogger::Initialize;
  void Initialize(VRELOutputStream* newStream, VRELEventLevel newLevel) override {
    stream.reset(newStream);
    level = newLevel;
    if (toss) toss();
  }

  std::unique_ptr<VRELOutputStream> stream;
  int level = 0;
  std::function<void()> toss;
};

TEST_F(VRELLoggerTest, FormsCallVirtualStreamForm) {
  VRELFilePath path(directory.Path("log").c_str());
  DerivedLogger ofPath;
  static_cast<VRELLogger&>(ofPath).Initialize(path, VREL_LEVEL_DEFAULT);
  ASSERT_NE(dynamic_cast<VRELFileOutputStream*>(ofPath.stream.get()), nullptr);
  EXPECT_EQ(ofPath.level, -1);
  ofPath.stream->write("a", 1);
  EXPECT_EQ(directory.Read("log"), "a");

  std::FILE* const file = std::fopen(directory.Path("log").c_str(), "a");
  ASSERT_NE(file, nullptr);
  DerivedLogger ofFile;
  static_cast<VRELLogger&>(ofFile).Initialize(file, VREL_LEVEL_TEST);
  ASSERT_NE(dynamic_cast<VRELFileOutputStream*>(ofFile.stream.get()), nullptr);
  EXPECT_EQ(ofFile.level, 20);
  ofFile.stream->write("b", 1);
  EXPECT_EQ(directory.Read("log"), "ab");
  std::fclose(file);
}

TEST_F(VRELLoggerTest, OnlyPathFormCatchesExceptions) {
  VRELFilePath path(directory.Path("log").c_str());
  std::FILE* const file = std::fopen(directory.Path("file").c_str(), "w");
  ASSERT_NE(file, nullptr);
  DerivedLogger logger;
  VRELLogger& base = logger;
  logger.toss = [] { throw 7; };
  EXPECT_NO_THROW(base.Initialize(path, VREL_LEVEL_ALL));
  EXPECT_THROW(base.Initialize(file, VREL_LEVEL_ALL), int);
  logger.toss = [] { throw SpecialAbort(); };
  try {
    base.Initialize(path, VREL_LEVEL_ALL);
    ADD_FAILURE() << "nothing was thrown";
  } catch (SpecialAbort const&) {
    ADD_FAILURE() << "the exception itself got through";
  } catch (VRELAbortException const&) {
  }
  EXPECT_THROW(base.Initialize(file, VREL_LEVEL_ALL), SpecialAbort);
  std::fclose(file);
}

// The stream on the second file is never deleted, so its file stays open.
TEST_F(VRELLoggerTest, ActiveLoggerTruncatesSecondFile) {
  StreamHistory history;
  directory.Write("other", "before");
  VRELFilePath other(directory.Path("other").c_str());
  std::FILE* const file = std::fopen(directory.Path("file").c_str(), "w");
  ASSERT_NE(file, nullptr);
  {
    VRELLogger logger;
    logger.Initialize(new HistoryStream(history), VREL_LEVEL_ERROR);
    logger.Initialize(other, VREL_LEVEL_ALL);
    logger.Initialize(file, VREL_LEVEL_ALL);
    SendAll();
  }
  EXPECT_EQ(history.text, FROM_ERROR);
  EXPECT_EQ(directory.Read("other"), "");
  EXPECT_EQ(directory.Read("file"), "");
  EXPECT_EQ(CountOpenDescriptors(directory.Path("other")), 1);
  std::fclose(file);
}

TEST_F(VRELLoggerTest, KeepsSlotsAndSize) {
  using OfPath = void (VRELLogger::*)(VRELFilePath&, VRELEventLevel);
  using OfFile = void (VRELLogger::*)(std::FILE*, VRELEventLevel);
  using OfStream = void (VRELLogger::*)(VRELOutputStream*, VRELEventLevel);
  EXPECT_EQ(SlotOf(&VRELLogger::HandleEvent), 0U);
  EXPECT_EQ(SlotOf(static_cast<OfPath>(&VRELLogger::Initialize)), 3U);
  EXPECT_EQ(SlotOf(static_cast<OfFile>(&VRELLogger::Initialize)), 4U);
  EXPECT_EQ(SlotOf(static_cast<OfStream>(&VRELLogger::Initialize)), 5U);
  EXPECT_EQ(SlotOf(&VRELLogger::Finalize), 6U);
  struct Fields {
    virtual ~Fields() = default;
    VRELEventLevel threshold;
    VRELOutputStream* stream;
  };
  EXPECT_EQ(sizeof(VRELLogger), sizeof(Fields));
  EXPECT_TRUE((std::is_base_of_v<VRELEventListener, VRELLogger>));
  EXPECT_FALSE(std::is_copy_constructible_v<VRELLogger>);
}

}  // namespace

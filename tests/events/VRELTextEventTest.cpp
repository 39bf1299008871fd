#include "VRELTextEvent.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <memory>
#include <string>
#include <type_traits>

#include "RecordingListener.h"
#include "StreamText.h"
#include "VRELAssertEvent.h"
#include "VRELDebug.h"
#include "VRELDebugEvent.h"
#include "VRELErrorEvent.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"
#include "VRELTest.h"
#include "VRELTestEvent.h"
#include "VRELVerbose.h"
#include "VRELVerboseEvent.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"

namespace {

template <class Event>
std::unique_ptr<Event> MakeFromList(char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  auto event = std::make_unique<Event>(arguments, format);
  va_end(arguments);
  return event;
}

struct MessageEventRow {
  char const* name;
  int variadicLevel;
  int listLevel;
  std::unique_ptr<VRELTextEvent> (*makeVariadic)(char const* format, char const* argument);
  std::unique_ptr<VRELTextEvent> (*makeFromList)(char const* format, char const* argument);
  std::unique_ptr<VRELTextEvent> (*copy)(VRELTextEvent const& source);
  void (*fire)(char const* format, char const* argument);
};

template <class Event>
constexpr MessageEventRow Row(char const* name, int variadicLevel, int listLevel) {
  return {name,
          variadicLevel,
          listLevel,
          [](char const* format, char const* argument) -> std::unique_ptr<VRELTextEvent> {
            return std::make_unique<Event>(format, argument);
          },
          [](char const* format, char const* argument) -> std::unique_ptr<VRELTextEvent> {
            return MakeFromList<Event>(format, argument);
          },
          [](VRELTextEvent const& source) -> std::unique_ptr<VRELTextEvent> {
            return std::make_unique<Event>(static_cast<Event const&>(source));
          },
          [](char const* format, char const* argument) { Event::Fire(format, argument); }};
}

MessageEventRow const kRows[] = {
    Row<VRELErrorEvent>("VRELErrorEvent", 80, 80),     Row<VRELWarningEvent>("VRELWarningEvent", 70, 50),
    Row<VRELMessageEvent>("VRELMessageEvent", 50, 50), Row<VRELVerboseEvent>("VRELVerboseEvent", 30, 30),
    Row<VRELTestEvent>("VRELTestEvent", 20, 20),       Row<VRELDebugEvent>("VRELDebugEvent", 10, 10),
    Row<VRELAssertEvent>("VRELAssertEvent", 90, 30),
};

TEST(VRELTextEventTest, ClassesHaveNamesAndLevels) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    auto const variadic = row.makeVariadic("text %s", "x");
    EXPECT_STREQ(variadic->GetEventName(), row.name);
    EXPECT_EQ(variadic->GetLevel(), row.variadicLevel);
    EXPECT_STREQ(variadic->GetMessage(), "text x");
    auto const fromList = row.makeFromList("text %s", "y");
    EXPECT_STREQ(fromList->GetEventName(), row.name);
    EXPECT_EQ(fromList->GetLevel(), row.listLevel);
    EXPECT_STREQ(fromList->GetMessage(), "text y");
    EXPECT_FALSE(variadic->IsTimed());
    EXPECT_TRUE(variadic->IsKindOf("VRELEvent"));
    EXPECT_FALSE(variadic->IsKindOf(row.name));
    EXPECT_TRUE(variadic->IsA(row.name));
  }
}

TEST(VRELTextEventTest, FireUsesLevelOfListConstructor) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    RecordingListener const listener;
    row.fire("text %s", "z");
    ASSERT_EQ(listener.events.size(), 1u);
    EXPECT_EQ(listener.events[0].name, row.name);
    EXPECT_EQ(listener.events[0].level, row.listLevel);
    EXPECT_EQ(listener.events[0].text, "text z");
  }
}

TEST(VRELTextEventTest, FireFormatsOnce) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    RecordingListener const listener;
    row.fire("100%% of %s", "%d %s %n 5%%");
    EXPECT_EQ(listener.Texts(), std::vector<std::string>{"100% of %d %s %n 5%%"});
  }
}

TEST(VRELTextEventTest, FireOfNullSendsNothing) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    RecordingListener const listener;
    row.fire(nullptr, "x");
    EXPECT_TRUE(listener.events.empty());
  }
}

TEST(VRELTextEventTest, EmptyMessageIsNull) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.makeVariadic("", "x")->GetMessage(), nullptr);
    EXPECT_EQ(row.makeFromList("", "x")->GetMessage(), nullptr);
    EXPECT_EQ(row.makeVariadic("%s", "")->GetMessage(), nullptr);
    EXPECT_EQ(row.makeVariadic(nullptr, "x")->GetMessage(), nullptr);
    EXPECT_EQ(row.makeFromList(nullptr, "x")->GetMessage(), nullptr);
    RecordingListener const listener;
    row.fire("", "x");
    EXPECT_EQ(listener.Texts(), std::vector<std::string>{"(none)"});
  }
}

// "%s" alone is not formatted but copied.
TEST(VRELTextEventTest, FormatOfOneStringIsCopied) {
  char const directives[] = "100%% %s \xE9\n";
  char const* volatile null = nullptr;  // the compiler would warn of a literal
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    EXPECT_STREQ(row.makeVariadic("%s", directives)->GetMessage(), directives);
    EXPECT_STREQ(row.makeFromList("%s", directives)->GetMessage(), directives);
    EXPECT_STREQ(row.makeVariadic("%s", null)->GetMessage(), "(null)");
    EXPECT_STREQ(row.makeFromList("%s", null)->GetMessage(), "(null)");
    EXPECT_STREQ(row.makeVariadic("%s%%", "x")->GetMessage(), "x%");
  }
}

TEST(VRELTextEventTest, CutsAfter1023Bytes) {
  std::string const fits(1023, 'x');
  std::string const tooLong = fits + "y";
  std::string const farTooLong(100000, 'x');
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.makeVariadic("%s", fits.c_str())->GetMessage(), fits);
    EXPECT_EQ(row.makeVariadic("%s", tooLong.c_str())->GetMessage(), fits);
    EXPECT_EQ(row.makeFromList("%s", tooLong.c_str())->GetMessage(), fits);
    EXPECT_EQ(row.makeFromList("%s", farTooLong.c_str())->GetMessage(), fits);
    EXPECT_EQ(row.makeFromList(farTooLong.c_str(), "")->GetMessage(), fits);
    RecordingListener const listener;
    row.fire("%s", tooLong.c_str());
    EXPECT_EQ(listener.Texts(), std::vector<std::string>{fits});
  }
}

TEST(VRELTextEventTest, CopyIsDeep) {
  for (MessageEventRow const& row : kRows) {
    SCOPED_TRACE(row.name);
    auto source = row.makeVariadic("text %s", "x");
    auto const copy = row.copy(*source);
    EXPECT_NE(copy->GetMessage(), source->GetMessage());
    source.reset();
    EXPECT_STREQ(copy->GetMessage(), "text x");
    EXPECT_STREQ(copy->GetEventName(), row.name);
    EXPECT_EQ(copy->GetLevel(), row.variadicLevel);
    EXPECT_EQ(row.copy(*row.makeVariadic("", "x"))->GetMessage(), nullptr);
  }
}

TEST(VRELTextEventTest, MessageEndsAtZeroByte) {
  VRELTestEvent const event("a%cb", '\0');
  EXPECT_STREQ(event.GetMessage(), "a");
  VRELTestEvent const none("%cb", '\0');
  EXPECT_EQ(none.GetMessage(), nullptr);
}

TEST(VRELTextEventTest, RejectedFormatLeavesNull) {
  // This character has no multibyte encoding in the C locale.
  VRELTestEvent const event("before %ls", L"\u4E2D");
  EXPECT_EQ(event.GetMessage(), nullptr);
}

TEST(VRELTextEventTest, AddsMessageFieldOnly) {
  EXPECT_EQ(sizeof(VRELWarningEvent), sizeof(VRELEvent) + sizeof(char*));
  EXPECT_EQ(sizeof(VRELVerboseEvent), sizeof(VRELEvent) + sizeof(char*));
  EXPECT_EQ(sizeof(VRELTestEvent), sizeof(VRELEvent) + sizeof(char*));
  EXPECT_EQ(sizeof(VRELDebugEvent), sizeof(VRELEvent) + sizeof(char*));
  EXPECT_EQ(sizeof(VRELAssertEvent), sizeof(VRELEvent) + sizeof(char*));
  EXPECT_EQ(sizeof(VRELErrorEvent), sizeof(VRELEvent) + sizeof(char*) + sizeof(VRELError*));
  EXPECT_FALSE(std::is_copy_assignable_v<VRELWarningEvent>);
}

template <class Event>
std::string Description(Event event) {
  return TextOf([&](VRELOutputStream* stream) { event.GetFormattedDescription(stream); });
}

TEST(VRELTextEventTest, WritesLine) {
  EXPECT_EQ(Description(VRELErrorEvent("%s", "text")), "Error : text\n");
  EXPECT_EQ(Description(VRELWarningEvent("%s", "text")), "Warning : text\n");
  EXPECT_EQ(Description(VRELMessageEvent("%s", "text")), "Message : text\n");
  EXPECT_EQ(Description(VRELMessageEvent("text", false)), "text\n");
  EXPECT_EQ(Description(VRELMessageEvent("text", true)), "Message : text\n");
  EXPECT_EQ(Description(VRELVerboseEvent("%s", "text")), "text\n");
  EXPECT_EQ(Description(VRELTestEvent("%s", "text")), "text\n");
  EXPECT_EQ(Description(VRELDebugEvent("%s", "text")), "text\n");
  EXPECT_EQ(Description(VRELAssertEvent("%s", "text")), "Assert : text\n");
}

TEST(VRELTextEventTest, WritesPrefixWithoutMessage) {
  EXPECT_EQ(Description(VRELWarningEvent("%s", "")), "Warning : \n");
  EXPECT_EQ(Description(VRELMessageEvent("%s", "")), "Message : \n");
  EXPECT_EQ(Description(VRELMessageEvent("", false)), "\n");
  EXPECT_EQ(Description(VRELVerboseEvent("%s", "")), "\n");
  EXPECT_EQ(Description(VRELTestEvent("%s", "")), "\n");
  EXPECT_EQ(Description(VRELDebugEvent("%s", "")), "\n");
  EXPECT_EQ(Description(VRELAssertEvent("%s", "")), "Assert : \n");
}

TEST(VRELTextEventTest, WritesEmptyLineAfterLineFeed) {
  EXPECT_EQ(Description(VRELWarningEvent("%s", "text\n")), "Warning : text\n\n");
}

// The message is not a format.
TEST(VRELTextEventTest, WritesMessageUnchanged) {
  EXPECT_EQ(Description(VRELDebugEvent("%s", "100%d \xC3\x96")), "100%d \xC3\x96\n");
  EXPECT_EQ(Description(VRELWarningEvent("%s", std::string(1023, 'x').c_str())),
            "Warning : " + std::string(1023, 'x') + "\n");
}

// Each line has its own formatter, whose destructor flushes.
TEST(VRELTextEventTest, FlushesAfterEachLine) {
  class Stream : public VRELOutputStream {
   public:
    int write(char const* buffer, int count) override {
      calls.append(buffer, static_cast<std::size_t>(count));
      return count;
    }
    void flush() override { calls += "(flush)"; }
    void close() override { calls += "(close)"; }
    std::string calls;
  };
  Stream stream;
  VRELWarningEvent("%s", "a").GetFormattedDescription(&stream);
  VRELAssertEvent("%s", "b").GetFormattedDescription(&stream);
  VRELErrorEvent("%s", "").GetFormattedDescription(&stream);
  EXPECT_EQ(stream.calls, "Warning : a\n(flush)Assert : b\n(flush)Error 16777217\n(flush)");
}

// Collects the writes.
template <class Stream = VRELStringOutputStream>
class WritingListener : public VRELEventListener {
 public:
  WritingListener() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~WritingListener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  void HandleEvent(VRELEvent& event) override { event.GetFormattedDescription(&stream); }

  Stream stream;
};

class WriteCountingStream : public VRELStringOutputStream {
 public:
  int write(char const* buffer, int count) override {
    ++writes;
    return VRELStringOutputStream::write(buffer, count);
  }
  int writes = 0;
};

// For lines of any length, so that a log needs one system call for a line.
TEST(VRELTextEventTest, WritesLineInOneCall) {
  for (std::size_t const size : {0U, 1U, 1023U, 1042U, 1043U, 1044U, 1045U, 5000U}) {
    SCOPED_TRACE(size);
    WritingListener<WriteCountingStream> listener;
    std::string const text(size, 'x');
    VRELWarningEvent::Fire(6000, "%s", text.c_str());
    EXPECT_EQ(listener.stream.writes, 1);
    EXPECT_EQ(TakeText(listener.stream), "Warning : " + text + "\n");
  }
}

TEST(VRELTextEventTest, WritesNothingWithoutStream) {
  VRELWarningEvent warning("text");
  warning.GetFormattedDescription(nullptr);
  VRELErrorEvent error("%s", "");
  error.GetFormattedDescription(nullptr);
}

TEST(VRELTextEventTest, LoggerWritesPrefixAndIndentation) {
  WritingListener<> listener;
  VRELInfo::Tab();
  VRELInfo::Tab();
  VRELInfo::Printf("x\n");
  VRELInfo::PrintfAsItIs("x");
  VRELInfo::NoTabPrintf("y");
  VRELInfo::Untab();
  VRELInfo::Untab();
  VRELWarning::Printf("a");
  VRELVerbose::Printf("b");
  VRELTest::Printf("c");
  VRELDebug::NoTabPrintf("d");
  VRELVerboseEvent::Fire("e");
  EXPECT_EQ(TakeText(listener.stream),
            "Message :       x\n\n"
            "      x\n"
            "Message : y\n"
            "Warning : a\n"
            "Message : b\n"
            "c\n"
            "d\n"
            "e\n");
}

}  // namespace

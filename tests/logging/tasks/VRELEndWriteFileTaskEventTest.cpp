#include "VRELEndWriteFileTaskEvent.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TaskEventFacts.h"

namespace {

std::string const kRule = std::string(80, '-') + "\n";

TEST(VRELEndWriteFileTaskEventTest, HasFileWriteTask) {
  VRELEndWriteFileTaskEvent event(L"wheel.html", VREL_S_PARTIAL);
  ExpectTaskEvent(event, 1, "File Write", "File Write");
  EXPECT_EQ(event.getTaskResult(), VREL_S_PARTIAL);
}

TEST(VRELEndWriteFileTaskEventTest, WritesFileAndResult) {
  struct {
    wchar_t const* name;
    long result;
    char const* text;
  } const cases[] = {
      {L"parts/wheel.html", VREL_S_OK, "Output File \"parts/wheel.html\" is Successfully Written\n"},
      {L"", VREL_S_OK, "Output File is Successfully Written\n"},
      {L"wheel.html", VREL_E_ABORTED, "Output File \"wheel.html\" Writing is Aborted\n"},
      {L"", VREL_E_ABORTED, "Output File Writing is Aborted\n"},
      {L"wheel.html", VREL_E_FAIL, "Output File \"wheel.html\" Writing has Failed with code16777217\n"},
      {L"", VREL_E_FILE_SAVE, "Output File Writing has Failed with code16777231\n"},
      // Other success codes.
      {L"a", VREL_S_PARTIAL, "Output File \"a\" Writing has Failed with code1\n"},
      {L"a", VREL_S_NO_ENTITY, "Output File \"a\" Writing has Failed with code2\n"},
      // Has the criticity of an abort, but is not VREL_E_ABORTED.
      {L"a", 0x2000004, "Output File \"a\" Writing has Failed with code33554436\n"},
      {L"a", 0x80000000L, "Output File \"a\" Writing has Failed with code-2147483648\n"},
      {L"100%s %n", VREL_S_OK, "Output File \"100%s %n\" is Successfully Written\n"},
      {L"\u00D6l", VREL_S_OK, "Output File \"\x1Al\" is Successfully Written\n"},
  };
  for (auto const& each : cases) {
    EXPECT_EQ(DescriptionOf(VRELEndWriteFileTaskEvent(each.name, each.result)), each.text + kRule);
  }
}

// The stream is flushed after the text, not by the destructor of the event.
TEST(VRELEndWriteFileTaskEventTest, FlushesStreamAfterText) {
  class Stream : public VRELOutputStream {
   public:
    int write(char const* buffer, int count) override {
      calls.append(buffer, static_cast<std::size_t>(count));
      return count;
    }
    void flush() override { calls += "flush"; }
    void close() override { calls += "close"; }
    std::string calls;
  } stream;
  {
    VRELEndWriteFileTaskEvent event(L"a", VREL_S_OK);
    event.GetFormattedDescription(&stream);
    EXPECT_EQ(stream.calls, "Output File \"a\" is Successfully Written\n" + kRule + "flush");
    stream.calls.clear();
  }
  EXPECT_EQ(stream.calls, "");
}

// The event owns the formatter but not the stream.
TEST(VRELEndWriteFileTaskEventTest, WritesToSeveralStreams) {
  VRELEndWriteFileTaskEvent event(L"a", VREL_S_OK);
  for (int i = 0; i < 2; ++i) {
    auto const stream = std::make_unique<VRELStringOutputStream>();
    event.GetFormattedDescription(stream.get());
    EXPECT_EQ(TakeText(*stream), "Output File \"a\" is Successfully Written\n" + kRule);
  }
  event.GetFormattedDescription(nullptr);
}

TEST(VRELEndWriteFileTaskEventTest, CopyIsIndependent) {
  auto source = std::make_unique<VRELEndWriteFileTaskEvent>(L"a", VREL_S_OK);
  VRELEndWriteFileTaskEvent copy(*source);
  source->setTaskResult(VREL_E_FAIL);
  source.reset();
  ExpectTaskEvent(copy, 1, "File Write", "File Write");
  EXPECT_EQ(DescriptionOf(copy), "Output File \"a\" is Successfully Written\n" + kRule);
}

}  // namespace

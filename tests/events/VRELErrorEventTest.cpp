#include "VRELErrorEvent.h"

#include <gtest/gtest.h>

#include "RecordingListener.h"
#include "StreamText.h"
#include "VirtualSlot.h"

namespace {

TEST(VRELErrorEventTest, FormatConstructorUsesFailError) {
  VRELErrorEvent event("text");
  EXPECT_EQ(event.GetError(), &VRELError::FAIL_ERROR);
  VRELErrorEvent copy(event);
  EXPECT_EQ(copy.GetError(), &VRELError::FAIL_ERROR);
}

TEST(VRELErrorEventTest, ErrorConstructorHasNoMessage) {
  VRELError error(5);
  VRELErrorEvent event(error);
  EXPECT_EQ(event.GetError(), &error);
  EXPECT_EQ(event.GetMessage(), nullptr);
  EXPECT_EQ(event.GetLevel(), 80);
  EXPECT_STREQ(event.GetEventName(), "VRELErrorEvent");
  VRELErrorEvent copy(event);
  EXPECT_EQ(copy.GetError(), &error);
}

// Records the error of the event.
class ErrorRecorder : public RecordingListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    RecordingListener::HandleEvent(event);
    error = static_cast<VRELErrorEvent&>(event).GetError();
    line = error->GetSourceLine();
  }

  VRELError* error = nullptr;
  int line = 0;
};

TEST(VRELErrorEventTest, FireSetsLocationAndReturnsType) {
  ErrorRecorder const listener;
  VRELError error(5, VRELString(L"no such face"));
  EXPECT_EQ(VRELErrorEvent::Fire(error, "reader.cpp", 17), 5);
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].level, 80);
  EXPECT_FALSE(listener.events[0].hasText);
  EXPECT_EQ(listener.error, &error);
  EXPECT_EQ(listener.line, 17);
  EXPECT_EQ(error.GetSourceFile().toUtf8(), "reader.cpp");
  EXPECT_EQ(error.GetSourceLine(), 17);
}

TEST(VRELErrorEventTest, FireReturnsTypeWithoutListener) {
  VRELError error(VREL_E_FILE_OPEN);
  VRINResult const result = VRELErrorEvent::Fire(error, nullptr, 0);
  EXPECT_EQ(result, VREL_E_FILE_OPEN);
  EXPECT_EQ(error.GetSourceFile().toUtf8(), "");
}

TEST(VRELErrorEventTest, EmptyMessageKeepsFailError) {
  class Watcher : public VRELEventListener {
   public:
    Watcher() { VRELEventBus::GetEventBus()->AddListener(this); }
    ~Watcher() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
    void HandleEvent(VRELEvent& event) override { error = static_cast<VRELErrorEvent&>(event).GetError(); }
    VRELError* error = nullptr;
  };
  Watcher const listener;
  VRELErrorEvent::Fire("%s", "");
  EXPECT_EQ(listener.error, &VRELError::FAIL_ERROR);
}

// Without a message, the virtual GetFormattedDescription of the error writes.
TEST(VRELErrorEventTest, WritesErrorWithoutMessage) {
  struct CustomError : VRELError {
    void GetFormattedDescription(VRELOutputStream* stream) override { stream->write("custom", 6); }
  };
  auto const description = [](VRELErrorEvent event) {
    return TextOf([&](VRELOutputStream* stream) { event.GetFormattedDescription(stream); });
  };
  CustomError custom;
  VRELError described(5, VRELString(L"no such face"));
  VRELError quiet(0, VRELString(L"no such face"));
  EXPECT_EQ(description(VRELErrorEvent("%s", "")), "Error 16777217\n");
  EXPECT_EQ(description(VRELErrorEvent(described)), "Error Description : no such face\n");
  EXPECT_EQ(description(VRELErrorEvent(quiet)), "");
  EXPECT_EQ(description(VRELErrorEvent(custom)), "custom");
}

TEST(VRELErrorEventTest, GetErrorHasLastSlot) {
  EXPECT_EQ(SlotOf(&VRELErrorEvent::GetError), SlotOf(&VRELEvent::IsTimed) + 1);
}

}  // namespace

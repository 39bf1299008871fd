// Listener that records events.
#pragma once

#include <string>
#include <vector>

#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "VRELTextEvent.h"

struct RecordedEvent {
  std::string name;
  int level = 0;
  bool hasText = false;  // false for an event without a message
  std::string text;
};

// Registered on the bus during its lifetime.
class RecordingListener : public VRELEventListener {
 public:
  RecordingListener() { VRELEventBus::GetEventBus()->AddListener(this); }
  ~RecordingListener() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  RecordingListener(RecordingListener const&) = delete;
  RecordingListener& operator=(RecordingListener const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    RecordedEvent record;
    if (event.GetEventName() != nullptr) record.name = event.GetEventName();
    record.level = event.GetLevel();
    auto const* const textEvent = dynamic_cast<VRELTextEvent const*>(&event);
    if (textEvent != nullptr && textEvent->GetMessage() != nullptr) {
      record.hasText = true;
      record.text = textEvent->GetMessage();
    }
    events.push_back(record);
  }

  // Returns the messages of the events, "(none)" for a null message.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (RecordedEvent const& event : events) texts.push_back(event.hasText ? event.text : "(none)");
    return texts;
  }

  std::vector<RecordedEvent> events;
};

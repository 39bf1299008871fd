// Base classes of the message events.
#pragma once

#include <cstdarg>

#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "detail/VRELPrintfFormat.h"

// Event with a message. The derived classes add a name, a level for their variadic constructor, a level for their
// va_list constructor, and Fire. A listener reads the message of any of them:
//
//   if (auto const* const message = dynamic_cast<VRELTextEvent const*>(&event)) Show(message->GetMessage());
//
// A message has at most 1023 bytes; the rest is cut. A format that vsnprintf rejects (a wide string that cannot be
// converted) results in a null message.
//
// Ownership: the event owns the message; a copied event has its own.
class VREL_EXPORT VRELTextEvent : public VRELEvent {
 public:
  VRELTextEvent(VRELTextEvent const& other);
  ~VRELTextEvent() override;

  // Returns the message, or null if it is empty.
  // Ownership: the event.
  char const* GetMessage() const noexcept { return message; }

 protected:
  static constexpr int kMaximumLength = 1023;

  // Creates an event without a message.
  VRELTextEvent(char const* name, VRELEventLevel level);
  // Creates an event and calls SetMessage.
  VRELTextEvent(char const* name, VRELEventLevel level, char const* format, va_list arguments,
                int maximumLength = kMaximumLength);

  // Writes the prefix, the message and a line end by one write to the stream, so that a log needs one system call for
  // each line.
  //
  // Compatibility: a message that ends in a line feed is followed by an empty line.
  void WriteLine(VRELOutputStream* stream, char const* prefix) const;

  // Formats the message, cut to `maximumLength` bytes. A null format or a length below 1 leaves it null.
  //
  // Requires: called at most once.
  void SetMessage(char const* format, va_list arguments, int maximumLength = kMaximumLength);

 private:
  void SetText(char const* text, int maximumLength);

  char* message;
};

// Adds Fire to a message event class.
template <class Event>
class VRELTextEventOf : public VRELTextEvent {
 public:
  // Creates an event by the va_list constructor and sends it. A null format sends nothing.
  // Compatibility: the message is formatted once, and the level is that of the va_list constructor.
  static void Fire(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

 protected:
  using VRELTextEvent::VRELTextEvent;
};

template <class Event>
void VRELTextEventOf<Event>::Fire(char const* format, ...) {
  if (format == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  Event event(arguments, format);
  va_end(arguments);
  VRELEventBus::GetEventBus()->Send(event);
}

// The shape that all message events have: an event that carries a text.
#pragma once

#include <cstdarg>

#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "detail/VRELPrintfFormat.h"

// Each class below has a name, a level for its variadic constructor and one for its constructor on an argument list,
// and a Fire of its own; the formatting stands here.
//
// A text has at most 1023 bytes: a longer one is cut. A format that the C library refuses (a wide text that cannot be
// converted) gives an empty text.
class VREL_EXPORT VRELTextEvent : public VRELEvent {
 public:
  // A copy has a text of its own.
  VRELTextEvent(VRELTextEvent const& other);
  ~VRELTextEvent() override;

  // The text, owned by the event; null when it is empty.
  char const* GetMessage() const noexcept { return message; }

 protected:
  static constexpr int MaximumLength = 1023;

  // Without a text.
  VRELTextEvent(char const* name, VRELEventLevel level);
  // Formats the text as SetMessage does.
  VRELTextEvent(char const* name, VRELEventLevel level, char const* format, va_list arguments,
                int maximumLength = MaximumLength);

  // Writes the prefix, the text and a line end, on a formatter of its own and in one piece, so that a log takes one
  // call of the system for a line. A text that ends in a line feed leaves an empty line behind it, which is promised.
  void WriteLine(VRELOutputStream* stream, char const* prefix) const;

  // Formats the text, at most `maximumLength` bytes of it. A null format gives none, like a length below 1. To be
  // called once.
  void SetMessage(char const* format, va_list arguments, int maximumLength = MaximumLength);

 private:
  char* message;
};

// Gives each message event its Fire.
template <class Event>
class VRELTextEventOf : public VRELTextEvent {
 public:
  // Formats the text, once, by the constructor on an argument list, and sends the event. A null format sends nothing.
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

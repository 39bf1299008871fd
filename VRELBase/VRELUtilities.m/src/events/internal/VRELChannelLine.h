// Formatting and sending of channel messages.
#pragma once

#include <cstdarg>
#include <cstddef>

#include "VRELEventBus.h"
#include "VRELExport.h"

// Message of a channel call: three spaces for each unit of indentation, then the formatted message, cut to 1023 bytes.
class VREL_EXPORT VRELChannelLine {
 public:
  // Writes the indentation. A negative one is treated as 0.
  explicit VRELChannelLine(int indentation) noexcept;

  // Appends the formatted message.
  void Format(char const* format, va_list arguments) noexcept;

  // Appends a format without arguments, unescaped as by Unescape.
  void Format(char const* format) noexcept;

  // Replaces "%%" by "%" in the whole message and returns it: the second formatting pass, which has no arguments. Other
  // percent signs are kept, so that a directive such as "%s" in the message never reads an argument.
  char const* Unescape() noexcept;

  // Copies `source` to `target`, which may be the same buffer, and replaces "%%" by "%". Writes at most `capacity`
  // bytes and no terminating zero byte. Returns the number of bytes written.
  static std::size_t CopyUnescaped(char const* source, char* target, std::size_t capacity) noexcept;

 private:
  char text[1024];
  std::size_t length;
};

// Sends the message as an Event, created by its variadic constructor from `leading` and the message.
template <class Event, class... Leading>
void VRELSendLine(VRELChannelLine& line, Leading... leading) {
  if (VRELEventBus::GetEventBus()->GetListenerCount() == 0) return;
  Event event("%s", leading..., line.Unescape());
  VRELEventBus::Fire(event);
}

// Formats and sends a message. A null format sends nothing.
template <class Event, class... Leading>
void VRELSendLine(int indentation, char const* format, va_list arguments, Leading... leading) {
  if (format == nullptr) return;
  VRELChannelLine line(indentation);
  line.Format(format, arguments);
  VRELSendLine<Event>(line, leading...);
}

// Sends a format without arguments. A null format sends nothing.
template <class Event>
void VRELSendLine(char const* format) {
  if (format == nullptr) return;
  VRELChannelLine line(0);
  line.Format(format);
  VRELSendLine<Event>(line);
}

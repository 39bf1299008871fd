// How a channel call becomes an event; for the classes that are channels.
#pragma once

#include <cstdarg>
#include <cstddef>

#include "VRELEventBus.h"
#include "VRELExport.h"

// The text of one channel call: three blanks for each unit of indentation, then the formatted text, 1023 bytes in all;
// what is longer is cut.
class VREL_EXPORT VRELChannelLine {
 public:
  // An indentation below 0 counts as 0.
  explicit VRELChannelLine(int indentation) noexcept;

  // Adds the formatted text.
  void Format(char const* format, va_list arguments) noexcept;

  // Adds a format that has no arguments: as Unescape reads it.
  void Format(char const* format) noexcept;

  // Reads the text once more as a format without arguments, and returns it. "%%" becomes "%"; every other percent sign
  // stands for itself, so that a directive which is left in the text is shown and never reads an argument.
  char const* Unescape() noexcept;

  // Copies a text to `target`, which may be the text itself, with each "%%" made "%". Takes at most `room` bytes of the
  // result, writes no zero byte behind them, and returns their number.
  static std::size_t CopyUnescaped(char const* source, char* target, std::size_t room) noexcept;

 private:
  char text[1024];
  std::size_t length;
};

// Sends the line as an Event, which is made by its variadic constructor from the arguments in front and the text.
template <class Event, class... Leading>
void VRELSendLine(VRELChannelLine& line, Leading... leading) {
  if (VRELEventBus::GetEventBus()->GetListenerCount() == 0) return;
  Event event("%s", leading..., line.Unescape());
  VRELEventBus::Fire(event);
}

// Formats and sends a line. A null format sends nothing.
template <class Event, class... Leading>
void VRELSendLine(int indentation, char const* format, va_list arguments, Leading... leading) {
  if (format == nullptr) return;
  VRELChannelLine line(indentation);
  line.Format(format, arguments);
  VRELSendLine<Event>(line, leading...);
}

// The same for a format that has no arguments.
template <class Event>
void VRELSendLine(char const* format) {
  if (format == nullptr) return;
  VRELChannelLine line(0);
  line.Format(format);
  VRELSendLine<Event>(line);
}

#include "VRELTextEvent.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "VRELStreamFormatter.h"
#include "VRELTextCopy.h"

VRELTextEvent::VRELTextEvent(char const* name, VRELEventLevel level) : VRELEvent(name, level), message(nullptr) {}

VRELTextEvent::VRELTextEvent(char const* name, VRELEventLevel level, char const* format, va_list arguments,
                             int maximumLength)
    : VRELTextEvent(name, level) {
  SetMessage(format, arguments, maximumLength);
}

VRELTextEvent::VRELTextEvent(VRELTextEvent const& other) : VRELEvent(other), message(VRELTextCopy(other.message)) {}

VRELTextEvent::~VRELTextEvent() {
  delete[] message;
}

void VRELTextEvent::SetMessage(char const* format, va_list arguments, int maximumLength) {
  if (format == nullptr) return;
  va_list copy;
  // The format of the channels, whose message is formatted already.
  if (std::strcmp(format, "%s") == 0) {
    va_copy(copy, arguments);
    char const* const argument = va_arg(copy, char const*);
    va_end(copy);
    if (argument != nullptr) {
      SetText(argument, maximumLength);
      return;
    }
  }
  char text[kMaximumLength + 1];
  va_copy(copy, arguments);
  int const length = std::min(std::vsnprintf(text, sizeof text, format, arguments), maximumLength);
  if (length > 0 && text[0] != '\0') {
    std::size_t const size = static_cast<std::size_t>(length);
    message = new char[size + 1];
    if (length <= kMaximumLength) {
      std::memcpy(message, text, size);
    } else {
      std::vsnprintf(message, size + 1, format, copy);
    }
    message[size] = '\0';
  }
  va_end(copy);
}

void VRELTextEvent::SetText(char const* text, int maximumLength) {
  std::size_t const size = maximumLength > 0 ? strnlen(text, static_cast<std::size_t>(maximumLength)) : 0;
  if (size == 0) return;
  message = new char[size + 1];
  std::memcpy(message, text, size);
  message[size] = '\0';
}

void VRELTextEvent::WriteLine(VRELOutputStream* stream, char const* prefix) const {
  VRELStreamFormatter formatter(stream);
  std::string_view const text(message == nullptr ? "" : message);
  std::string_view const start(prefix);
  char line[kMaximumLength + 32];
  if (start.size() + text.size() + 2 > sizeof line) {
    formatter << (prefix + std::string(text) + '\n').c_str();
    return;
  }
  start.copy(line, start.size());
  text.copy(line + start.size(), text.size());
  std::memcpy(line + start.size() + text.size(), "\n", 2);
  formatter << line;
}

#include "VRELTextEvent.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

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
  char text[MaximumLength + 1];
  va_list again;
  va_copy(again, arguments);
  int const length = std::min(std::vsnprintf(text, sizeof text, format, arguments), maximumLength);
  if (length > 0 && text[0] != '\0') {
    std::size_t const size = static_cast<std::size_t>(length);
    message = new char[size + 1];
    if (length <= MaximumLength) {
      std::memcpy(message, text, size);
    } else {
      std::vsnprintf(message, size + 1, format, again);
    }
    message[size] = '\0';
  }
  va_end(again);
}

void VRELTextEvent::WriteLine(VRELOutputStream* stream, char const* prefix) const {
  VRELStreamFormatter formatter(stream);
  formatter << prefix << message << formatter.endline();
}

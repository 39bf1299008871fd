// A channel call formats its message twice. The first pass is vsnprintf with the arguments of the caller. The second
// pass has no arguments: a printf would read arguments that do not exist if the message contained a directive such as
// "%s", so Unescape does the only defined part of it, which is to replace "%%" by "%" from left to right. The message
// is cut to 1023 bytes before the second pass, so that a "%%" can be split by the cut.
#include "VRELChannelLine.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t kSpacesPerUnit = 3;

}  // namespace

VRELChannelLine::VRELChannelLine(int indentation) noexcept : length(0) {
  if (indentation > 0) {
    length = std::min(static_cast<std::size_t>(indentation) * kSpacesPerUnit, sizeof text - 1);
    std::memset(text, ' ', length);
  }
  text[length] = '\0';
}

void VRELChannelLine::Format(char const* format, va_list arguments) noexcept {
  std::size_t const capacity = sizeof text - length;
  int const needed = std::vsnprintf(text + length, capacity, format, arguments);
  // Negative if the C library rejects the format; then nothing is appended.
  if (needed > 0) length += std::min(static_cast<std::size_t>(needed), capacity - 1);
  text[length] = '\0';
}

void VRELChannelLine::Format(char const* format) noexcept {
  length += CopyUnescaped(format, text + length, sizeof text - 1 - length);
  text[length] = '\0';
}

char const* VRELChannelLine::Unescape() noexcept {
  char* const first = static_cast<char*>(std::memchr(text, '%', length));
  if (first != nullptr) {
    std::size_t const prefix = static_cast<std::size_t>(first - text);
    length = prefix + CopyUnescaped(first, first, length - prefix);
    text[length] = '\0';
  }
  return text;
}

std::size_t VRELChannelLine::CopyUnescaped(char const* source, char* target, std::size_t capacity) noexcept {
  std::size_t length = 0;
  while (*source != '\0' && length < capacity) {
    if (source[0] == '%' && source[1] == '%') ++source;
    target[length++] = *source++;
  }
  return length;
}

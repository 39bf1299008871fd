#include "VRELChannelLine.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t blanksPerUnit = 3;

}  // namespace

VRELChannelLine::VRELChannelLine(int indentation) noexcept : length(0) {
  if (indentation > 0) {
    length = std::min(static_cast<std::size_t>(indentation) * blanksPerUnit, sizeof text - 1);
    std::memset(text, ' ', length);
  }
  text[length] = '\0';
}

void VRELChannelLine::Format(char const* format, va_list arguments) noexcept {
  std::size_t const room = sizeof text - length;
  int const wanted = std::vsnprintf(text + length, room, format, arguments);
  // Below 0: refused by the C library, and then shown as nothing.
  if (wanted > 0) length += std::min(static_cast<std::size_t>(wanted), room - 1);
  text[length] = '\0';
}

void VRELChannelLine::Format(char const* format) noexcept {
  length += CopyUnescaped(format, text + length, sizeof text - 1 - length);
  text[length] = '\0';
}

char const* VRELChannelLine::Unescape() noexcept {
  char* const first = static_cast<char*>(std::memchr(text, '%', length));
  if (first != nullptr) {
    std::size_t const before = static_cast<std::size_t>(first - text);
    length = before + CopyUnescaped(first, first, length - before);
    text[length] = '\0';
  }
  return text;
}

std::size_t VRELChannelLine::CopyUnescaped(char const* source, char* target, std::size_t room) noexcept {
  std::size_t length = 0;
  while (*source != '\0' && length < room) {
    if (source[0] == '%' && source[1] == '%') ++source;
    target[length++] = *source++;
  }
  return length;
}

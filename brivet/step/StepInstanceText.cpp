// One pass over the bytes with a pointer. There is no check for the end of the window: the byte after it stops every
// loop, because no part of the usual form contains it. Tokens are neither copied nor stored; they are passed on as
// views of the window. Line ends can only be among blanks, so that lines are counted apart from the loops that read
// tokens. Open lists are a stack of bits in a register.
#include "StepInstanceText.h"

#include <array>

namespace {

constexpr std::array<bool, 256> BuildPlainBytes() {
  std::array<bool, 256> plain{};
  for (int byte = ' '; byte < 0x7F; ++byte) plain[static_cast<std::size_t>(byte)] = byte != '\'' && byte != '\\';
  return plain;
}

// Bytes of a string that decodes to itself, except the apostrophe.
constexpr std::array<bool, 256> kPlainBytes = BuildPlainBytes();

}  // namespace

char const* StepInstanceText::SkipBlankBytes(char const* position) noexcept {
  for (; IsBlank(static_cast<unsigned char>(*position)); ++position) {
    if (!IsLineEnd(*position)) continue;
    // A CR LF is counted at its end.
    if (*position == '\r' && position[1] == '\n') continue;
    ++lines;
    lineBegin = static_cast<std::size_t>(position - begin) + 1;
  }
  return position;
}

// Returns the bytes up to the apostrophe that ends the string.
std::string_view StepInstanceText::ReadStringBytes(char const* first, bool& isDoubled) noexcept {
  char const* position = first;
  while (true) {
    while (kPlainBytes[static_cast<unsigned char>(*position)]) ++position;
    if (*position != '\'') return {};
    ++position;
    if (*position != '\'') return {first, static_cast<std::size_t>(position - first - 1)};
    isDoubled = true;
    ++position;
  }
}

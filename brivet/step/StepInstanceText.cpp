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

bool StepInstanceText::ReadName() noexcept {
  SkipBlanks();
  if (*at != '#') return false;
  ++at;
  if (!ReadNumber(name)) return false;
  SkipBlanks();
  if (*at != '=') return false;
  ++at;
  SkipBlanks();
  return true;
}

void StepInstanceText::SkipBlankBytes() noexcept {
  for (; IsBlank(static_cast<unsigned char>(*at)); ++at) {
    if (!IsLineEnd(*at)) continue;
    // A CR LF is counted at its end.
    if (*at == '\r' && at[1] == '\n') continue;
    ++lines;
    lineBegin = Size() + 1;
  }
}

// Returns the bytes between the apostrophes, or a view of null for what is not a plain string.
std::string_view StepInstanceText::ReadString(bool& isDoubled) noexcept {
  char const* const first = ++at;
  while (true) {
    while (kPlainBytes[static_cast<unsigned char>(*at)]) ++at;
    if (*at != '\'') return {};
    ++at;
    if (*at != '\'') return {first, static_cast<std::size_t>(at - first - 1)};
    isDoubled = true;
    ++at;
  }
}

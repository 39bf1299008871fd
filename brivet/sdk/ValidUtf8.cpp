#include "ValidUtf8.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

// Returns the length of the ASCII characters at the beginning, in whole words.
std::size_t AsciiLength(std::string_view utf8) {
  std::size_t at = 0;
  for (std::uint64_t word = 0; at + sizeof word <= utf8.size(); at += sizeof word) {
    std::memcpy(&word, utf8.data() + at, sizeof word);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  return at;
}

// Returns where the first invalid byte is, or the size.
std::size_t FindInvalid(std::string_view utf8, std::size_t at) {
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(utf8.data());
  at += AsciiLength(utf8.substr(at));
  while (at < utf8.size()) {
    std::size_t const begin = at;
    UChar32 code = 0;
    U8_NEXT(bytes, at, utf8.size(), code);
    if (code < 0) return begin;
  }
  return at;
}

}  // namespace

bool IsValidUtf8(std::string_view utf8) {
  return FindInvalid(utf8, 0) == utf8.size();
}

void AppendValidUtf8(std::string& target, std::string_view utf8) {
  for (std::size_t at = 0; at < utf8.size();) {
    std::size_t const end = FindInvalid(utf8, at);
    target += utf8.substr(at, end - at);
    at = end;
    if (at == utf8.size()) break;
    target += "\xEF\xBF\xBD";
    ++at;
  }
}

std::string ValidUtf8(std::string_view utf8) {
  std::string valid;
  valid.reserve(utf8.size());
  AppendValidUtf8(valid, utf8);
  return valid;
}

#include "HtmlText.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>

namespace {

constexpr UChar32 kReplacement = 0xFFFD;

char const* NameOf(char byte) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return nullptr;
  }
}

template <class Name>
void Append(std::string& target, std::string_view utf8, Name const& name) {
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(utf8.data());
  std::size_t at = 0;
  while (at < utf8.size()) {
    std::size_t const begin = at;
    UChar32 code = 0;
    U8_NEXT(bytes, at, utf8.size(), code);
    if (code < 0) {
      code = kReplacement;
      at = begin + 1;
    }
    if (code >= 0x80) {
      target += "&#" + std::to_string(code) + ";";
    } else if (char const* const entity = name(static_cast<char>(code))) {
      target += entity;
    } else {
      target += static_cast<char>(code);
    }
  }
}

}  // namespace

void AppendHtml(std::string& target, std::string_view utf8) {
  Append(target, utf8, NameOf);
}

void AppendAsciiMarkup(std::string& target, std::string_view markup) {
  Append(target, markup, [](char) -> char const* { return nullptr; });
}

std::string EscapeHtml(std::string_view utf8) {
  std::string escaped;
  AppendHtml(escaped, utf8);
  return escaped;
}

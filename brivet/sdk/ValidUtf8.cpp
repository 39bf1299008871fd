#include "ValidUtf8.h"

#include <cstddef>
#include <cstdint>

std::string ValidUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    auto const lead = static_cast<unsigned char>(text[i]);
    std::size_t const length = lead < 0x80 ? 1 : lead >> 5 == 6 ? 2 : lead >> 4 == 14 ? 3 : lead >> 3 == 30 ? 4 : 0;
    bool isValid = length > 0 && i + length <= text.size();
    std::uint32_t code = isValid && length > 1 ? lead & (0xFFU >> (length + 1)) : lead;
    for (std::size_t k = 1; isValid && k < length; ++k) {
      auto const next = static_cast<unsigned char>(text[i + k]);
      isValid = (next & 0xC0U) == 0x80U;
      code = code << 6U | (next & 0x3FU);
    }
    static constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (isValid && length > 1) {
      isValid = code >= kSmallest[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    }
    if (isValid) {
      valid.append(text.substr(i, length));
      i += length;
    } else {
      valid += "\xEF\xBF\xBD";
      ++i;
    }
  }
  return valid;
}

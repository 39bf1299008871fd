// Sizes of converted strings without overflow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

// ICU counts the units of a converted string in 32 bits and wraps. Strings of up to this many UTF-16 code units cannot
// wrap in any code page, since none needs more than 8 bytes for a code unit.
constexpr std::size_t kVRELSafeUnits = std::size_t(1) << 27;

// Returns whether the size of a converted string can exceed INT_MAX.
constexpr bool VRELMayExceedInt(std::u16string_view text) noexcept {
  return text.size() > kVRELSafeUnits;
}

// Returns the sum of `convertedLength(part)` over parts of at most `partSize` units, plus 1 for the terminator; 0 if
// that exceeds INT_MAX. A surrogate pair is never divided. A string that cannot be converted has a length of 0 in one
// part; its size is still above 0.
template <class ConvertedLength>
int VRELConvertedSize(std::u16string_view text, ConvertedLength const& convertedLength,
                      std::size_t partSize = kVRELSafeUnits) {
  std::int64_t size = 1;
  do {
    std::size_t end = text.size();
    if (end > partSize) {
      end = partSize;
      bool const dividesPair = text[end] >= 0xDC00 && text[end] <= 0xDFFF && end > 1;
      if (dividesPair) --end;
    }
    size += convertedLength(text.substr(0, end));
    text.remove_prefix(end);
  } while (!text.empty());
  return size <= std::numeric_limits<int>::max() ? static_cast<int>(size) : 0;
}

// Search for one UTF-16 code unit.
#pragma once

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <cstddef>
#include <string_view>

// Both functions compare eight units in each step. The last step overlaps the one before it, so that nothing outside
// the text is read; a text of fewer than eight units is searched by a plain loop.

#ifdef __SSE2__
constexpr std::size_t kVRELUnitsPerStep = 8;

// Returns two equal bits, from the lowest one on, for each of eight units: set if the unit is the wanted one.
inline unsigned VRELMatchUnits(char16_t const* units, __m128i wanted) noexcept {
  __m128i const loaded = _mm_loadu_si128(reinterpret_cast<__m128i const*>(units));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(loaded, wanted)));
}
#endif

// Returns the index of the first `unit` at or after `start`, or npos.
inline std::size_t VRELFindUnit(std::u16string_view text, char16_t unit, std::size_t start = 0) noexcept {
  std::size_t i = start;
#ifdef __SSE2__
  if (text.size() >= kVRELUnitsPerStep && i < text.size()) {
    __m128i const wanted = _mm_set1_epi16(static_cast<short>(unit));
    for (; i + kVRELUnitsPerStep <= text.size(); i += kVRELUnitsPerStep) {
      unsigned const found = VRELMatchUnits(text.data() + i, wanted);
      if (found != 0) return i + static_cast<std::size_t>(__builtin_ctz(found)) / 2;
    }
    std::size_t const last = text.size() - kVRELUnitsPerStep;
    unsigned const searched = static_cast<unsigned>(i - last) * 2;  // bits of the step before, at most 16
    unsigned const found = VRELMatchUnits(text.data() + last, wanted) >> searched;
    return found != 0 ? i + static_cast<std::size_t>(__builtin_ctz(found)) / 2 : std::u16string_view::npos;
  }
#endif
  for (; i < text.size(); ++i) {
    if (text[i] == unit) return i;
  }
  return std::u16string_view::npos;
}

// Returns the index of the last `unit`, or npos.
inline std::size_t VRELFindLastUnit(std::u16string_view text, char16_t unit) noexcept {
  std::size_t end = text.size();
#ifdef __SSE2__
  if (end >= kVRELUnitsPerStep) {
    __m128i const wanted = _mm_set1_epi16(static_cast<short>(unit));
    auto const highest = [](unsigned found) { return (31 - static_cast<std::size_t>(__builtin_clz(found))) / 2; };
    for (; end >= kVRELUnitsPerStep; end -= kVRELUnitsPerStep) {
      unsigned const found = VRELMatchUnits(text.data() + (end - kVRELUnitsPerStep), wanted);
      if (found != 0) return end - kVRELUnitsPerStep + highest(found);
    }
    unsigned const found = VRELMatchUnits(text.data(), wanted);
    return found != 0 ? highest(found) : std::u16string_view::npos;
  }
#endif
  for (; end > 0; --end) {
    if (text[end - 1] == unit) return end - 1;
  }
  return std::u16string_view::npos;
}

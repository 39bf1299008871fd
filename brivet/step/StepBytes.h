// Classes of bytes in ISO 10303-21 clear text. Those of the C library depend on the locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

inline bool IsDigit(int byte) {
  return byte >= '0' && byte <= '9';
}

inline bool IsHexDigit(int byte) {
  return IsDigit(byte) || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

// An underscore counts as an upper-case letter.
inline bool IsLetter(int byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_';
}

// A byte of a keyword after the first.
inline bool IsWordByte(int byte) {
  return IsLetter(byte) || IsDigit(byte) || byte == '-';
}

inline bool IsLineEnd(int byte) {
  return byte == '\n' || byte == '\r';
}

inline bool IsBlank(int byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

// Returns how many line ends are in the bytes: LF, CR LF and CR. One that begins before them, with a CR, is not counted
// again. The loop has no branches, so that the compiler examines many bytes at once.
inline long CountLineEnds(char const* bytes, std::size_t size, bool isAfterReturn) {
  if (size == 0) return 0;
  long count = IsLineEnd(bytes[0]) && !(bytes[0] == '\n' && isAfterReturn) ? 1 : 0;
  for (std::size_t i = 1; i < size; ++i) {
    bool const isLineFeed = bytes[i] == '\n';
    bool const isReturn = bytes[i] == '\r';
    bool const followsReturn = bytes[i - 1] == '\r';
    count += static_cast<long>(isReturn | (isLineFeed & !followsReturn));
  }
  return count;
}

inline bool IsControl(int byte) {
  return (byte >= 0 && byte < ' ') || byte == 0x7F;
}

// The following functions examine 16 bytes at once where the processor can do that.
// Requires: kBlockPadding bytes after the first byte that is not counted can be read.
constexpr std::size_t kBlockPadding = 15;

#ifdef __SSE2__

// Returns a bit for each of 16 bytes, the lowest for the first one: whether it is a digit.
inline unsigned DigitMask(char const* bytes) noexcept {
  // Subtracted, only digits are at most 9 as unsigned bytes.
  __m128i const value = _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes)), _mm_set1_epi8('0'));
  __m128i const isDigit = _mm_cmpeq_epi8(_mm_min_epu8(value, _mm_set1_epi8(9)), value);
  return static_cast<unsigned>(_mm_movemask_epi8(isDigit));
}

// Returns the same for bytes for which IsWordByte is true.
inline unsigned WordMask(char const* bytes) noexcept {
  __m128i const block = _mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes));
  // With this bit a letter is in lower case; no other byte becomes a letter.
  __m128i const letter = _mm_sub_epi8(_mm_or_si128(block, _mm_set1_epi8(0x20)), _mm_set1_epi8('a'));
  __m128i const isLetter = _mm_cmpeq_epi8(_mm_min_epu8(letter, _mm_set1_epi8('z' - 'a')), letter);
  __m128i const value = _mm_sub_epi8(block, _mm_set1_epi8('0'));
  __m128i const isDigit = _mm_cmpeq_epi8(_mm_min_epu8(value, _mm_set1_epi8(9)), value);
  __m128i const isSign =
      _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('_')), _mm_cmpeq_epi8(block, _mm_set1_epi8('-')));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(isLetter, isDigit), isSign)));
}

// Returns the number of bytes before the first one whose bit is not set.
template <class Mask>
std::size_t CountMasked(char const* bytes, Mask const& maskOf) noexcept {
  constexpr unsigned kAll = 0xFFFF;
  for (std::size_t count = 0;; count += 16) {
    unsigned const mask = maskOf(bytes + count);
    if (mask != kAll) return count + static_cast<std::size_t>(__builtin_ctz(~mask));
  }
}

// Returns the number of digits before the first other byte.
inline std::size_t CountDigits(char const* bytes) noexcept {
  return CountMasked(bytes, DigitMask);
}

// Returns the number of bytes for which IsWordByte is true, before the first other one.
inline std::size_t CountWordBytes(char const* bytes) noexcept {
  return CountMasked(bytes, WordMask);
}

#else

inline std::size_t CountDigits(char const* bytes) noexcept {
  std::size_t count = 0;
  while (IsDigit(bytes[count])) ++count;
  return count;
}

inline std::size_t CountWordBytes(char const* bytes) noexcept {
  std::size_t count = 0;
  while (IsWordByte(bytes[count])) ++count;
  return count;
}

#endif

// How many digits precede and follow the first byte that is not a digit.
struct DigitCounts {
  std::size_t before;
  std::size_t after;
};

// Requires: kBlockPadding bytes after the second byte that is not a digit can be read.
inline DigitCounts CountDigitsAround(char const* bytes) noexcept {
#ifdef __SSE2__
  // Most numbers, with the byte that ends them, are in one block. The bits above those of the block are set.
  unsigned const others = ~DigitMask(bytes);
  unsigned const otherThanFirst = others & (others - 1);
  auto const before = static_cast<std::size_t>(__builtin_ctz(others));
  auto const end = static_cast<std::size_t>(__builtin_ctz(otherThanFirst));
  if (end < 16) return {before, end - before - 1};
#endif
  std::size_t const count = CountDigits(bytes);
  return {count, CountDigits(bytes + count + 1)};
}

constexpr std::uint64_t kWholePowersOfTen[] = {1,
                                               10,
                                               100,
                                               1000,
                                               10000,
                                               100000,
                                               1000000,
                                               10000000,
                                               100000000,
                                               1000000000,
                                               10000000000,
                                               100000000000,
                                               1000000000000,
                                               10000000000000,
                                               100000000000000,
                                               1000000000000000,
                                               10000000000000000};

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__

// Returns the number that 1 to 8 digits form; 8 bytes are read. In a register, neighbouring digits are combined to
// numbers of two, of four and of eight digits (D. Lemire: Number parsing at a gigabyte per second). Bytes after the
// last digit are shifted out, and zeros precede the first one.
inline std::uint64_t NumberOfEightDigits(char const* digits, std::size_t count) noexcept {
  std::uint64_t block;
  std::memcpy(&block, digits, sizeof block);
  block = (block - 0x3030303030303030U) << (64U - 8U * count);
  block = block * 10 + (block >> 8U);
  constexpr std::uint64_t kPairs = 0x000000FF000000FFU;
  return ((block & kPairs) * 0x000F424000000064U + (block >> 16U & kPairs) * 0x0000271000000001U) >> 32U;
}

// Returns the number that digits form. Requires: 1 to 18 digits, and 8 bytes that can be read.
inline std::uint64_t NumberOfDigits(char const* digits, std::size_t count) noexcept {
  if (count <= 8) return NumberOfEightDigits(digits, count);
  std::uint64_t number = 0;
  for (; count > 8; digits += 8, count -= 8) number = number * kWholePowersOfTen[8] + NumberOfEightDigits(digits, 8);
  return number * kWholePowersOfTen[count] + NumberOfEightDigits(digits, count);
}

#else

inline std::uint64_t NumberOfDigits(char const* digits, std::size_t count) noexcept {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < count; ++i) number = number * 10 + static_cast<std::uint64_t>(digits[i] - '0');
  return number;
}

#endif

// Character classes and case folding of ASCII, independent of any locale.
#pragma once

// All functions take any character type and are false, or return the character unchanged, for characters outside ASCII.

template <class Char>
constexpr bool VRELIsAsciiDigit(Char c) noexcept {
  return c >= Char('0') && c <= Char('9');
}

template <class Char>
constexpr bool VRELIsAsciiUpper(Char c) noexcept {
  return c >= Char('A') && c <= Char('Z');
}

template <class Char>
constexpr bool VRELIsAsciiLower(Char c) noexcept {
  return c >= Char('a') && c <= Char('z');
}

template <class Char>
constexpr bool VRELIsAsciiLetter(Char c) noexcept {
  return VRELIsAsciiUpper(c) || VRELIsAsciiLower(c);
}

// Space, tab, line feed, vertical tab, form feed and carriage return, as std::isspace in the locale "C".
template <class Char>
constexpr bool VRELIsAsciiSpace(Char c) noexcept {
  return c == Char(' ') || (c >= Char('\t') && c <= Char('\r'));
}

// The printable characters that are neither letters, digits nor the space, as std::ispunct in the locale "C".
template <class Char>
constexpr bool VRELIsAsciiPunctuation(Char c) noexcept {
  return c > Char(' ') && c < Char(0x7F) && !VRELIsAsciiDigit(c) && !VRELIsAsciiLetter(c);
}

// Returns the value of a hexadecimal digit in either case, or -1 for any other character.
template <class Char>
constexpr int VRELHexDigitValue(Char c) noexcept {
  if (VRELIsAsciiDigit(c)) return static_cast<int>(c - Char('0'));
  if (c >= Char('A') && c <= Char('F')) return static_cast<int>(c - Char('A')) + 10;
  if (c >= Char('a') && c <= Char('f')) return static_cast<int>(c - Char('a')) + 10;
  return -1;
}

template <class Char>
constexpr bool VRELIsAsciiHexDigit(Char c) noexcept {
  return VRELHexDigitValue(c) >= 0;
}

// Returns the lower-case form of a capital letter, and any other character unchanged.
template <class Char>
constexpr Char VRELFoldAscii(Char c) noexcept {
  return VRELIsAsciiUpper(c) ? static_cast<Char>(c - Char('A') + Char('a')) : c;
}

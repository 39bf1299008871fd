// Classes of bytes in ISO 10303-21 clear text. Those of the C library depend on the locale.
#pragma once

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

inline bool IsControl(int byte) {
  return (byte >= 0 && byte < ' ') || byte == 0x7F;
}

// Parser of numbers in narrow strings.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELString.h"

// Classifies a string as a number and converts it. The values of options files, configuration files and token sources
// are parsed with it.
//
//   Gk_StringParser parser(Gk_String("0x1F"));
//   if (parser.isInteger(0)) use(parser.intValue());  // 31
//
// Errors: a conversion returns the number that the string begins with, and spill() reports where it ended. Characters
// after the number are no error; a conversion that leaves some polls the abort flag, and throws VRELAbortException if
// it is set.
class VREL_EXPORT Gk_StringParser {
 public:
  // Shares the bytes of `string`.
  Gk_StringParser(Gk_String const& string) : text(string) {}
  // Converts the string to US-ASCII.
  Gk_StringParser(VRELString const& string);
  // Copies the string.
  Gk_StringParser(char const* string) : text(string) {}

  // Returns whether the text equals `string`.
  bool isString(char const* string) const;

  // Return the number of digits from index `from` on. The byte that ends the digits, usually the terminator, becomes
  // the spill; if the digits reach the end of the bytes the spill is unchanged.
  int countDigits(int from);
  int countHexDigits(int from);

  // Return whether the text from index `from` up to its terminator is a number of the kind. They count digits, so they
  // move the spill.
  // Compatibility: an integer and an exponent need no digit, so that "", "-", "0x" and "1e" are accepted.
  //
  // Accepts digits, or "0x" and hexadecimal digits.
  bool isUnsignedInteger(int from);
  // Accepts an optional sign before an unsigned integer.
  bool isInteger(int from);
  // Accepts an optional sign, digits and a ".", with at least one digit before or after it, and an exponent after "e"
  // or "E".
  bool isReal(int from);

  // Returns the number at the beginning of the text, or 0. The decimal mark is "." in every locale.
  // Compatibility: a "." after the number begins a second number, which is added: "1.2.3" reads as 1.5.
  double realValue();
  // Return the integer at the beginning of the text, or 0: decimal, octal after "0", hexadecimal after "0x". The value
  // is limited to the range of the type. A negative number reads as unsigned modulo 2^32.
  int intValue();
  unsigned int uIntValue();

  // Polls the abort flag if the spill is at a byte other than a terminator, and has no other effect.
  void testSpill();

  // Returns the address of the first byte that the latest count or conversion did not take; null at first.
  char const* spill() const { return spillPlace; }
  // Returns whether testSpill() has completed.
  bool clean() const { return isClean; }

 private:
  char at(int index) const { return text[index]; }
  bool isInText(char const* place) const;
  int count(int from, bool (*isDigit)(unsigned char));
  template <class Number>
  Number convert(Number (*read)(char const*, char**), int from);

  Gk_String text;
  char* spillPlace = nullptr;
  bool isClean = false;
};

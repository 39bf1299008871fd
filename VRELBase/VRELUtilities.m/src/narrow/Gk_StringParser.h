// Tells whether a narrow text is a number, and reads it.
#pragma once

#include "Gk_String.h"
#include "VRELExport.h"
#include "VRELString.h"

// Decides what kind of number a text is, and converts it. The values of options files, configuration files and token
// sources are read through it.
//
//   Gk_StringParser parser(Gk_String("0x1F"));
//   if (parser.isInteger(0)) use(parser.intValue());  // 31
//
// Text behind a number is no error for a conversion: the number read so far stands, and spill() tells where it ended.
// A conversion that leaves such text polls the abort flag, and throws VRELAbortException where it is set.
class VREL_EXPORT Gk_StringParser {
 public:
  // Shares the bytes of `string`.
  Gk_StringParser(Gk_String const& string) : text(string) {}
  // Takes the text as US-ASCII bytes.
  Gk_StringParser(VRELString const& string);
  // A copy of the text.
  Gk_StringParser(char const* string) : text(string) {}

  // Whether the text is exactly `string`.
  bool isString(char const* string) const;

  // How many digits stand at `from` and behind it. The byte that ends the count, the terminator mostly, becomes the
  // spill; a count that meets the end of the bytes leaves the spill alone.
  int countDigits(int from);
  int countHexDigits(int from);

  // Whether the text from `from` on, up to its terminator, is a number of the kind. They count digits, so they move
  // the spill. Where at least one digit is wanted a real number has one; that the other two, and an exponent, are
  // content with none, so that "", "-", "0x" and "1e" pass, is promised.
  //
  // Digits, or "0x" and hexadecimal digits.
  bool isUnsignedInteger(int from);
  // The same with an optional sign in front.
  bool isInteger(int from);
  // An optional sign, digits and a ".", with a digit on either side of it; an exponent behind "e" or "E".
  bool isReal(int from);

  // The number at the beginning of the text, 0 where there is none. "." is the decimal mark, whatever the locale. That
  // a "." behind the number begins a second one, which is added, is promised: "1.2.3" reads 1.5.
  double realValue();
  // The integer at the beginning of the text, decimal, octal behind "0" or hexadecimal behind "0x", clipped to the
  // range of the type; 0 where there is none. A negative text reads as unsigned modulo 2 to the power 32.
  int intValue();
  unsigned int uIntValue();

  // Polls the abort flag if the spill stands on anything but a terminator. Nothing else comes of it.
  void testSpill();

  // The first byte that the latest count or conversion could not take, a place in the text; null at first.
  char const* spill() const { return spillPlace; }
  // Whether testSpill has run to its end.
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

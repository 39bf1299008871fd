// Decoder for the strings of ISO 10303-21 clear text.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct UConverter;

// Decodes strings as StepScanner returns them, from left to right: \S\ with the character after it, \X\ with two
// hexadecimal digits, and \X2\ and \X4\ with theirs up to \X0\ become characters, a doubled backslash becomes one. A
// surrogate pair becomes one character, even if it is divided between two escapes. \P.\ is kept, and \S\ after it still
// means ISO 8859-1. So is what only resembles an escape: a single backslash, a \S\ at the end, a \X2\ without
// quadruplets of digits or without its \X0\.
//
// Bytes beyond ASCII are decoded in the encoding that was set. Without one they are UTF-8; a string that is not valid
// UTF-8 is decoded in the encoding of the locale, unless that is UTF-8 or ASCII, and in ISO 8859-1 if it is not valid
// there either.
//
// Performance: linear in the length. Never fails.
class StepText {
 public:
  struct Decoded {
    std::string utf8;
    bool escaped = false;  // the string contains an escape, even an invalid or unknown one
  };

  StepText();
  ~StepText();

  // Sets the encoding by a name that ICU knows; "" for the default. Returns false, and changes nothing, if the name is
  // unknown.
  bool SetEncoding(std::string const& name);

  Decoded Decode(std::string_view encoded);

  // Returns whether a string decodes to itself: ASCII without a backslash.
  static bool IsPlain(std::string_view raw);

  // Returns the encodings that were used for bytes beyond ASCII, with the number of strings: "UTF-8 (3 strings),
  // ISO-8859-1 (1 string)"; empty if there were none.
  std::string UsedEncodings() const;

 private:
  struct Close {
    void operator()(UConverter* converter) const;
  };
  struct Encoding {
    std::string name;
    std::unique_ptr<UConverter, Close> converter;  // null for UTF-8 and for an encoding that is not in use
    long strings = 0;
  };

  std::string_view DecodeBytes(std::string_view bytes, std::string& storage);
  bool Convert(std::string& utf8, std::string_view bytes, Encoding& encoding, bool substitutes);

  Encoding given;
  Encoding utf8Encoding;
  Encoding localeEncoding;
  Encoding latin1;
};

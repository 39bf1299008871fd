// Fuzzes the decoder and the encoder for strings of STEP files. Asserts that the result is valid UTF-8, that a string
// without an escape is decoded to itself, and that an encoded string is decoded to what it was.
#include "StepText.h"

#include <cstdint>
#include <string>

#include "Require.h"
#include "StepEncoder.h"
#include "VRELString.h"

namespace {

// Returns the string as StepScanner reads it: without apostrophes at its ends, and with doubled ones reduced.
std::string Unquote(std::string const& quoted) {
  Require(quoted.size() >= 2 && quoted.front() == '\'' && quoted.back() == '\'', "an encoded string has apostrophes");
  std::string text;
  for (std::size_t at = 1; at + 1 < quoted.size(); ++at) {
    text += quoted[at];
    if (quoted[at] != '\'') continue;
    Require(quoted[at + 1] == '\'' && at + 2 < quoted.size(), "an apostrophe is doubled");
    ++at;
  }
  return text;
}

void CheckEncoded(std::string const& utf8, char const* encoding) {
  StepEncoder encoder;
  Require(encoder.SetEncoding(encoding), "the encoding is known");
  DocumentVisitor::Text text;
  text.utf8 = utf8;
  StepText decoder;
  Require(decoder.SetEncoding(encoding), "the encoding is known");
  Require(decoder.Decode(Unquote(encoder.Encode(text))).utf8 == utf8, "an encoded string is decoded to itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const raw(reinterpret_cast<char const*>(bytes), size);
  StepText::Decoded const decoded = StepText().Decode(raw);
  std::string const withoutNul = decoded.utf8.substr(0, decoded.utf8.find('\0'));
  Require(VRELString(withoutNul).toUtf8() == withoutNul, "the result is UTF-8");
  if (raw.find('\\') == std::string::npos) Require(!decoded.escaped, "an escape has a backslash");
  bool const isUtf8 = raw.find('\0') == std::string::npos && VRELString(raw).toUtf8() == raw;
  if (isUtf8 && !decoded.escaped) Require(decoded.utf8 == raw, "a string without an escape is decoded to itself");

  for (char const* encoding : {"US-ASCII", "UTF-8", "ISO-8859-1", "Shift_JIS"}) CheckEncoded(decoded.utf8, encoding);
  StepText().SetEncoding(raw);
  return 0;
}

// Decodes a generated string of a STEP file. Checks that a string without an escape is unchanged, and that a string
// that is encoded with escapes and doubled backslashes decodes to itself.
#include "StepText.h"

#include <cstdint>
#include <string>

#include "Require.h"
#include "VRELStringISO1030321Writer.h"

namespace {

std::string Encode(VRELString const& text) {
  std::string doubled;
  for (char const c : text.toUtf8()) doubled.append(c == '\\' ? 2 : 1, c);
  VRELStringISO1030321Writer writer;
  char const* written = nullptr;
  Require(writer.ConvertToASCII(VRELString(doubled), written) == VREL_S_OK, "every string is encoded");
  return written != nullptr ? written : "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const raw = std::string(reinterpret_cast<char const*>(bytes), size).c_str();
  StepText const decoded = DecodeStepText(raw);
  VRELString const plain(raw);
  if (raw.find('\\') == std::string::npos) Require(!decoded.escaped, "an escape has a backslash");
  bool const isUtf8 = plain.toUtf8() == raw;
  if (isUtf8 && !decoded.escaped) Require(decoded.text.equals(plain), "a string without an escape is unchanged");

  StepText const back = DecodeStepText(Encode(plain));
  Require(back.text.equals(plain), "an encoded string decodes to itself");
  return 0;
}

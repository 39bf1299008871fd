// Decodes a generated ISO 10303-21 string. Compares ASCII strings with a recursive model, which decodes the first
// escape and then the rest; checks that no string fails and that a reader can be used again.
#include "VRELStringISO1030321Reader.h"

#include <cstdint>
#include <cstdio>
#include <string>

#include "Require.h"

namespace {

// Decodes a \X2\ escape. Returns false for other bytes.
bool DecodeUnits(std::string const& piece, std::u16string& units) {
  if (piece.size() <= 8 || piece.size() % 4 != 0) return false;
  if (piece.compare(0, 4, "\\X2\\") != 0 || piece.compare(piece.size() - 4, 4, "\\X0\\") != 0) return false;
  for (std::size_t at = 4; at + 4 < piece.size(); at += 4) {
    unsigned value = 0;
    std::sscanf(piece.substr(at, 4).c_str(), "%x", &value);
    if ((value & 0xFFFF) != 0) units += static_cast<char16_t>(value);
  }
  return true;
}

std::u16string Decode(std::string const& text) {
  std::u16string const plain(text.begin(), text.end());
  std::size_t const single = text.find("\\S\\");
  std::size_t const wide = text.find("\\X2\\");
  if (single == std::string::npos && wide == std::string::npos) return plain;
  std::size_t const start = std::min(single, wide);
  std::u16string units;
  std::size_t end;
  if (single < wide) {
    end = std::min(start + 4, text.size());
    units += static_cast<char16_t>(start + 3 < text.size() ? (text[start + 3] + 128) % 256 : 128);
  } else {
    std::size_t const close = text.find("\\X0\\");
    if (close == std::string::npos || close < start) return plain;
    end = close + 4;
    if (!DecodeUnits(text.substr(start, end - start), units)) return plain;
  }
  return plain.substr(0, start) + units + Decode(text.substr(end));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  std::string const text = std::string(reinterpret_cast<char const*>(bytes), size).c_str();
  VRELStringISO1030321Reader reader;
  VRELString out;
  Require(reader.ConvertFromASCII(text.c_str(), out) == VREL_S_OK, "no string fails");
  VRELString again;
  Require(reader.ConvertFromASCII(text.c_str(), again) == VREL_S_OK && again.equals(out), "a reader can be used again");
  for (char const c : text) {
    if (static_cast<unsigned char>(c) > 127) return 0;
  }
  Require(out.toUtf16() == Decode(text), "escapes are decoded up to the first malformed one");
  return 0;
}

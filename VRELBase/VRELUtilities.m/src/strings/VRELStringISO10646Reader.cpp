#include "VRELStringISO10646Reader.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "VRELAscii.h"

namespace {

constexpr std::string_view kOpening = "\\X2\\";
constexpr std::string_view kClosing = "\\X0\\";

// Returns the code unit of the four bytes at `quadruplet`. Bytes that are not all hexadecimal digits take the slow path
// through GetUChar, whose result for them is that of sscanf.
unsigned short QuadrupletValue(char const* quadruplet) noexcept {
  int value = 0;
  int allDigits = 0;
  for (int i = 0; i < 4; ++i) {
    int const digit = VRELHexDigitValue(quadruplet[i]);
    value = value << 4 | (digit & 0xF);
    allDigits |= digit;
  }
  if (allDigits >= 0) return static_cast<unsigned short>(value);
  char text[5] = {};
  std::memcpy(text, quadruplet, 4);
  return VRELStringISO10646Reader::GetUChar(text);
}

}  // namespace

VRELStringISO10646Reader::VRELStringISO10646Reader(char const* text) {
  if (text == nullptr) return;
  size = std::strlen(text);
  encodedString.reset(new char[size + 1]);
  std::memcpy(encodedString.get(), text, size + 1);
}

void VRELStringISO10646Reader::DetermineEncoding() {
  if (encoding == -1) encoding = IsSequence(Encoded()) ? 2 : 0;
}

VRINResult VRELStringISO10646Reader::GetResult(VRELString& out) {
  VRINResult status = VREL_E_FAIL;
  if (encoding == -1) {
    DetermineEncoding();
    if (encoding == 2) {
      std::u16string units(static_cast<std::size_t>(GetNumberOfQuadruplets()), u'\0');
      units.resize(static_cast<std::size_t>(Decode(Encoded(), units.data()) - units.data()));
      result = VRELString(std::u16string_view(units));
      status = VREL_S_OK;
    }
  }
  out = result;
  return status;
}

int VRELStringISO10646Reader::GetNumberOfQuadruplets() const {
  return encodedString != nullptr ? (static_cast<int>(size) - 8) / 4 : 0;
}

void VRELStringISO10646Reader::GetQuadrupletAt(int index, char* out) const {
  if (out == nullptr || index < 0 || index >= GetNumberOfQuadruplets()) return;
  std::memcpy(out, encodedString.get() + kOpening.size() + 4 * static_cast<std::size_t>(index), 4);
  out[4] = '\0';
}

unsigned short VRELStringISO10646Reader::GetUChar(char const* text) {
  unsigned int value = 0;
  if (text == nullptr || std::sscanf(text, "%x", &value) != 1) return 0;
  return static_cast<unsigned short>(value);
}

bool VRELStringISO10646Reader::IsSequence(std::string_view bytes) noexcept {
  std::size_t const marks = kOpening.size() + kClosing.size();
  return bytes.size() > marks && bytes.size() % 4 == 0 && bytes.substr(0, kOpening.size()) == kOpening &&
         bytes.substr(bytes.size() - kClosing.size()) == kClosing;
}

char16_t* VRELStringISO10646Reader::Decode(std::string_view sequence, char16_t* units) noexcept {
  std::size_t const end = sequence.size() - kClosing.size();
  for (std::size_t i = kOpening.size(); i < end; i += 4) {
    unsigned short const unit = QuadrupletValue(sequence.data() + i);
    if (unit != 0) *units++ = unit;
  }
  return units;
}

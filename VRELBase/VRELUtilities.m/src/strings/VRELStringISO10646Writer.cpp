#include "VRELStringISO10646Writer.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

bool IsOutsideAscii(char16_t unit) noexcept {
  return !VRELStringISO10646Writer::IsUSAscii(unit);
}

// Returns the first run of units outside ASCII from `start` on; empty if there is none.
std::u16string_view FirstRun(std::u16string_view text, std::size_t start) noexcept {
  auto const first = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), IsOutsideAscii);
  auto const last = std::find_if_not(first, text.end(), IsOutsideAscii);
  return text.substr(static_cast<std::size_t>(first - text.begin()), static_cast<std::size_t>(last - first));
}

void AppendQuadruplet(std::u16string& text, unsigned int unit) {
  for (int shift = 12; shift >= 0; shift -= 4) text += u"0123456789ABCDEF"[unit >> shift & 0xF];
}

void AppendEscape(std::u16string& text, std::u16string_view units) {
  text += u"\\X2\\";
  for (char16_t const unit : units) AppendQuadruplet(text, unit);
  text += u"\\X0\\";
}

}  // namespace

VRELStringISO10646Writer::VRELStringISO10646Writer(VRELString const& text) : source(text) {}

VRINResult VRELStringISO10646Writer::GetResult(VRELString& out) {
  std::u16string_view const text = source.view();
  std::u16string_view run = FirstRun(text, 0);
  if (run.empty()) {
    result = source;
  } else {
    std::u16string encoded;
    encoded.reserve(text.size() + 16);
    std::size_t position = 0;
    for (; !run.empty(); run = FirstRun(text, position)) {
      auto const start = static_cast<std::size_t>(run.data() - text.data());
      encoded.append(text.substr(position, start - position));
      AppendEscape(encoded, run);
      position = start + run.size();
    }
    encoded.append(text.substr(position));
    result = VRELString(std::u16string_view(encoded));
  }
  out = result;
  return VREL_S_OK;
}

VRINResult VRELStringISO10646Writer::GetFirstNonAsciiSubstring(VRELString const& text, int& start, int& end) {
  std::u16string_view const units = text.view();
  std::u16string_view const run = FirstRun(units, 0);
  start = -1;
  end = -1;
  if (run.empty()) return VREL_E_FAIL;
  start = static_cast<int>(run.data() - units.data());
  end = start + static_cast<int>(run.size());
  return VREL_S_OK;
}

VRINResult VRELStringISO10646Writer::GetQuadrupletAsciiString(unsigned short unit, VRELString& out) {
  std::u16string digits;
  AppendQuadruplet(digits, unit);
  out = VRELString(std::u16string_view(digits));
  return VREL_S_OK;
}

VRINResult VRELStringISO10646Writer::GetEncodedAsciiString(VRELString const& text, VRELString& out) {
  std::u16string encoded;
  if (text.length() > 0) AppendEscape(encoded, text.view());
  out = VRELString(std::u16string_view(encoded));
  return VREL_S_OK;
}

#include "VRELStringISO1030321Reader.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "VRELStringAsciiCharUtil.h"
#include "VRELStringISO10646Reader.h"
#include "VRELStringISO8859Reader.h"

namespace {

// The first escape of a text: where it starts and ends, in units of the text.
struct Escape {
  bool isPage;  // \S\, else \X2\.
  std::size_t start;
  std::size_t end;
};

constexpr std::size_t kNone = std::string_view::npos;

// The escape that comes first, from the places of the next "\S\", "\X2\" and "\X0\" (kNone where there is none). False
// if there is no escape, or one that ends before it starts.
bool FirstEscape(std::size_t page, std::size_t units, std::size_t unitsEnd, std::size_t length, Escape& escape) {
  if (page == kNone && units == kNone) return false;
  if (page < units) {
    escape = {true, page, std::min(page + 4, length)};
    return true;
  }
  escape = {false, units, unitsEnd + 4};
  return unitsEnd != kNone && unitsEnd > units;
}

// Writes what an escape stands for, given as bytes, and moves `out` behind it. False if the escape is malformed.
bool Decode(std::string_view bytes, bool isPage, char16_t*& out) {
  if (isPage) {
    *out++ = VRELStringISO8859Reader::Decode(bytes.size() > 3 ? bytes[3] : '\0');
    return true;
  }
  if (!VRELStringISO10646Reader::IsSequence(bytes)) return false;
  out = VRELStringISO10646Reader::Decode(bytes, out);
  return true;
}

// The next place of a pattern, searched for once: the places that are asked for never go back.
class NextPlace {
 public:
  NextPlace(std::string_view searched, std::string_view searchedPattern)
      : text(searched), pattern(searchedPattern), place(searched.find(searchedPattern)) {}

  std::size_t From(std::size_t position) {
    if (place < position) place = text.find(pattern, position);
    return place;
  }

 private:
  std::string_view text;
  std::string_view pattern;
  std::size_t place;
};

// Decodes the bytes behind the first escape of a text into `out` and moves it behind them. Gives the place behind the
// last escape that was decoded.
std::size_t DecodeTail(std::string_view tail, char16_t*& out) {
  NextPlace page(tail, "\\S\\");
  NextPlace units(tail, "\\X2\\");
  NextPlace unitsEnd(tail, "\\X0\\");
  std::size_t position = 0;
  Escape escape{};
  while (FirstEscape(page.From(position), units.From(position), unitsEnd.From(position), tail.size(), escape)) {
    char16_t* const behindHead = std::copy(tail.begin() + static_cast<std::ptrdiff_t>(position),
                                           tail.begin() + static_cast<std::ptrdiff_t>(escape.start), out);
    char16_t* behind = behindHead;
    if (!Decode(tail.substr(escape.start, escape.end - escape.start), escape.isPage, behind)) break;
    out = behind;
    position = escape.end;
  }
  out = std::copy(tail.begin() + static_cast<std::ptrdiff_t>(position), tail.end(), out);
  return position;
}

}  // namespace

VRINResult VRELStringISO1030321Reader::ConvertFromASCII(char const* text, VRELString& out) {
  ResetUSAsciiString(text);
  VRELString whole(USAsciiString);
  std::u16string_view const units = whole.view();
  Escape escape{};
  bool const hasEscape =
      FirstEscape(units.find(u"\\S\\"), units.find(u"\\X2\\"), units.find(u"\\X0\\"), units.size(), escape);
  if (!hasEscape) {
    out = std::move(whole);
    return VREL_S_OK;
  }
  // An escape takes more units than it stands for, so the decoded text is no longer than the encoded one.
  std::u16string decoded(units.size(), u'\0');
  char16_t* end = std::copy_n(units.begin(), escape.start, decoded.data());
  VRELStringAsciiCharUtil const piece(whole.substring(static_cast<int>(escape.start), static_cast<int>(escape.end)),
                                      false);
  char const* const bytes = piece;
  if (bytes == nullptr || !Decode(bytes, escape.isPage, end)) {
    out = std::move(whole);
    return VREL_S_OK;
  }
  VRELStringAsciiCharUtil const tail(whole.substring(static_cast<int>(escape.end)), false);
  char const* const tailBytes = tail;
  if (tailBytes != nullptr) ResetUSAsciiString(tailBytes + DecodeTail(tailBytes, end));
  decoded.resize(static_cast<std::size_t>(end - decoded.data()));
  out = VRELString(std::u16string_view(decoded));
  return VREL_S_OK;
}

#include "VRELStringISO1030321Reader.h"

#include <algorithm>
#include <memory>
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

// Decodes bytes into `out` and moves it behind the units. Gives the place behind the last escape that was decoded; 0 if
// there is none.
std::size_t DecodeBytes(std::string_view text, char16_t*& out) {
  NextPlace page(text, "\\S\\");
  NextPlace units(text, "\\X2\\");
  NextPlace unitsEnd(text, "\\X0\\");
  std::size_t position = 0;
  Escape escape{};
  while (FirstEscape(page.From(position), units.From(position), unitsEnd.From(position), text.size(), escape)) {
    std::string_view const head = text.substr(position, escape.start - position);
    char16_t* behind = std::copy(head.begin(), head.end(), out);
    if (!Decode(text.substr(escape.start, escape.end - escape.start), escape.isPage, behind)) break;
    out = behind;
    position = escape.end;
  }
  std::string_view const rest = text.substr(position);
  out = std::copy(rest.begin(), rest.end(), out);
  return position;
}

// Whether a text has only ASCII characters, and the same as the bytes that it was read from.
bool IsAsciiOf(std::u16string_view units, char const* bytes) {
  auto const isSame = [](char16_t unit, char byte) {
    return unit == static_cast<unsigned char>(byte) && static_cast<signed char>(byte) > 0;
  };
  return std::equal(units.begin(), units.end(), bytes, isSame) && bytes[units.size()] == '\0';
}

// Decodes the first escape of a text, behind the units before it. False if it is malformed.
bool DecodeFirst(VRELString const& text, Escape const& first, char16_t*& out) {
  VRELStringAsciiCharUtil const piece(text.substring(static_cast<int>(first.start), static_cast<int>(first.end)),
                                      false);
  char const* const bytes = piece;
  out = std::copy_n(text.view().begin(), first.start, out);
  return bytes != nullptr && Decode(bytes, first.isPage, out);
}

}  // namespace

VRINResult VRELStringISO1030321Reader::ConvertFromASCII(char const* text, VRELString& out) {
  ResetUSAsciiString(text);
  VRELString whole(USAsciiString);
  if (!DecodeEscapes(whole, out)) out = std::move(whole);
  return VREL_S_OK;
}

// Decodes a text that was read from the held bytes, and then holds the bytes behind its last escape. False, with
// nothing changed, if the text has no escape or a malformed one comes first.
bool VRELStringISO1030321Reader::DecodeEscapes(VRELString const& whole, VRELString& out) {
  std::u16string_view const units = whole.view();
  Escape first{};
  if (!FirstEscape(units.find(u"\\S\\"), units.find(u"\\X2\\"), units.find(u"\\X0\\"), units.size(), first))
    return false;
  // An escape takes more units than it stands for, so the decoded text is no longer than the encoded one.
  std::unique_ptr<char16_t[]> const decoded(new char16_t[units.size()]);
  char16_t* end = decoded.get();
  if (IsAsciiOf(units, USAsciiString)) {
    std::size_t const position = DecodeBytes(USAsciiString, end);
    if (position == 0) return false;
    ResetUSAsciiString(USAsciiString + position);
  } else {
    // The first escape and what stands before it are read from the text, the rest goes on as ASCII bytes.
    if (!DecodeFirst(whole, first, end)) return false;
    VRELStringAsciiCharUtil const tail(whole.substring(static_cast<int>(first.end)), false);
    char const* const bytes = tail;
    if (bytes == nullptr) return false;
    ResetUSAsciiString(bytes + DecodeBytes(bytes, end));
  }
  out = VRELString(std::u16string_view(decoded.get(), static_cast<std::size_t>(end - decoded.get())));
  return true;
}

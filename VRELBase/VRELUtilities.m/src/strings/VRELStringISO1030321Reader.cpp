#include "VRELStringISO1030321Reader.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "VRELStringAsciiCharUtil.h"
#include "VRELStringISO10646Reader.h"
#include "VRELStringISO8859Reader.h"

// The documented algorithm is recursive: find the first escape of the string, decode it, convert the rest to ASCII
// bytes and decode that in the same way. Each level searches the whole rest for all three markers, so that a string of
// n escapes takes quadratic time and n levels of stack. The loop below produces the same result in linear time. It
// keeps the position of the next occurrence of each marker (MarkerSearch) and searches again only when that position
// was passed. The first level differs from the others, because its bytes are decoded in the default code page: if the
// string is all ASCII that makes no difference; otherwise DecodeFirst handles the first escape on UTF-16 units.
namespace {

// First escape of a string, with its range in code units.
struct Escape {
  bool isPage;  // \S\, else \X2\.
  std::size_t start;
  std::size_t end;
};

constexpr std::size_t kNone = std::string_view::npos;

// Finds the first escape from the positions of the next "\S\", "\X2\" and "\X0\" (kNone if there is none). Returns
// false if there is no escape, or if it would end before it starts.
bool FirstEscape(std::size_t page, std::size_t units, std::size_t unitsEnd, std::size_t length, Escape& escape) {
  if (page == kNone && units == kNone) return false;
  if (page < units) {
    escape = {true, page, std::min(page + 4, length)};
    return true;
  }
  escape = {false, units, unitsEnd + 4};
  return unitsEnd != kNone && unitsEnd > units;
}

// Decodes the bytes of one escape to `out` and advances it. Returns false if the escape is malformed.
bool Decode(std::string_view bytes, bool isPage, char16_t*& out) {
  if (isPage) {
    *out++ = VRELStringISO8859Reader::Decode(bytes.size() > 3 ? bytes[3] : '\0');
    return true;
  }
  if (!VRELStringISO10646Reader::IsSequence(bytes)) return false;
  out = VRELStringISO10646Reader::Decode(bytes, out);
  return true;
}

// Position of the next occurrence of a marker.
// Requires: the positions asked for never decrease.
class MarkerSearch {
 public:
  MarkerSearch(std::string_view searched, std::string_view searchedMarker)
      : text(searched), marker(searchedMarker), place(searched.find(searchedMarker)) {}

  std::size_t From(std::size_t position) {
    if (place < position) place = text.find(marker, position);
    return place;
  }

 private:
  std::string_view text;
  std::string_view marker;
  std::size_t place;
};

// Decodes bytes to `out` and advances it. Returns the position after the last decoded escape, or 0 if there is none.
std::size_t DecodeBytes(std::string_view text, char16_t*& out) {
  MarkerSearch page(text, "\\S\\");
  MarkerSearch units(text, "\\X2\\");
  MarkerSearch unitsEnd(text, "\\X0\\");
  std::size_t position = 0;
  Escape escape{};
  while (FirstEscape(page.From(position), units.From(position), unitsEnd.From(position), text.size(), escape)) {
    std::string_view const head = text.substr(position, escape.start - position);
    char16_t* decoded = std::copy(head.begin(), head.end(), out);
    if (!Decode(text.substr(escape.start, escape.end - escape.start), escape.isPage, decoded)) break;
    out = decoded;
    position = escape.end;
  }
  std::string_view const rest = text.substr(position);
  out = std::copy(rest.begin(), rest.end(), out);
  return position;
}

// Returns whether a string is all ASCII and equals the bytes that it was decoded from.
bool IsAsciiOf(std::u16string_view units, char const* bytes) {
  auto const isSame = [](char16_t unit, char byte) {
    return unit == static_cast<unsigned char>(byte) && static_cast<signed char>(byte) > 0;
  };
  return std::equal(units.begin(), units.end(), bytes, isSame) && bytes[units.size()] == '\0';
}

// Copies the units before the first escape and decodes it. Returns false if it is malformed.
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

// Decodes `whole`, which was decoded from the held bytes, and then holds the bytes after its last escape. Returns false
// and changes nothing if the string has no escape or the first one is malformed.
bool VRELStringISO1030321Reader::DecodeEscapes(VRELString const& whole, VRELString& out) {
  std::u16string_view const units = whole.view();
  Escape first{};
  if (!FirstEscape(units.find(u"\\S\\"), units.find(u"\\X2\\"), units.find(u"\\X0\\"), units.size(), first))
    return false;
  // An escape decodes to fewer units than it has, so the decoded string is not longer than the encoded one.
  std::unique_ptr<char16_t[]> const decoded(new char16_t[units.size()]);
  char16_t* end = decoded.get();
  if (IsAsciiOf(units, USAsciiString)) {
    std::size_t const position = DecodeBytes(USAsciiString, end);
    if (position == 0) return false;
    ResetUSAsciiString(USAsciiString + position);
  } else {
    // Decode up to the first escape from the string, and the rest from its ASCII bytes.
    if (!DecodeFirst(whole, first, end)) return false;
    VRELStringAsciiCharUtil const tail(whole.substring(static_cast<int>(first.end)), false);
    char const* const bytes = tail;
    if (bytes == nullptr) return false;
    ResetUSAsciiString(bytes + DecodeBytes(bytes, end));
  }
  out = VRELString(std::u16string_view(decoded.get(), static_cast<std::size_t>(end - decoded.get())));
  return true;
}

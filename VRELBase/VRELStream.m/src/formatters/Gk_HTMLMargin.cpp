#include "Gk_HTMLMargin.h"

#include <cstddef>
#include <cstring>

#include "Gk_HTMLAnchor.h"
#include "Gk_HTMLTag.h"

Gk_HTMLMargin::Gk_HTMLMargin(VRELStreamFormatter* owner) : VRELStreamFormatterMargin(owner) {}

void Gk_HTMLMargin::dump(VRELStreamFormatter& /*target*/) const {}

void Gk_HTMLMargin::incr() {
  if (depth >= 0 && depth < levels.size()) {
    levels[depth] = static_cast<int>(static_cast<unsigned int>(levels[depth]) + 1);
  } else {
    levels.add(0);
  }
  BlockName const name = nameOfBlock();
  writeBrace(name.opening, name.closing, "{");
  if (formatter != nullptr) *formatter << "<BLOCKQUOTE>";
  VRELStreamFormatterMargin::incr();
}

void Gk_HTMLMargin::decr() {
  VRELStreamFormatterMargin::decr();
  BlockName const name = nameOfBlock();
  if (formatter != nullptr) *formatter << "</BLOCKQUOTE>";
  writeBrace(name.closing, name.opening, "}");
  if (formatter != nullptr) *formatter << formatter->endline();
}

// Forms the names of the current block. A letter that wraps to the zero byte is left out, because it would end the
// name.
Gk_HTMLMargin::BlockName Gk_HTMLMargin::nameOfBlock() const {
  constexpr char openingMark[] = "M{";
  constexpr char closingMark[] = "M}";
  BlockName name;
  std::size_t length = 0;
  for (int i = 0; i <= depth && i < levels.size() && length < sizeof name.opening - sizeof openingMark; ++i) {
    char const letter = static_cast<char>('A' + static_cast<unsigned int>(levels[i]));
    if (letter != '\0') name.opening[length++] = letter;
  }
  std::memcpy(name.closing, name.opening, length);
  std::memcpy(name.opening + length, openingMark, sizeof openingMark);
  std::memcpy(name.closing + length, closingMark, sizeof closingMark);
  return name;
}

void Gk_HTMLMargin::writeBrace(char const* own, char const* other, char const* brace) {
  if (formatter == nullptr) return;
  using Object = VRELStreamFormatter::VRELStreamFormatterObject;
  Gk_HTMLAnchor const anchor(new Object(own), formatter->empty());
  Gk_HTMLTag const link(new Object(other), new Object(brace));
  *formatter << &anchor << &link;
}

#include "TextPage.h"

#include <algorithm>

namespace {

constexpr std::size_t kKeyWidth = 24;  // as in the dump of a file header

}  // namespace

void TextPage::Flush() {
  if (!pending.empty()) formatter << pending.c_str();
  pending.clear();
  stream.Check();
}

void TextPage::Put(std::string_view utf8) {
  pending += utf8;
  if (pending.size() >= kBlockSize) Flush();
}

void TextPage::EndLine() {
  Flush();
  formatter << formatter.endline();
}

void TextPage::PutTitle(std::string_view title) {
  Put(title);
  EndLine();
}

void TextPage::PutHeading(std::string_view heading) {
  EndLine();
  Put(heading);
  EndLine();
  pending.append(heading.size(), '-');
  EndLine();
}

void TextPage::PutRow(std::string_view key, std::string_view value) {
  Put(key);
  if (!key.empty()) {
    pending.append(kKeyWidth - std::min(kKeyWidth, key.size()), ' ');
    Put(" : ");
  }
  Put(value);
  EndLine();
}

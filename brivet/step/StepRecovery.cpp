// Panic-mode recovery on bytes, not on tokens: after a missing apostrophe the scanner takes strings for tokens and
// tokens for strings, and no token can be trusted. What can be trusted is the layout that nearly all exporters use, one
// instance after a line end. Reading therefore resumes at the first line after the start of the failed instance that
// begins with "#12=" or with a word that begins or ends a section. So a single missing apostrophe loses one instance,
// although the error may be found thousands of lines later.
//
// In files with several instances on a line, a ";" followed by an instance is accepted as well, if the number of
// apostrophes since the begin of the failed instance is even. If no line begins with an instance, the first ";"
// followed by an instance is accepted for any number.
//
// The search never goes back before `from`, and it remembers up to where no line begins with an instance, so that all
// searches of a file together take linear time.
#include "StepRecovery.h"

#include <cstddef>
#include <string_view>

#include "StepBytes.h"

namespace {

constexpr std::size_t kStartLimit = 80;  // bytes that are examined

std::string_view SkipBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return text;
}

// Returns the rest of a text after a word, or an empty one if the text does not begin with the word.
std::string_view After(std::string_view text, std::string_view word) {
  bool const begins = text.substr(0, word.size()) == word;
  bool const ends = begins && (text.size() == word.size() || !IsWordByte(text[word.size()]));
  return ends ? SkipBlanks(text.substr(word.size())) : std::string_view();
}

bool IsInstance(std::string_view text) {
  std::size_t digits = 1;
  while (digits < text.size() && IsDigit(text[digits])) ++digits;
  if (text.front() != '#' || digits == 1) return false;
  std::string_view const rest = SkipBlanks(text.substr(digits));
  return digits == kStartLimit || (!rest.empty() && rest.front() == '=');
}

bool IsSectionWord(std::string_view text) {
  for (std::string_view const word : {"ENDSEC", "DATA", "END-ISO-10303-21", "ANCHOR", "REFERENCE"}) {
    std::string_view const rest = After(text, word);
    if (!rest.empty() && (rest.front() == ';' || (rest.front() == '(' && word == "DATA"))) return true;
  }
  return false;
}

bool IsHeaderEntity(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && IsWordByte(text[length])) ++length;
  std::string_view const rest = SkipBlanks(text.substr(length));
  return (IsLetter(text.front()) || text.front() == '!') && !rest.empty() && rest.front() == '(';
}

}  // namespace

StepRecovery::Start StepRecovery::StartAt(unsigned long offset, Part part) const {
  char bytes[kStartLimit];
  std::string_view const text(bytes, buffer.ReadAt(offset, bytes, kStartLimit));
  if (text.empty()) return Start::None;
  if (IsInstance(text)) return Start::Instance;
  bool const isEntry = part == Part::Entries && (text.front() == '<' || text.front() == '@');
  bool const isWord = isEntry || IsSectionWord(text) || (part == Part::Header && IsHeaderEntity(text)) ||
                      (part == Part::Scope && !After(text, "ENDSCOPE").empty());
  return isWord ? Start::Word : Start::None;
}

StepScanner::Position StepRecovery::Find(StepScanner::Position from, Part part) {
  enum { Elsewhere, LineBegin, AfterSemicolon } at = Elsewhere;
  bool const noLines = from.offset >= searchedBegin && from.offset < searchedEnd;
  bool inString = false;  // the number of apostrophes is odd
  bool afterReturn = false;
  bool hasFallback = false;
  StepScanner::Position fallback;
  StepScanner::Position here = from;
  buffer.SetOffset(from.offset);
  for (int byte = buffer.Peek(); byte != StepBuffer::kEnd; byte = buffer.Peek()) {
    if (IsLineEnd(byte)) {
      if (byte == '\r' || !afterReturn) ++here.line;
      at = LineBegin;
    } else if (!IsBlank(byte)) {
      here.offset = buffer.Offset();
      bool const mayStart =
          at != Elsewhere && (byte == '#' || byte == '!' || byte == '<' || byte == '@' || IsLetter(byte));
      Start const start = mayStart ? StartAt(here.offset, part) : Start::None;
      atLineBegin = at == LineBegin;
      if (start == Start::Instance && at == LineBegin) return here;
      if (start != Start::None && at == AfterSemicolon && (!inString || noLines)) return here;
      // The section ends: no line of it begins with an instance.
      if (start == Start::Word && at == LineBegin) {
        if (!hasFallback) return here;
        break;
      }
      if (start == Start::Instance && !hasFallback) {
        hasFallback = true;
        fallback = here;
      }
      inString ^= byte == '\'';
      at = byte == ';' ? AfterSemicolon : Elsewhere;
    }
    afterReturn = byte == '\r';
    buffer.Take();
  }
  if (hasFallback) {
    searchedBegin = from.offset;
    searchedEnd = buffer.Offset();
    atLineBegin = false;
    return fallback;
  }
  atLineBegin = false;
  return {buffer.Offset(), here.line};
}

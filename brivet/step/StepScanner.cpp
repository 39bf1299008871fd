#include "StepScanner.h"

#include <algorithm>
#include <cstdio>

#include "InputError.h"

namespace {

// The C library's classes of characters follow the locale; these do not.
bool IsDigit(int byte) {
  return byte >= '0' && byte <= '9';
}
bool IsLetter(int byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}
bool IsHexDigit(int byte) {
  return IsDigit(byte) || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}
bool IsBlank(int byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}
bool IsControl(int byte) {
  return (byte >= 0 && byte < ' ') || byte == 0x7F;
}
bool IsWordByte(int byte) {
  return IsLetter(byte) || IsDigit(byte) || byte == '_' || byte == '-';
}

// With a question mark for each byte that has no sign of its own.
std::string Printable(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return text;
}

}  // namespace

StepScanner::StepScanner(StepBuffer& bytes) : buffer(bytes) {}

std::string StepScanner::Token::Name() const {
  switch (kind) {
    case End:
      return "the end of the file";
    case String:
      return "a string";
    case Binary:
      return "a binary";
    case Resource:
      return Printable(text.substr(0, NAME_LIMIT));
    case Other:
      break;
    default:
      return text.substr(0, NAME_LIMIT);
  }
  int const byte = static_cast<unsigned char>(text[0]);
  if (byte > ' ' && byte < 0x7F) return text.substr(0, NAME_LIMIT);
  char name[16];
  std::snprintf(name, sizeof name, "byte 0x%02X", static_cast<unsigned int>(byte));
  return name;
}

std::string_view StepScanner::Token::Digits() const {
  std::string_view digits = std::string_view(text).substr(1);
  std::size_t const zeros = digits.find_first_not_of('0');
  digits.remove_prefix(zeros != std::string_view::npos ? zeros : digits.size() - 1);
  return digits;
}

void StepScanner::Seek(unsigned long offset, long lineThere) {
  // A file that has become shorter ends in front of some places.
  buffer.SetOffset(std::min(offset, buffer.Size()));
  line = lineThere;
  afterReturn = false;
  started = true;
  // Whoever asks where the current token stands finds none.
  token.kind = End;
}

bool StepScanner::NextReference() {
  while (true) {
    token.text.clear();
    token.line = line;
    switch (int const byte = buffer.Peek()) {
      case StepBuffer::END:
        token.kind = End;
        return false;
      case '\'':
        SkipString();
        break;
      case '/':
        SkipBlanksAndComments();
        break;
      case '#':
        token.begin = buffer.Offset();
        ReadInstance();
        if (token.kind == Instance) return true;
        break;
      case ';':
        Keep();
        token.kind = Other;
        return false;
      default:
        static_cast<void>(byte);
        Take();
    }
  }
}

StepScanner::Token const& StepScanner::Next() {
  token.text.clear();
  tooLong = false;
  if (!started) SkipByteOrderMark();
  started = true;
  // A slash that opens no comment is left behind in the token.
  if (!SkipBlanksAndComments()) return token;

  token.line = line;
  token.begin = buffer.Offset();
  int const byte = buffer.Peek();
  if (byte == StepBuffer::END) {
    token.kind = End;
  } else if (byte == '\'') {
    ReadString();
  } else if (byte == '"') {
    ReadBinary();
  } else if (byte == '<') {
    ReadResource();
  } else if (byte == '#') {
    ReadInstance();
  } else if (IsLetter(byte) || byte == '!' || byte == '&') {
    ReadKeyword();
  } else if (byte == '.') {
    ReadPoint();
  } else if (IsDigit(byte) || byte == '+' || byte == '-') {
    ReadNumber();
  } else {
    token.kind = Other;
    Keep();
  }
  if (tooLong) FailLong();
  return token;
}

int StepScanner::Take() {
  int const byte = buffer.Take();
  if (byte == '\r' || (byte == '\n' && !afterReturn)) ++line;
  afterReturn = byte == '\r';
  return byte;
}

// Takes a byte of the token.
void StepScanner::Keep() {
  Append(Take());
}

void StepScanner::Append(int byte) {
  if (token.text.size() < TEXT_LIMIT) {
    token.text.push_back(static_cast<char>(byte));
  } else {
    tooLong = true;
  }
}

void StepScanner::SkipByteOrderMark() {
  for (int const byte : {0xEF, 0xBB, 0xBF}) {
    if (buffer.Peek() != byte) return;
    Take();
  }
}

bool StepScanner::SkipBlanksAndComments() {
  while (true) {
    int const byte = buffer.Peek();
    if (IsBlank(byte)) {
      Take();
    } else if (byte == '/') {
      long const began = line;
      Take();
      if (buffer.Peek() != '*') {
        token.kind = Other;
        token.line = began;
        token.begin = buffer.Offset() - 1;
        token.text = "/";
        return false;
      }
      SkipComment(began);
    } else {
      return true;
    }
  }
}

void StepScanner::SkipComment(long began) {
  Take();
  for (int byte = Take(); byte != StepBuffer::END; byte = Take()) {
    if (byte == '*' && buffer.Peek() == '/') {
      Take();
      return;
    }
  }
  FailUnended(began, "*/", "the comment");
}

void StepScanner::ReadString() {
  token.kind = String;
  Take();
  for (int byte = Take(); byte != StepBuffer::END; byte = Take()) {
    if (byte == '\'') {
      if (buffer.Peek() != '\'') return;
      Take();
    }
    if (!IsControl(byte) || byte == '\t') Append(byte);
  }
  FailUnended(token.line, "'", "the string");
}

void StepScanner::SkipString() {
  Take();
  for (int byte = Take(); byte != StepBuffer::END; byte = Take()) {
    // Of a doubled apostrophe the second half opens a string again.
    if (byte == '\'') return;
  }
  FailUnended(token.line, "'", "the string");
}

// Line ends may stand between the digits; at anything else a broken one ends, so that it swallows nothing.
void StepScanner::ReadBinary() {
  token.kind = Other;
  Keep();
  while (IsHexDigit(buffer.Peek()) || IsBlank(buffer.Peek())) {
    IsBlank(buffer.Peek()) ? static_cast<void>(Take()) : Keep();
  }
  if (buffer.Peek() == StepBuffer::END) FailUnended(token.line, "\"", "the binary");
  if (buffer.Peek() != '"') return;
  Keep();
  token.kind = Binary;
}

void StepScanner::ReadResource() {
  token.kind = Resource;
  do {
    Keep();
    if (buffer.Peek() == StepBuffer::END) FailUnended(token.line, ">", "the resource");
  } while (buffer.Peek() != '>');
  Keep();
}

void StepScanner::ReadInstance() {
  Keep();
  token.kind = IsDigit(buffer.Peek()) ? Instance : Other;
  while (IsDigit(buffer.Peek())) Keep();
}

void StepScanner::ReadKeyword() {
  Keep();
  while (IsWordByte(buffer.Peek())) Keep();
  token.kind = IsWordByte(static_cast<unsigned char>(token.text.back())) ? Keyword : Other;
}

// A point opens an enumeration or, in files that leave out the zero, a number.
void StepScanner::ReadPoint() {
  Keep();
  if (IsDigit(buffer.Peek())) {
    ReadNumber();
    return;
  }
  token.kind = Other;
  if (!IsLetter(buffer.Peek()) && buffer.Peek() != '_') return;
  while (IsWordByte(buffer.Peek())) Keep();
  if (buffer.Peek() != '.') return;
  Keep();
  token.kind = Enumeration;
}

// Reads on where only a sign, a point or nothing was taken.
void StepScanner::ReadNumber() {
  token.kind = Number;
  if (buffer.Peek() == '+' || buffer.Peek() == '-') Keep();
  bool digits = false;
  bool const fraction = !token.text.empty() && token.text[0] == '.';
  while (IsDigit(buffer.Peek())) {
    Keep();
    digits = true;
  }
  if (buffer.Peek() == '.' && !fraction) {
    Keep();
    while (IsDigit(buffer.Peek())) {
      Keep();
      digits = true;
    }
  }
  if (digits && (buffer.Peek() == 'E' || buffer.Peek() == 'e')) {
    Keep();
    if (buffer.Peek() == '+' || buffer.Peek() == '-') Keep();
    digits = IsDigit(buffer.Peek());
    while (IsDigit(buffer.Peek())) Keep();
  }
  if (!digits) token.kind = Other;
}

void StepScanner::FailUnended(long began, char const* end, char const* name) const {
  throw InputError{
      VREL_E_INVALID_FILE, began,
      std::string("expected ") + end + " at the end of " + name + " that begins here, found the end of the file"};
}

void StepScanner::FailLong() {
  throw InputError{VREL_E_INVALID_FILE, token.line,
                   "expected a value of at most 16 MiB, found a longer one that begins here"};
}

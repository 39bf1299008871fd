#include "StepScanner.h"

#include <cstdio>
#include <limits>

#include "StepError.h"

namespace {

// The C library's classes of characters follow the locale; these do not.
bool IsDigit(int byte) {
  return byte >= '0' && byte <= '9';
}
bool IsLetter(int byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
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

}  // namespace

StepScanner::StepScanner(ByteSource& bytes) : source(bytes) {}

std::string StepScanner::Token::Name() const {
  switch (kind) {
    case End:
      return "the end of the file";
    case String:
      return "a string";
    case Binary:
      return "a binary";
    case Other:
      break;
    default:
      return text;
  }
  int const byte = static_cast<unsigned char>(text[0]);
  if (byte > ' ' && byte < 0x7F) return text;
  char name[16];
  std::snprintf(name, sizeof name, "byte 0x%02X", static_cast<unsigned int>(byte));
  return name;
}

StepScanner::Token const& StepScanner::Next() {
  token.text.clear();
  if (!started) SkipByteOrderMark();
  started = true;
  // A slash that opens no comment is left behind in the token.
  if (!SkipBlanksAndComments()) return token;

  token.line = line;
  int const byte = source.Peek();
  if (byte == ByteSource::END) {
    token.kind = End;
  } else if (byte == '\'') {
    ReadString();
  } else if (byte == '"') {
    ReadEnclosed(Binary, '"', "the binary");
  } else if (byte == '<') {
    ReadEnclosed(Resource, '>', "the resource");
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
  return token;
}

int StepScanner::Take() {
  int const byte = source.Take();
  if (byte == '\r' || (byte == '\n' && !afterReturn)) ++line;
  afterReturn = byte == '\r';
  return byte;
}

// Takes a byte of the token; a long one is kept in part.
void StepScanner::Keep() {
  char const byte = static_cast<char>(Take());
  if (token.text.size() < TEXT_LIMIT) token.text.push_back(byte);
}

void StepScanner::SkipByteOrderMark() {
  for (int const byte : {0xEF, 0xBB, 0xBF}) {
    if (source.Peek() != byte) return;
    Take();
  }
}

bool StepScanner::SkipBlanksAndComments() {
  while (true) {
    int const byte = source.Peek();
    if (IsBlank(byte)) {
      Take();
    } else if (byte == '/') {
      std::size_t const began = line;
      Take();
      if (source.Peek() != '*') {
        token.kind = Other;
        token.line = began;
        token.text = "/";
        return false;
      }
      SkipComment(began);
    } else {
      return true;
    }
  }
}

void StepScanner::SkipComment(std::size_t began) {
  Take();
  for (int byte = Take(); byte != ByteSource::END; byte = Take()) {
    if (byte == '*' && source.Peek() == '/') {
      Take();
      return;
    }
  }
  FailUnended(began, "*/", "the comment");
}

void StepScanner::ReadString() {
  token.kind = String;
  Take();
  for (int byte = Take(); byte != ByteSource::END; byte = Take()) {
    if (byte == '\'') {
      if (source.Peek() != '\'') return;
      Take();
    }
    if (!IsControl(byte) || byte == '\t') token.text.push_back(static_cast<char>(byte));
  }
  FailUnended(token.line, "'", "the string");
}

void StepScanner::ReadEnclosed(Kind kind, char end, char const* name) {
  token.kind = kind;
  do {
    Keep();
    if (source.Peek() == ByteSource::END) FailUnended(token.line, std::string(1, end).c_str(), name);
  } while (source.Peek() != end);
  Keep();
}

void StepScanner::ReadInstance() {
  Keep();
  token.kind = IsDigit(source.Peek()) ? Instance : Other;
  token.id = 0;
  token.idFits = true;
  // Digit by digit: Gk_StringParser clips at 32 bits and VRELFloatUtil is exact up to 2^53, and ids that come out alike
  // would be taken for one.
  constexpr std::uint64_t MAXIMUM = std::numeric_limits<std::uint64_t>::max();
  while (IsDigit(source.Peek())) {
    std::uint64_t const digit = static_cast<std::uint64_t>(source.Peek() - '0');
    if (token.id > (MAXIMUM - digit) / 10) token.idFits = false;
    token.id = token.id * 10 + digit;
    Keep();
  }
}

void StepScanner::ReadKeyword() {
  Keep();
  while (IsWordByte(source.Peek())) Keep();
  token.kind = IsWordByte(static_cast<unsigned char>(token.text.back())) ? Keyword : Other;
}

// A point opens an enumeration or, in files that leave out the zero, a number.
void StepScanner::ReadPoint() {
  Keep();
  if (IsDigit(source.Peek())) {
    ReadNumber();
    return;
  }
  token.kind = Other;
  if (!IsLetter(source.Peek()) && source.Peek() != '_') return;
  while (IsWordByte(source.Peek())) Keep();
  if (source.Peek() != '.') return;
  Keep();
  token.kind = Enumeration;
}

// Reads on where only a sign, a point or nothing was taken.
void StepScanner::ReadNumber() {
  token.kind = Number;
  if (source.Peek() == '+' || source.Peek() == '-') Keep();
  bool digits = false;
  bool const fraction = !token.text.empty() && token.text[0] == '.';
  while (IsDigit(source.Peek())) {
    Keep();
    digits = true;
  }
  if (source.Peek() == '.' && !fraction) {
    Keep();
    while (IsDigit(source.Peek())) {
      Keep();
      digits = true;
    }
  }
  if (digits && (source.Peek() == 'E' || source.Peek() == 'e')) {
    Keep();
    if (source.Peek() == '+' || source.Peek() == '-') Keep();
    while (IsDigit(source.Peek())) Keep();
  }
  if (!digits) token.kind = Other;
}

void StepScanner::FailUnended(std::size_t began, char const* end, char const* name) const {
  throw StepError{
      VREL_E_INVALID_FILE, began,
      std::string("expected ") + end + " at the end of " + name + " that begins here, found the end of the file"};
}

// The scanner is a hand-written deterministic automaton with one byte of lookahead. It reads each byte once: tokens are
// collected in a buffer that is reused, and white space is counted in lines but not kept. Runs of bytes of one class
// are searched and copied as a whole, as far as the window extends.
//
// Two rules limit the damage of a missing apostrophe or a stray "<". A string that contains ";", a line end and "#12="
// in a row counts as unterminated: without this, two missing apostrophes would form one string over thousands of
// instances. A resource ends at a line end after ";".
#include "StepScanner.h"

#include <algorithm>
#include <cstdio>

#include "InputError.h"
#include "StepBytes.h"

namespace {

constexpr char kUnterminatedString[] = "expected \"'\" at the end of the string, found another instance";
constexpr std::size_t kSkipLimit = 1024;    // bytes
constexpr std::size_t kColumnLimit = 4096;  // bytes that are read to find the start of a line

// Recognizes ";", a line end and "#12=" in a row, with blanks between, in the bytes of a string.
class InstanceStart {
 public:
  // Returns whether the next byte matters; a semicolon always does.
  bool IsActive() const { return state != None; }
  // Returns whether the sequence is complete.
  bool Take(int byte) {
    switch (state) {
      case None:
        if (byte == ';') state = Semicolon;
        return false;
      case Semicolon:
        state = IsLineEnd(byte) ? Line : IsBlank(byte) ? Semicolon : byte == ';' ? Semicolon : None;
        return false;
      case Line:
        state = IsBlank(byte) ? Line : byte == '#' ? Sign : byte == ';' ? Semicolon : None;
        return false;
      case Sign:
        state = IsDigit(byte) ? Digits : byte == ';' ? Semicolon : None;
        return false;
      case Digits:
        if (byte == '=') return true;
        if (!IsDigit(byte)) state = byte == ';' ? Semicolon : byte == ' ' ? Blanks : None;
        return false;
      case Blanks:
        if (byte == '=') return true;
        if (byte != ' ') state = byte == ';' ? Semicolon : None;
        return false;
    }
    return false;
  }

 private:
  enum State { None, Semicolon, Line, Sign, Digits, Blanks };
  State state = None;
};

// Returns the text with a question mark for each byte that is not printable ASCII.
std::string Printable(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return text;
}

std::string Cut(std::string const& text) {
  return text.size() <= StepScanner::kNameLimit ? text : text.substr(0, StepScanner::kNameLimit) + "...";
}

}  // namespace

StepScanner::StepScanner(StepBuffer& bytes) : buffer(bytes) {}

std::string StepScanner::Token::Describe() const {
  switch (kind) {
    case End:
      return "end of file";
    case String:
      return "string";
    case Binary:
      return "binary";
    case Resource:
      return "'" + Printable(Cut(text)) + "'";
    case Other:
      break;
    default:
      return "'" + Cut(text) + "'";
  }
  int const byte = static_cast<unsigned char>(text[0]);
  if (byte > ' ' && byte < 0x7F) return "'" + Cut(text) + "'";
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

long StepScanner::Column() const {
  if (tokenLineBegin != kUnknown) return static_cast<long>(token.begin - tokenLineBegin) + 1;
  char bytes[kColumnLimit];
  std::size_t const count = std::min<unsigned long>(token.begin, kColumnLimit);
  std::size_t const found = buffer.ReadAt(token.begin - count, bytes, count);
  if (found != count) return 0;
  for (std::size_t i = count; i > 0; --i) {
    if (IsLineEnd(bytes[i - 1])) return static_cast<long>(count - i) + 1;
  }
  return count == token.begin ? static_cast<long>(count) + 1 : 0;
}

void StepScanner::Seek(Position position) {
  // A file that was truncated meanwhile ends before some positions.
  buffer.SetOffset(std::min(position.offset, buffer.Size()));
  line = position.line;
  lineBegin = kUnknown;
  afterReturn = false;
  started = true;
  token.kind = End;
  token.text.clear();
  token.begin = buffer.Offset();
  token.line = line;
  tokenLineBegin = kUnknown;
}

bool StepScanner::SkipTo(unsigned long offset) {
  if (line == 0 || afterReturn || !started || offset < buffer.Offset()) return false;
  std::string_view const window = buffer.Window();
  unsigned long const distance = offset - buffer.Offset();
  if (distance > std::min(window.size(), kSkipLimit)) return false;
  Seek({offset, line + CountLineEnds(window.data(), distance, false)});
  return true;
}

bool StepScanner::NextReference() {
  auto const isUnmarked = [](int byte) {
    return byte != '\'' && byte != '/' && byte != '#' && byte != ';' && !IsLineEnd(byte);
  };
  while (true) {
    SkipWhile(isUnmarked);
    token.text.clear();
    token.line = line;
    switch (buffer.Peek()) {
      case StepBuffer::kEnd:
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
        tokenLineBegin = kUnknown;
        ReadInstance();
        if (token.kind == Instance) return true;
        break;
      case ';':
        BeginToken();
        Keep();
        token.kind = Other;
        return false;
      default:
        Take();
    }
  }
}

StepScanner::Token const& StepScanner::Next() {
  token.text.clear();
  token.hasNul = false;
  isTooLong = false;
  if (!started) SkipByteOrderMark();
  started = true;
  // A slash that begins no comment is the token.
  if (!SkipBlanksAndComments()) return token;

  BeginToken();
  int const byte = buffer.Peek();
  if (byte == StepBuffer::kEnd) {
    token.kind = End;
  } else if (byte == '\'') {
    ReadString();
  } else if (byte == '"') {
    ReadBinary();
  } else if (byte == '<') {
    ReadResource();
  } else if (byte == '#') {
    ReadInstance();
  } else if (byte == '@') {
    ReadName();
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
  if (isTooLong) Fail("expected a value of at most 16 MiB, found a longer one");
  return token;
}

std::string StepScanner::ReadLinesBeforeEnd() {
  constexpr std::string_view kEndWord = "ENDSEC";
  std::string text;
  std::size_t matched = 0;  // bytes of kEndWord at the start of this line
  bool atLineBegin = true;
  // The rest of the line is not part of the content.
  while (IsBlank(buffer.Peek()) && !IsLineEnd(buffer.Peek())) Take();
  if (IsLineEnd(buffer.Peek())) Take();
  if (afterReturn && buffer.Peek() == '\n') Take();
  while (true) {
    int const byte = buffer.Peek();
    if (byte == StepBuffer::kEnd) break;
    if (atLineBegin && byte == kEndWord[matched]) {
      ++matched;
      if (matched == kEndWord.size()) {
        text.resize(text.size() - (matched - 1));
        Seek({buffer.Offset() - (matched - 1), line});
        break;
      }
    } else {
      matched = 0;
      atLineBegin = IsLineEnd(byte) || (atLineBegin && matched == 0 && IsBlank(byte));
    }
    if (text.size() == kTextLimit) Fail("expected a section of at most 16 MiB, found a longer one");
    bool const endsLine = byte == '\n' && afterReturn;
    Take();
    if (!endsLine) text += static_cast<char>(byte == '\r' ? '\n' : byte);
  }
  if (!text.empty() && text.back() != '\n') text += '\n';
  return text;
}

int StepScanner::Take() {
  int const byte = buffer.Take();
  if (byte == '\r' || byte == '\n') {
    if (byte == '\r' || !afterReturn) ++line;
    lineBegin = buffer.Offset();
  }
  afterReturn = byte == '\r';
  return byte;
}

// Takes a byte of the token.
void StepScanner::Keep() {
  char const byte = static_cast<char>(Take());
  Append({&byte, 1});
}

// Takes bytes of the token up to the first one that the predicate refuses. It refuses line ends.
template <class Predicate>
void StepScanner::KeepWhile(Predicate isKept) {
  while (true) {
    std::string_view const window = buffer.Window();
    std::size_t count = 0;
    while (count < window.size() && isKept(static_cast<unsigned char>(window[count]))) ++count;
    if (count == 0) return;
    Append(window.substr(0, count));
    buffer.Skip(count);
    afterReturn = false;
    if (count < window.size()) return;
  }
}

template <class Predicate>
void StepScanner::SkipWhile(Predicate isSkipped) {
  while (true) {
    std::string_view const window = buffer.Window();
    std::size_t count = 0;
    while (count < window.size() && isSkipped(static_cast<unsigned char>(window[count]))) ++count;
    if (count == 0) return;
    buffer.Skip(count);
    afterReturn = false;
    if (count < window.size()) return;
  }
}

void StepScanner::Append(std::string_view bytes) {
  std::size_t const free = kTextLimit - token.text.size();
  token.text.append(bytes.substr(0, free));
  if (bytes.size() > free) isTooLong = true;
}

void StepScanner::BeginToken() {
  token.line = line;
  token.begin = buffer.Offset();
  tokenLineBegin = lineBegin;
}

void StepScanner::SkipByteOrderMark() {
  for (int const byte : {0xEF, 0xBB, 0xBF}) {
    if (buffer.Peek() != byte) return;
    Take();
  }
  lineBegin = buffer.Offset();
}

bool StepScanner::SkipBlanksAndComments() {
  while (true) {
    int const byte = buffer.Peek();
    if (IsBlank(byte)) {
      Take();
    } else if (byte == '/') {
      BeginToken();
      Take();
      if (buffer.Peek() != '*') {
        token.kind = Other;
        token.text = "/";
        return false;
      }
      SkipComment();
    } else {
      return true;
    }
  }
}

void StepScanner::SkipComment() {
  Take();
  unsigned long const begin = buffer.Offset();
  auto const isOfComment = [](int byte) { return byte != '*' && !IsLineEnd(byte); };
  for (int byte = begin < noCommentEnd ? Take() : StepBuffer::kEnd; byte != StepBuffer::kEnd; byte = Take()) {
    if (byte == '*' && buffer.Peek() == '/') {
      Take();
      return;
    }
    SkipWhile(isOfComment);
  }
  noCommentEnd = std::min(noCommentEnd, begin);
  FailUnterminated("'*/'", "comment");
}

void StepScanner::ReadString() {
  token.kind = String;
  Take();
  InstanceStart start;
  auto const isOfString = [](int byte) { return byte != '\'' && byte != ';' && !IsControl(byte); };
  KeepWhile(isOfString);
  for (int byte = Take(); byte != StepBuffer::kEnd; byte = Take()) {
    if (byte == '\'') {
      if (buffer.Peek() != '\'') return;
      Take();
    }
    if ((byte == ';' || start.IsActive()) && start.Take(byte)) Fail(kUnterminatedString);
    if (IsControl(byte) && byte != '\t') {
      if (byte != 0) continue;
      token.hasNul = true;
    }
    char const kept = static_cast<char>(byte);
    Append({&kept, 1});
    if (!start.IsActive()) KeepWhile(isOfString);
  }
  FailUnterminated("\"'\"", "string");
}

void StepScanner::SkipString() {
  BeginToken();
  Take();
  auto const isOfString = [](int byte) { return byte != '\'' && !IsLineEnd(byte); };
  SkipWhile(isOfString);
  for (int byte = Take(); byte != StepBuffer::kEnd; byte = Take()) {
    // The second of two apostrophes opens a string again.
    if (byte == '\'') return;
    SkipWhile(isOfString);
  }
  FailUnterminated("\"'\"", "string");
}

// Line ends may be between the digits. Any other byte ends the token, so that an unterminated one is short.
void StepScanner::ReadBinary() {
  token.kind = Other;
  Keep();
  while (IsHexDigit(buffer.Peek()) || IsBlank(buffer.Peek())) {
    IsBlank(buffer.Peek()) ? static_cast<void>(Take()) : Keep();
  }
  if (buffer.Peek() == StepBuffer::kEnd) FailUnterminated("'\"'", "binary");
  if (buffer.Peek() != '"') return;
  Keep();
  token.kind = Binary;
}

void StepScanner::ReadResource() {
  token.kind = Resource;
  int last = 0;
  do {
    last = buffer.Peek();
    Keep();
    if (buffer.Peek() == StepBuffer::kEnd) FailUnterminated("'>'", "resource");
    if (last == ';' && IsLineEnd(buffer.Peek())) Fail("expected '>' at the end of the resource, found end of line");
  } while (buffer.Peek() != '>');
  Keep();
}

// An instance name or the name of a constant.
void StepScanner::ReadInstance() {
  Keep();
  token.kind = IsDigit(buffer.Peek()) ? Instance : IsLetter(buffer.Peek()) ? Name : Other;
  if (token.kind == Instance) KeepWhile(IsDigit);
  if (token.kind == Name) KeepWhile([](int byte) { return IsDigit(byte) || IsLetter(byte); });
}

void StepScanner::ReadName() {
  ReadInstance();
  if (token.kind == Instance) token.kind = Name;
}

void StepScanner::ReadKeyword() {
  Keep();
  KeepWhile(IsWordByte);
  token.kind = IsWordByte(static_cast<unsigned char>(token.text.back())) ? Keyword : Other;
}

// A point begins an enumeration or, in files that omit the zero, a number.
void StepScanner::ReadPoint() {
  Keep();
  if (IsDigit(buffer.Peek())) {
    ReadNumber();
    return;
  }
  token.kind = Other;
  if (!IsLetter(buffer.Peek())) return;
  KeepWhile(IsWordByte);
  if (buffer.Peek() != '.') return;
  Keep();
  token.kind = Enumeration;
}

// Requires: at most a sign or a point was taken.
void StepScanner::ReadNumber() {
  token.kind = Number;
  if (buffer.Peek() == '+' || buffer.Peek() == '-') Keep();
  bool digits = IsDigit(buffer.Peek());
  bool const fraction = !token.text.empty() && token.text[0] == '.';
  KeepWhile(IsDigit);
  if (buffer.Peek() == '.' && !fraction) {
    Keep();
    digits = digits || IsDigit(buffer.Peek());
    KeepWhile(IsDigit);
  }
  if (digits && (buffer.Peek() == 'E' || buffer.Peek() == 'e')) {
    Keep();
    if (buffer.Peek() == '+' || buffer.Peek() == '-') Keep();
    digits = IsDigit(buffer.Peek());
    KeepWhile(IsDigit);
  }
  if (!digits) token.kind = Other;
}

void StepScanner::Fail(std::string const& text) const {
  throw InputError{VREL_E_INVALID_FILE, token.line, text, Column()};
}

void StepScanner::FailUnterminated(char const* end, char const* name) const {
  Fail(std::string("expected ") + end + " at the end of the " + name + ", found end of file");
}

// Lexical scanner for ISO 10303-21 clear text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "StepBuffer.h"
#include "StepInstanceText.h"

// Splits bytes into tokens and skips white space, line ends (LF, CR LF, CR), comments and a UTF-8 byte order mark. A
// byte that begins no token is returned as a token of kind Other, because only the parser knows what it expects.
//
//   StepScanner scanner(buffer);
//   while (scanner.Next().kind != StepScanner::End) Use(scanner.Current());
//
// Memory: the longest token, at most kTextLimit bytes.
// Errors: InputError (VREL_E_INVALID_FILE) after a longer token, at the end of the file for an unterminated comment,
// string, binary or resource, and where a string cannot be terminated: it contains a semicolon, a line end and the
// beginning of an instance ("#12=") in a row, as happens when an apostrophe is missing. Line and column are those where
// the token begins. The scanner can continue afterwards.
class StepScanner {
 public:
  enum Kind {
    End,          // of the file
    Keyword,      // FILE_NAME, !USER_DEFINED, ISO-10303-21, &SCOPE
    Instance,     // #12
    Name,         // @12, #PI, @PI
    String,       // 'text'
    Number,       // 1, -2.5E+3
    Enumeration,  // .T.
    Binary,       // "0F3"
    Resource,     // <http://...>
    Other         // one byte, such as ( ) , ; = $ * { } /, or an incomplete token of the kinds above
  };

  struct Token {
    Kind kind = End;
    bool hasNul = false;      // a string with zero bytes, which `text` contains
    long line = 1;            // of the first byte, from 1
    unsigned long begin = 0;  // offset of the first byte
    std::string text;         // as in the file; of a string what is between its apostrophes: doubled ones reduced,
                              // without control bytes except tab and NUL, escapes kept

    bool Is(Kind other, char const* otherText) const { return kind == other && text == otherText; }
    bool Is(char symbol) const { return kind == Other && text.size() == 1 && text[0] == symbol; }
    // Returns how an error message names the token: "end of file", "string", "'#12'". Longer than kNameLimit bytes, it
    // is cut and ends with "...".
    std::string Describe() const;
    // Returns the digits of an instance name without leading zeros.
    std::string_view Digits() const;
  };

  // A position to return to.
  struct Position {
    unsigned long offset = 0;
    long line = 0;
  };

  static constexpr std::size_t kTextLimit = 16 * 1024 * 1024;
  static constexpr std::size_t kNameLimit = 60;

  explicit StepScanner(StepBuffer& buffer);

  // Advances to the next token; at the end of the file it stays there. The reference is valid until the next call.
  Token const& Next();
  Token const& Current() const { return token; }
  Position CurrentPosition() const { return {token.begin, token.line}; }

  // Returns the offset of the next byte to read.
  unsigned long Offset() const noexcept { return buffer.Offset(); }
  // Returns the line of that byte.
  long Line() const noexcept { return line; }
  // Returns the column of the current token. After Seek it is found by reading backwards, up to a limit; 0 if unknown.
  long Column() const;
  // Continues at a token, which the next call of Next returns. Until then there is no current token.
  void Seek(Position position);

  // Does the same for a token that follows in the window, at a short distance, and counts the line ends before it.
  // Returns false, and does nothing, if it is not there or the present line is unknown (0).
  bool SkipTo(unsigned long offset);

  // Returns the bytes from the next one to the end of the window, for StepInstanceText; null if a line end may be
  // divided there.
  char const* Ahead() { return afterReturn || !started ? nullptr : buffer.Block().data(); }
  // Skips what was read from Ahead. There is no current token afterwards.
  void Skip(StepInstanceText const& text) {
    unsigned long const offset = buffer.Offset();
    if (text.Lines() != 0) lineBegin = offset + text.LineBegin();
    line += text.Lines();
    buffer.Skip(text.Size());
    token.kind = End;
    token.text.clear();
    token.begin = offset + text.Size();
    token.line = line;
    tokenLineBegin = kUnknown;
  }

  // Advances to the next instance name before the next semicolon, skipping everything else; strings are not decoded.
  // Requires: the instance was read before; syntax errors are not detected. Returns false, with the semicolon or the
  // end of the file as the current token, if there is none.
  bool NextReference();

  // Returns the lines, from the next one on, up to one that begins with ENDSEC, and makes that word the next token.
  // Each line ends with a line feed. Errors: InputError for more than kTextLimit bytes.
  std::string ReadLinesBeforeEnd();

 private:
  static constexpr unsigned long kUnknown = ~0UL;

  int Take();
  void Keep();
  template <class Predicate>
  void KeepWhile(Predicate isKept);
  template <class Predicate>
  void SkipWhile(Predicate isSkipped);
  void Append(std::string_view bytes);
  void BeginToken();
  void SkipByteOrderMark();
  bool SkipBlanksAndComments();
  void SkipComment();
  void SkipString();
  void ReadString();
  void ReadBinary();
  void ReadResource();
  void ReadInstance();
  void ReadName();
  void ReadKeyword();
  void ReadPoint();
  void ReadNumber();
  [[noreturn]] void Fail(std::string const& text) const;
  [[noreturn]] void FailUnterminated(char const* end, char const* name) const;

  StepBuffer& buffer;
  Token token;
  unsigned long tokenLineBegin = 0;  // offset of the first byte of the token's line, or kUnknown
  long line = 1;
  unsigned long lineBegin = 0;  // offset of the first byte of the line; kUnknown after Seek
  // No comment ends at or after this offset: the rest of the file is not searched again for the end of one.
  unsigned long noCommentEnd = kUnknown;
  bool afterReturn = false;  // the last byte was CR, so that a following LF ends the same line
  bool started = false;
  bool isTooLong = false;  // the current token has more bytes than were kept
};

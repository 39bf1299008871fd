// The words of an ISO 10303-21 clear text file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "StepBuffer.h"

// Splits bytes into tokens and passes over white space, line ends (LF, CR LF, CR), comments and a UTF-8 byte order
// mark. What no rule knows comes out as a token of kind Other: only who reads the tokens can say what was expected.
//
//   StepScanner scanner(buffer);
//   while (scanner.Next().kind != StepScanner::End) Use(scanner.Current());
//
// Needs no more memory than the longest token, which has at most TEXT_LIMIT bytes. Throws InputError
// (VREL_E_INVALID_FILE) behind a longer one, and at the end of the file for what begins and does not end: a comment, a
// string, a binary, a resource; its line is the one where it began. The scanner can go on from there.
class StepScanner {
 public:
  enum Kind {
    End,          // of the file
    Keyword,      // FILE_NAME, !USER_DEFINED, ISO-10303-21, &SCOPE
    Instance,     // #12
    String,       // 'text'
    Number,       // 1, -2.5E+3
    Enumeration,  // .T.
    Binary,       // "0F3"
    Resource,     // <http://...>
    Other         // one byte, ( ) , ; = / $ * among them, or a broken piece of the kinds above
  };

  struct Token {
    Kind kind = End;
    long line = 1;            // where it begins, counted from 1
    unsigned long begin = 0;  // the place of its first byte in the file
    // As it stands. Of a string what is between its apostrophes: doubled ones made one, no control bytes but the tab,
    // escapes as they stand.
    std::string text;

    bool Is(Kind other, char const* otherText) const { return kind == other && text == otherText; }
    bool Is(char symbol) const { return kind == Other && text.size() == 1 && text[0] == symbol; }
    // How an error message names it: "the end of the file", "a string", "#12"; the first NAME_LIMIT bytes.
    std::string Name() const;
    // Of an instance, the digits without zeros in front.
    std::string_view Digits() const;
  };

  static constexpr std::size_t TEXT_LIMIT = 16 * 1024 * 1024;
  static constexpr std::size_t NAME_LIMIT = 60;

  explicit StepScanner(StepBuffer& buffer);

  // Goes to the next token; at the end of the file it stays there. The reference is valid until the next call.
  Token const& Next();
  Token const& Current() const { return token; }

  // How far it has read.
  unsigned long Offset() const noexcept { return buffer.Offset(); }
  // Goes back to a token, by its begin and line; Next gives it. Until then the current token is void.
  void Seek(unsigned long offset, long lineThere);

  // Goes to the next instance name in front of the next semicolon; what is between is passed over, the texts of strings
  // unread. For an instance that was read before: what breaks the format is not told. False, with the semicolon or the
  // end of the file as the current token, where there is none.
  bool NextReference();

 private:
  int Take();
  void Keep();
  void Append(int byte);
  void SkipByteOrderMark();
  bool SkipBlanksAndComments();
  void SkipComment(long began);
  void SkipString();
  void ReadString();
  void ReadBinary();
  void ReadResource();
  void ReadInstance();
  void ReadKeyword();
  void ReadPoint();
  void ReadNumber();
  [[noreturn]] void FailUnended(long began, char const* end, char const* name) const;
  [[noreturn]] void FailLong();

  StepBuffer& buffer;
  Token token;
  long line = 1;
  bool afterReturn = false;  // the last byte was CR: an LF behind it ends the same line
  bool started = false;
  bool tooLong = false;  // the current token had more bytes than are kept
};

// The words of an ISO 10303-21 clear text file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "ByteSource.h"

// Splits bytes into tokens and passes over white space, line ends (LF, CR LF, CR), comments and a UTF-8 byte order
// mark. What no rule knows comes out as a token of kind Other: only who reads the tokens can say what was expected.
//
//   StepScanner scanner(source);
//   while (scanner.Next().kind != StepScanner::End) Use(scanner.Current());
//
// Needs no more memory than the longest string. Throws StepError (VREL_E_INVALID_FILE) for what begins and does not
// end: a comment, a string, a binary, a resource; its line is the one where it began.
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
    std::size_t line = 1;  // where it begins, counted from 1
    // A string's text: no enclosing apostrophes, doubled ones made one, no control bytes but the tab, escapes as they
    // stand. Of other tokens the first bytes as they stand, at most TEXT_LIMIT.
    std::string text;
    std::uint64_t id = 0;  // of an instance
    bool idFits = true;    // whether the id is below 2 to the power of 64

    bool Is(Kind other, char const* otherText) const { return kind == other && text == otherText; }
    bool Is(char symbol) const { return kind == Other && text.size() == 1 && text[0] == symbol; }
    // How an error message names it: "the end of the file", "a string", "#12".
    std::string Name() const;
  };

  static constexpr std::size_t TEXT_LIMIT = 60;

  explicit StepScanner(ByteSource& source);

  // Goes to the next token; at the end of the file it stays there. The reference is valid until the next call.
  Token const& Next();
  Token const& Current() const { return token; }

 private:
  int Take();
  void Keep();
  void SkipByteOrderMark();
  bool SkipBlanksAndComments();
  void SkipComment(std::size_t began);
  void ReadString();
  void ReadEnclosed(Kind kind, char end, char const* name);
  void ReadInstance();
  void ReadKeyword();
  void ReadPoint();
  void ReadNumber();
  [[noreturn]] void FailUnended(std::size_t began, char const* end, char const* name) const;

  ByteSource& source;
  Token token;
  std::size_t line = 1;
  bool afterReturn = false;  // the last byte was CR: an LF behind it ends the same line
  bool started = false;
};

// Parser for the records of ISO 10303-21 clear text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "DocumentVisitor.h"
#include "StepScanner.h"

class StepReferences;
class StepText;

// Recursive structure is parsed with an explicit stack, so that no depth of lists exhausts the stack of the thread.
//
// Each Read function begins at the current token of the scanner and ends at the token after what it read, except that
// ReadInstance and ReadEntry end at the semicolon.
// Errors: InputError (VREL_E_INVALID_FILE) for a syntax error.
class StepParser {
 public:
  // `resolved` decides which references are defined; null for all.
  // Ownership: nothing is owned.
  StepParser(StepScanner& tokens, StepText& decoder, StepReferences const* resolved = nullptr)
      : scanner(tokens), strings(decoder), references(resolved) {}

  // Reads an instance after its "=": one record, or several in parentheses. Returns whether there are parentheses.
  bool ReadInstance(DocumentVisitor& visitor);
  // Returns the bytes of an instance after its "=" up to the semicolon, if they are in the usual form, which begins
  // where the scanner was sent, and ends before `limit`; otherwise 0. The scanner does not move.
  std::size_t FindUsualInstance(std::size_t limit) const;
  // Reads those bytes. The scanner is after the semicolon then.
  // Requires: FindUsualInstance returned their number.
  void ReadUsualInstance(DocumentVisitor& visitor);

  // Reads TYPE(...), or (...) without a type.
  void ReadRecord(DocumentVisitor& visitor);
  // Reads an entry of an ANCHOR or REFERENCE section: NAME=VALUE{TAG:VALUE}...;
  void ReadEntry(DocumentVisitor& visitor);

  bool AtSymbol(char symbol) const { return scanner.Current().Is(symbol); }
  bool AtWord(char const* word) const { return scanner.Current().Is(StepScanner::Keyword, word); }
  // Skips the symbol. `after` says what it follows, for the message.
  void Expect(char symbol, std::string_view after);
  // Skips a keyword and its semicolon.
  void ExpectWord(char const* word);
  // Throws "expected EXPECTED, found TOKEN" for the current token.
  [[noreturn]] void Fail(std::string const& expected) const;

  // Returns the id that an instance token names; valid until the scanner advances.
  static DocumentVisitor::Id IdOf(StepScanner::Token const& token);
  // Returns the offset of its first digit after leading zeros.
  static unsigned long DigitsOffset(StepScanner::Token const& token);

  // How deep lists may be nested.
  static constexpr std::size_t kDepthLimit = 10'000'000;

 private:
  enum class Nested : char { Record, List, Typed, Braces };

  void ReadParameters(DocumentVisitor& visitor);
  void ReadNested(DocumentVisitor& visitor);
  bool BeginNested(DocumentVisitor& visitor);
  void BeginBraces(DocumentVisitor& visitor);
  void BeginTyped(DocumentVisitor& visitor);
  void EndNested(DocumentVisitor& visitor);
  void ReadValue(DocumentVisitor& visitor);
  void ReadText(DocumentVisitor& visitor);

  StepScanner& scanner;
  StepText& strings;
  StepReferences const* references;
  std::vector<Nested> open;  // what is open inside a record or an entry; a member so that its memory is reused
};

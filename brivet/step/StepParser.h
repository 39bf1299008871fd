// The grammar of an ISO 10303-21 clear text file.
#pragma once

#include <string_view>

#include "DocumentVisitor.h"
#include "StepScanner.h"

class StepIds;

// Reads the records of a file and hands what it reads to a visitor. Lists inside lists are counted, not descended
// into, so that no depth exhausts the stack.
//
// Each Read... begins at the current token of the scanner and leaves the token behind what it read as the current one,
// but ReadInstance stays on the semicolon. Throws InputError (VREL_E_INVALID_FILE) for what breaks the format.
class StepParser {
 public:
  // The ids tell which references lead to an instance; null for all. Not owned.
  explicit StepParser(StepScanner& words, StepIds const* ids = nullptr) : scanner(words), defined(ids) {}

  // An instance behind its "=": one record, or several in parentheses, up to the semicolon. Tells whether there were
  // parentheses.
  bool ReadInstance(DocumentVisitor& visitor);
  // TYPE(...), or (...) alone.
  void ReadRecord(DocumentVisitor& visitor);

  bool AtSymbol(char symbol) const { return scanner.Current().Is(symbol); }
  bool AtWord(char const* word) const { return scanner.Current().Is(StepScanner::Keyword, word); }
  void Expect(char symbol, std::string_view behind);
  // A word of the format, with its semicolon.
  void ExpectWord(char const* word);
  [[noreturn]] void Fail(std::string const& expected) const;

  // The id that an instance token names; good until the scanner goes on.
  static DocumentVisitor::Id IdOf(StepScanner::Token const& token);

  // How deep lists may lie in each other.
  static constexpr std::size_t DEPTH_LIMIT = 10'000'000;

 private:
  void ReadParameters(DocumentVisitor& visitor);
  void ReadValue(DocumentVisitor& visitor);
  void ReadText(DocumentVisitor& visitor);

  StepScanner& scanner;
  StepIds const* defined;
};

// The reader behind StepSummary::Read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "StepScanner.h"
#include "StepSummary.h"
#include "VRELHashList.h"

// Walks the tokens of one file once, section by section. Lists inside lists are counted and scopes inside scopes
// kept on a list, not descended into, so that no depth exhausts the stack. Each Read... begins at the current token and
// leaves the token behind what it read as the current one.
class StepReader {
 public:
  explicit StepReader(ByteSource& source);

  // The three steps of Read, each to be called once and in this order. They throw as StepSummary::Read does.
  //
  // Up to the end of the header.
  void ReadHeader();
  // Whether the header has all that it must have.
  void CheckHeader() const;
  // The rest, to the end of the exchange structure.
  void ReadSections();
  // What is known of the file so far; taken from the reader by Read.
  StepSummary const& Summary() const { return summary; }

  StepSummary Read();

 private:
  void ReadHeaderEntity(StepSummary::HeaderEntity& entity);
  void ReadHeaderParameter(StepSummary::Parameter& parameter);
  void ReadHeaderText(StepSummary::Parameter& parameter);
  void SkipSection();
  void ReadData();
  void ReadInstances();
  void OpenInstance();
  void CloseScope();
  void ReadRecords();
  void ReadParameters();

  VRELString ReadText();
  bool AtSymbol(char symbol) const { return scanner.Current().Is(symbol); }
  bool AtWord(char const* word) const { return scanner.Current().Is(StepScanner::Keyword, word); }
  void Expect(char symbol, std::string_view behind);
  void ExpectWord(char const* word);
  [[noreturn]] void Fail(std::string const& expected) const;

  StepScanner scanner;
  StepSummary summary;
  VRELHashList<std::uint64_t> ids;
  std::string place;
};

// Parser for the structure of ISO 10303-21 clear text, with error recovery.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Gk_ErrMgr.h"
#include "InputError.h"
#include "Progress.h"
#include "StepBuffer.h"
#include "StepContents.h"
#include "StepDiagnostics.h"
#include "StepEntityPool.h"
#include "StepEntityReader.h"
#include "StepLines.h"
#include "StepLosses.h"
#include "StepParser.h"
#include "StepRecovery.h"
#include "StepReferences.h"
#include "StepScanner.h"
#include "StepTypes.h"

class VRELFileHeader;

// Reads a file from the first byte to the last: the opening, the header, each section with its entries or instances,
// the end. What breaks the format is reported, added to the losses and left out; reading resumes after it. The records
// of instances are checked and counted, but not stored.
//
// The functions are called in this order: ReadOpening, NextHeaderEntity until false, NextDataSection until false, and
// within a data section NextInstance until null; the entity that was returned is read before the next call.
class StepStructure {
 public:
  // What the functions read from and add to.
  // Ownership: nothing is owned.
  struct Parts {
    StepBuffer& buffer;
    StepScanner& scanner;
    StepParser& parser;
    StepContents& contents;
    StepReferences& references;
    StepLines& lines;
    StepTypes& types;
    StepDiagnostics& diagnostics;
    StepLosses& losses;
  };

  explicit StepStructure(Parts const& documentParts);

  // Errors: InputError if the file is not ISO 10303-21 clear text.
  void ReadOpening();

  // Finds the next entity of the header. Returns false at the end of the header.
  bool NextHeaderEntity(StepScanner::Position& begin);
  // Reads that entity.
  // Errors: a failure after a report.
  VRINResult ReadHeaderEntity(StepScanner::Position begin, VRELFileHeader& header);
  std::vector<StepScanner::Position> const& HeaderEntities() const noexcept { return headerEntities; }

  // Adds the next data section to the contents. Returns false at the end of the file.
  bool NextDataSection();
  // Returns the next instance of the data section, or null at its end.
  // Ownership: the caller's; the memory is that of this object, which must outlive the instance.
  StepEntityReader* NextInstance(VRELBufferHandle& buffer, Progress* progress) {
    if (ended) return nullptr;
    if (progress != nullptr && parts.contents.Count() % kProgressInterval == 0) {
      progress->Done(static_cast<long>(scanner.Offset()));
    }
    Gk_ErrMgr::checkAbort();
    if (!hasPendingToken && openScopes.empty()) {
      StepEntityReader* const entity = ReadUsualInstance(buffer);
      if (entity != nullptr) return entity;
    }
    return NextOtherInstance(buffer);
  }
  // Reads the records of that instance.
  // Errors: a failure after a report.
  VRINResult ReadInstance(StepEntityReader& entity) {
    if (entity.IsRead()) return VREL_S_OK;
    if (entity.Offset() != aheadBegin) return ReadOtherInstance(entity);
    aheadBegin = ~0UL;
    parts.references.CountRead();
    parts.types.Count(aheadType);
    entity.SetType(aheadType, false);
    ++(isAheadComplex ? complex : simple);
    return VREL_S_OK;
  }

  bool IsEnded() const noexcept { return ended; }
  long SimpleCount() const noexcept { return simple; }
  long ComplexCount() const noexcept { return complex; }
  long EscapedCount() const noexcept { return escaped; }
  // Removes an instance from the counts.
  // Requires: the instance was read.
  void RemoveFromCounts(std::uint32_t instance);

  // Goes to the token at a position and makes it the current one.
  void GoTo(StepScanner::Position position);

 private:
  using Part = StepRecovery::Part;
  static constexpr std::uint32_t kProgressInterval = 4096;  // instances

  void Advance();
  void CheckEmpty();
  void FindHeader(InputError const& error);
  void Lose(InputError const& error, StepScanner::Position begin, Part part, char const* what,
            std::string const& instance = "");
  void Resume(StepScanner::Position position);
  StepScanner::Position FindResumption(StepScanner::Position begin, Part part);
  void MarkIncomplete(std::string const& expected, std::string const& consequence);
  bool EndsAnySection() const;
  bool EndsSection(char const* content);
  bool SkipHeading(char const* word);
  void CheckHeader(long line);
  void BeginData();
  void BeginDataWithoutHeading();
  void ReadSectionParameters();
  void ReadEntries();
  void ReadEntry(StepContents::Section& section);
  void ReadSignature();
  void EndExchange();
  bool SkipSemicolon();
  void ReadTrailingSignatures();
  StepEntityReader* NextOtherInstance(VRELBufferHandle& buffer);
  StepEntityReader* ReadUsualInstance(VRELBufferHandle& buffer);
  bool ReadUsualRecords(StepInstanceText& text);
  VRINResult ReadOtherInstance(StepEntityReader& entity);
  StepEntityReader* ReadInstanceName(VRELBufferHandle& buffer);
  StepEntityReader* LeaveScope(VRELBufferHandle& buffer);
  StepEntityReader* MakeEntity(std::uint64_t number, StepScanner::Position begin, VRELBufferHandle& buffer) {
    parts.contents.AddInstance();
    parts.references.Add(number);
    parts.lines.Add(begin.line);
    lastBegin = begin;
    return new (entityMemory) StepEntityReader(buffer, parts.contents.StoreNumber(number), begin.offset);
  }
  void LoseScopes();

  Parts parts;
  StepEntityPool entityMemory;
  StepScanner& scanner;
  StepParser& parser;
  StepRecovery recovery;
  std::vector<StepScanner::Position> headerEntities;
  std::vector<std::string> missingEntities{"FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA"};  // of the header
  std::vector<std::uint64_t> openScopes;  // numbers of the instances around the current one
  StepScanner::Position pieceBegin;       // of what is being read
  unsigned long rescanned = 0;            // bytes that were read again after errors
  long simple = 0;
  long complex = 0;
  StepScanner::Position lastBegin;  // of the records of the last instance
  // The instance that was read ahead: its record has been checked.
  unsigned long aheadBegin = ~0UL;
  bool isAheadComplex = false;
  std::uint32_t aheadType = 0;
  long escaped = 0;              // strings of the data sections with escapes
  bool hasPendingToken = false;  // the current token is still to be read
  bool ended = false;            // the end of the exchange structure was reached
};

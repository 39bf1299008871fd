// Reads ISO 10303-21 clear text.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Document.h"
#include "StepBuffer.h"
#include "StepIds.h"
#include "StepParser.h"
#include "StepDiagnostics.h"
#include "StepReferrers.h"
#include "StepScanner.h"
#include "StepTypes.h"
#include "VRELString.h"

class StepDataSection;
class StepEntityReader;
struct InputError;

// A STEP file as a document: one header section, any number of data sections with simple and complex instances. The
// file is read through a window, from front to back: once by the walk, once by Resolve, and once or more by each
// description, which needs Resolve. Memory grows with the number of instances, by less than 100 bytes each, and with
// the header, but not with the length of the file.
//
// Sections of other kinds (ANCHOR, REFERENCE, SIGNATURE) are passed over with a warning. An instance with a scope
// stands behind the instances of its scope.
class StepFormatReader final : public Document {
 public:
  StepFormatReader(VRELFileHandle const& document, std::string shownName);
  ~StepFormatReader() override;

  VRINResult Open() override;
  VRELSectionReader* GetNextDataSection() override;
  // Reports references to nothing, as warnings, and ids that two instances have, as errors. VREL_E_INVALID_FILE for the
  // latter.
  VRINResult Resolve() override;

  VRELFileHeader& GetFileHeader() override { return header; }
  VRINResult GetState() const override;
  long GetFailedCount() const override { return failed; }
  long GetSectionCount() const override { return static_cast<long>(dataSections.size()); }
  long GetInstanceCount() const override { return simple + complex; }
  long GetComplexCount() const override { return complex; }
  std::size_t GetTypeCount() const override { return types.Size(); }
  std::string GetTypeName(std::size_t type) const override { return types.Name(type); }
  long GetTypeInstanceCount(std::size_t type) const override { return types.Instances(type); }
  VRINResult DescribeHeader(DocumentVisitor& visitor) override;
  VRINResult Describe(DocumentVisitor& visitor, Progress& receiver, bool withReferrers) override;
  long GetEscapedCount() const override { return escaped; }
  VRINResult DescribeEscaped(DocumentVisitor& visitor) override;

  // For the sections and entities of this document.

  // The next entity of the header and of the section that is being walked; null at its end.
  VRELEntityReader* ReadNextHeaderEntity();
  StepEntityReader* ReadNextInstance();
  VRINResult ReadInstance(StepEntityReader& entity);

 private:
  struct Place {
    unsigned long begin = 0;
    long line = 0;
  };
  struct Section {
    StepDataSection* entities;
    std::uint32_t first;  // its first instance, counted through the document
    Place parameters;     // of the section itself; begins at 0 if there are none
  };
  using NoteReference = std::function<void(std::uint32_t source, std::uint32_t target)>;

  void Advance();
  void GoTo(Place place);
  void Skip(bool instancesServe);
  bool SkipToken(bool instancesServe);
  bool EndsAnySection() const;
  void LeaveOutScopes();
  bool PassHeading(char const* word);
  void LeaveOut(InputError const& error, std::string const& what);
  void ReadOpening();
  VRINResult ReadHeaderEntity(Place place);
  void CheckHeader(long line);
  VRELSectionReader* ReadData();
  Place ReadSectionParameters();
  void PassSection();
  void EndExchange();
  bool IsSemicolonNext();
  bool EndsSection(char const* word);
  StepEntityReader* ReadInstanceName();
  StepEntityReader* LeaveScope();
  StepEntityReader* MakeEntity(std::uint64_t number);
  std::uint32_t EndOf(std::size_t section) const;
  StepEntityReader& EntityAt(std::uint32_t instance) const;
  void WalkReferences(NoteReference const& note);
  void IndexIds();
  std::string DigitsAt(std::uint64_t place) const;
  VRINResult GetResolved() const;
  std::string NameAt(std::uint32_t instance) const;
  void TellMissing(std::uint32_t source);
  void DescribeParameters(Section const& section, DocumentVisitor& visitor);
  void DescribeInstance(std::uint32_t instance, DocumentVisitor& visitor, bool withReferrers);
  VRINResult TellChange(InputError const& error);
  DocumentVisitor::Id IdAt(std::uint32_t instance, std::string& digits) const;
  void Tell(unsigned long done);

  VRELFileHeader header;
  StepDiagnostics problems;
  StepTypes types;
  StepIds ids;
  StepBuffer* bytes = nullptr;  // the buffer
  std::unique_ptr<StepScanner> scanner;
  std::unique_ptr<StepParser> parser;
  std::unique_ptr<StepReferrers> referrers;  // made by Resolve
  std::vector<Place> headerRecords;
  std::vector<std::string> missing{"FILE_DESCRIPTION", "FILE_NAME", "FILE_SCHEMA"};  // of the header
  std::vector<Section> sections;
  std::vector<std::uint64_t> openScopes;  // the ids of the instances around them
  long simple = 0;
  long complex = 0;
  long failed = 0;
  long escaped = 0;         // texts of the data sections with escapes
  long repeated = 0;        // ids that an earlier instance has
  bool waiting = false;     // the current token was looked at and is still to be read
  bool ended = false;       // the walk over the data is over
  bool incomplete = false;  // the file breaks off, or sections were passed over
  bool opened = false;
};

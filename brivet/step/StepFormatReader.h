// Reader of ISO 10303-21 clear text.
#pragma once

#include <memory>
#include <string>

#include "Document.h"
#include "StepBuffer.h"
#include "StepContents.h"
#include "StepDiagnostics.h"
#include "StepLosses.h"
#include "StepParser.h"
#include "StepReferences.h"
#include "StepScanner.h"
#include "StepStructure.h"
#include "StepText.h"
#include "StepTypes.h"

class StepEntityReader;
class VRELOptions;
struct InputError;

// A STEP file as a document: a header section and any number of data sections with simple and complex instances.
// StepStructure reads it, StepReferences links it; this class connects them and describes the result.
//
// The file is read through a window from the first byte to the last: once while it is traversed, once by Resolve, and
// once or more by each description, which needs Resolve.
// Memory: about 60 bytes per instance, 65 with the product model without geometry, and the header; it does not depend
// on the length of the file.
//
// The sections of edition 3 (ANCHOR, REFERENCE, SIGNATURE) are described as they are. An instance with a scope follows
// the instances of its scope.
class StepFormatReader final : public Document {
 public:
  // `shownName` is how messages name the document. `givenOptions` may be null.
  // Ownership: the options are not owned and are used by Open only.
  StepFormatReader(VRELFileHandle const& document, std::string shownName, VRELOptions* givenOptions = nullptr);
  ~StepFormatReader() override;

  VRINResult Open() override;
  VRELSectionReader* GetNextDataSection() override;
  // Builds the references. Those to nothing are reported as warnings. If two instances have the same id, that is an
  // error; but in a document with losses the second one is lost too, because it may be the result of the damage.
  // Errors: VREL_E_INVALID_FILE for the former.
  VRINResult Resolve() override;

  VRELFileHeader& GetFileHeader() override { return header; }
  VRINResult GetState() const override;
  long GetFailedCount() const override { return lossRecord.Count(); }
  long GetSectionCount() const override { return contents.DataSectionCount(); }
  long GetInstanceCount() const override;
  long GetComplexCount() const override;
  std::size_t GetTypeCount() const override { return types.Size(); }
  std::string GetTypeName(std::size_t type) const override { return types.Name(type); }
  long GetTypeInstanceCount(std::size_t type) const override { return types.Instances(type); }
  VRINResult DescribeHeader(DocumentVisitor& visitor) override;
  VRINResult Describe(DocumentVisitor& visitor, Progress& receiver, bool withReferrers) override;
  long GetEscapedCount() const override;
  VRINResult DescribeEscaped(DocumentVisitor& visitor) override;
  ProductModel const* GetModel(bool geometry, Progress& receiver) override;

  // For the sections and entities of this document: the next entity of the header or of the current data section, or
  // null at its end, and their content.
  VRELEntityReader* ReadNextHeaderEntity();
  VRINResult ReadHeaderEntity(StepScanner::Position begin) { return structure->ReadHeaderEntity(begin, header); }
  StepEntityReader* ReadNextInstance() { return structure->NextInstance(buffer, progress); }
  // Returns about how many instances follow those that were read.
  long EstimateRest(long instances) const;
  VRINResult ReadInstance(StepEntityReader& entity) { return structure->ReadInstance(entity); }

 private:
  VRINResult SetEncoding();
  void CreateParts();
  void ReportDangling(std::uint32_t source);
  void HandleDuplicate(std::uint32_t instance, std::uint32_t first);
  void DescribeSection(StepContents::Section const& section, DocumentVisitor& visitor, Progress& receiver,
                       bool withReferrers, bool onlyEscaped);
  VRINResult DescribeSections(DocumentVisitor& visitor, Progress& receiver, bool withReferrers, bool onlyEscaped);
  void DescribeOtherSection(StepContents::Section const& section, DocumentVisitor& visitor);
  void DescribeInstance(std::uint32_t instance, DocumentVisitor& visitor, bool withReferrers);
  void BuildModel(bool geometry, Progress& receiver, ProductModel& built);
  VRINResult ReportChange(InputError const& error);

  VRELOptions* const options;
  VRELFileHeader header;
  StepDiagnostics diagnostics;
  StepTypes types;
  StepContents contents;
  StepLosses lossRecord;
  StepText strings;
  StepBuffer* bytes = nullptr;  // the buffer of the base class
  std::unique_ptr<StepScanner> scanner;
  std::unique_ptr<StepLines> lines;
  std::unique_ptr<StepReferences> references;
  std::unique_ptr<StepParser> parser;
  std::unique_ptr<StepStructure> structure;
  long duplicates = 0;  // errors: instances with the id of an earlier one
  bool isOpen = false;
  std::unique_ptr<ProductModel> model;
  bool hasGeometry = false;  // the model has polylines and meshes
};

// Document as the driver and the writing modules see it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Loss.h"
#include "VRELFileHeader.h"
#include "VRELFormatReader.h"

class DocumentVisitor;
class Progress;
struct ProductModel;

// Base class of the documents that reading modules provide. The driver reads a document once, with a VRELReader:
//
//   VRELReader reader(document);
//   reader.ReadHeaderSection();
//   reader.ReadDataSection();
//   reader.Resolve();
//
// After that the document can be described any number of times.
//
// Errors are reported on the channels VRELError and VRELWarning, with file and line. An instance that cannot be read is
// lost, and reading continues after it. Operations call Gk_ErrMgr::checkAbort at each instance.
class Document : public VRELFormatReader {
 public:
  using VRELFormatReader::VRELFormatReader;

  // Opens the file and prepares it for reading.
  //
  // Errors: VREL_E_FILE_NOT_FOUND, VREL_E_FILE_OPEN, VREL_E_INVALID_FILE.
  virtual VRINResult Open() = 0;

  // Returns what the document says about itself; empty until ReadHeaderSection.
  virtual VRELFileHeader& GetFileHeader() = 0;

  // Returns the result of reading: VREL_S_OK; VREL_S_PARTIAL if something was lost; a failure if there is nothing to
  // describe, or if what there is cannot be trusted.
  virtual VRINResult GetState() const = 0;
  // Returns the number of parts that could not be read. The counts below do not include them.
  virtual long GetFailedCount() const = 0;
  virtual long GetSectionCount() const = 0;
  virtual long GetInstanceCount() const = 0;
  // Returns the number of instances with several records.
  virtual long GetComplexCount() const = 0;

  // Returns what was lost, in the order of the lines; empty if and only if GetState is not VREL_S_PARTIAL or a failure
  // of reading. Beyond 100,000 losses the last entry covers all that follow.
  std::vector<Loss> const& GetLosses() const noexcept { return losses; }
  // Adds a loss that the driver has found, such as damaged compressed data. Its lines are 0. Call it after reading.
  void AddLoss(Loss const& loss) { losses.push_back(loss); }
  // Returns the number of references to instances that the document does not contain; 0 before Resolve.
  long GetDanglingCount() const noexcept { return danglingCount; }

  // The types of the instances, numbered from 0 in the order of their first instances. The type of a complex instance
  // consists of those of its records: "(A B)".
  virtual std::size_t GetTypeCount() const = 0;
  virtual std::string GetTypeName(std::size_t type) const = 0;
  virtual long GetTypeInstanceCount(std::size_t type) const = 0;

  // Passes the records of the header to the visitor: as far as the format has them FILE_DESCRIPTION, FILE_NAME and
  // FILE_SCHEMA, with the parameters of ISO 10303-21. Only a document that names a schema in FILE_SCHEMA, or that was
  // read from a STEP file, can be written as STEP.
  virtual VRINResult DescribeHeader(DocumentVisitor& visitor) = 0;
  // Passes all data sections to the visitor. With `referrers` each instance is followed by the instances that refer to
  // it, which takes another pass over the file, or several if there are very many references.
  //
  // Errors: VREL_E_INVALID_FILE, after a report, if the file is no longer what was read; VREL_E_FAIL before Resolve.
  virtual VRINResult Describe(DocumentVisitor& visitor, Progress& receiver, bool referrers) = 0;

  // Returns the number of strings of the data sections with escapes. A format without escapes has none.
  virtual long GetEscapedCount() const { return 0; }
  // Passes the sections and the records that contain such strings to the visitor, as Describe does. May be called
  // before Resolve, but then no reference counts as defined.
  virtual VRINResult DescribeEscaped(DocumentVisitor& /*visitor*/) { return VREL_S_OK; }

  // Returns the product model, which takes a pass over the document at the first call; null for a format that has none.
  // With `geometry` it contains polylines and meshes. Ownership: the document owns the model; a call with another
  // argument replaces it.
  //
  // Errors: null after a report if the file is no longer what was read; then GetModelResult returns a failure, which is
  // the result of the writing module.
  // Requires: the document was read. It need not be resolved.
  virtual ProductModel const* GetModel(bool /*geometry*/, Progress& /*receiver*/) { return nullptr; }
  // Returns the result of the last GetModel: VREL_S_OK, also for a format without models, or VREL_E_INVALID_FILE.
  VRINResult GetModelResult() const noexcept { return modelResult; }

  // Sets where reading reports its progress; null for none.
  // Ownership: the caller keeps it.
  void SetProgress(Progress* receiver) noexcept { progress = receiver; }

 protected:
  Progress* progress = nullptr;
  std::vector<Loss> losses;
  long danglingCount = 0;
  VRINResult modelResult = VREL_S_OK;
};

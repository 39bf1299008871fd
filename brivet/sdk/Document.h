// A document as the driver and the writing modules see it.
#pragma once

#include <cstddef>
#include <string>

#include "VRELFileHeader.h"
#include "VRELFormatReader.h"

class DocumentVisitor;
class Progress;

// What a module that reads derives from. The driver reads it with a VRELReader, once:
//
//   VRELReader reader(document);
//   reader.ReadHeaderSection();
//   reader.ReadDataSection();
//   reader.Resolve();
//
// and after that the document can be described any number of times. Problems go out on the channels VRELError and
// VRELWarning, with file and line; an instance that cannot be read is left out, and the reading goes on behind it.
// Operations poll Gk_ErrMgr for an abort at each instance.
class Document : public VRELFormatReader {
 public:
  using VRELFormatReader::VRELFormatReader;

  // Opens the file and gets ready for the walk. Failures: VREL_E_FILE_NOT_FOUND, VREL_E_FILE_OPEN,
  // VREL_E_INVALID_FILE.
  virtual VRINResult Open() = 0;

  // What the document says about itself. Filled by the walk over the header.
  virtual VRELFileHeader& GetFileHeader() = 0;

  // What came of the walk: VREL_S_OK; VREL_S_PARTIAL if something was left out; a failure if there is nothing to
  // describe or what there is cannot be trusted.
  virtual VRINResult GetState() const = 0;
  // How many of the document's instances could not be read; they are not among those that follow.
  virtual long GetFailedCount() const = 0;
  virtual long GetSectionCount() const = 0;
  virtual long GetInstanceCount() const = 0;
  // Of those, how many have several records.
  virtual long GetComplexCount() const = 0;

  // The types of the instances, in the order in which they first came; from 0 on. A complex instance's type is made of
  // those of its records: "(A B)".
  virtual std::size_t GetTypeCount() const = 0;
  virtual std::string GetTypeName(std::size_t type) const = 0;
  virtual long GetTypeInstanceCount(std::size_t type) const = 0;

  // The records of the header.
  virtual VRINResult DescribeHeader(DocumentVisitor& visitor) = 0;
  // All data sections. VREL_E_INVALID_FILE, and an error, if the file is no longer what was read;
  // VREL_E_FAIL for a document that was not resolved. With `referrers` each instance is followed by those that refer to
  // it, which costs another pass over the file (more, where references are so many that memory would grow with them).
  virtual VRINResult Describe(DocumentVisitor& visitor, Progress& receiver, bool referrers) = 0;

  // How many texts in the data sections hold escapes, and the records around them as Describe tells them, no others;
  // neither needs Resolve, without which no reference counts as defined. A format without escapes has none.
  virtual long GetEscapedCount() const { return 0; }
  virtual VRINResult DescribeEscaped(DocumentVisitor& /*visitor*/) { return VREL_S_OK; }

  // Where the walk tells how far it is; null for nowhere. Not owned.
  void SetProgress(Progress* receiver) noexcept { progress = receiver; }

 protected:
  Progress* progress = nullptr;
};

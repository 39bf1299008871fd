// Walks through a document.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;

// Failures of the walks, which have no message of their own: there is no format reader, no header section, no data
// section, and no entity in the last section.
constexpr long VREL_E_READER_NO_FORMAT = 0x1000091;
constexpr long VREL_E_READER_NO_HEADER = 0x1000092;
constexpr long VREL_E_READER_NO_DATA = 0x1000093;
constexpr long VREL_E_READER_NO_ENTITY = 0x1000094;

// Drives the format reader of a module through its document.
//
//   VRELReader reader(VRELFormatReaderHandle(new StepReader(file)));
//   reader.ReadHeaderSection();
//   VRINResult const result = reader.ReadDataSection();
//   if (result.IsSuccess()) reader.Resolve();
//   for (VRELEntityReader* entity : reader.GetDataEntityList()) ...
//
// A reader is good for one walk through the header and one through the data: a second finds no section.
//
// No walk stops at an entity that fails, and what it gives speaks only for the last section. A section starts as
// VREL_E_READER_NO_ENTITY. In the data walk each entity's result replaces that, so that the last one counts; in the
// header walk it is folded in by &=, where the failure that a section starts with stays. That the header walk thus
// gives a failure even where all went well is promised. Exceptions pass through.
class VREL_EXPORT VRELReader : public VRELReferenceCount {
 public:
  // The handle may be invalid.
  VRELReader(VRELFormatReaderHandle reader);
  ~VRELReader() override;

  // Reads the entities of all header sections.
  VRINResult ReadHeaderSection();
  // Lets the format reader and each of its data sections prepare themselves, whatever comes of that, and reads the
  // entities of all data sections.
  VRINResult ReadDataSection();
  // What the format reader's Resolve() gives; VREL_E_READER_NO_FORMAT without one.
  VRINResult Resolve();

  // The entities of all sections, whether they were read or not; none without a format reader. They stay their owner's.
  VRELDynamicArray<VRELEntityReader*> GetHeaderEntityList();
  VRELDynamicArray<VRELEntityReader*> GetDataEntityList();

 private:
  VRELFormatReaderHandle formatReader;
};

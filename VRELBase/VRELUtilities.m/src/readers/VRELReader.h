// Traversal of a document.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;

// Results of VRELReader. They have no message of their own.
constexpr long VREL_E_READER_NO_FORMAT = 0x1000091;  // there is no format reader
constexpr long VREL_E_READER_NO_HEADER = 0x1000092;  // there is no header section
constexpr long VREL_E_READER_NO_DATA = 0x1000093;    // there is no data section
constexpr long VREL_E_READER_NO_ENTITY = 0x1000094;  // the last section has no entity

// Reader of a document: traverses the sections and entities of a format reader.
//
//   VRELReader reader(VRELFormatReaderHandle(new StepReader(file)));
//   reader.ReadHeaderSection();
//   VRINResult const result = reader.ReadDataSection();
//   if (result.IsSuccess()) reader.Resolve();
//   for (VRELEntityReader* entity : reader.GetDataEntityList()) ...
//
// The header and the data can each be read once; a second traversal finds no section. An entity that fails does not end
// the traversal, and the result describes the last section only. To find failed entities, check them one by one.
//
// Errors: exceptions of the derived readers are rethrown.
class VREL_EXPORT VRELReader : public VRELReferenceCount {
 public:
  // `reader` may be invalid.
  VRELReader(VRELFormatReaderHandle reader);
  ~VRELReader() override;

  // Reads the entities of all header sections. Returns VREL_E_READER_NO_ENTITY, combined by &= with the results of the
  // entities of the last section.
  //
  // Errors: VREL_E_READER_NO_FORMAT, VREL_E_READER_NO_HEADER.
  // Compatibility: combining keeps the initial failure, so that the result is a failure even if all entities succeed.
  VRINResult ReadHeaderSection();
  // Calls PreprocessData() of the format reader and PreProcess() of each data section, ignoring their results, and
  // reads the entities of all data sections. Returns the result of the last entity of the last section.
  //
  // Errors: VREL_E_READER_NO_FORMAT, VREL_E_READER_NO_DATA, VREL_E_READER_NO_ENTITY.
  VRINResult ReadDataSection();
  // Returns the result of Resolve() of the format reader, or VREL_E_READER_NO_FORMAT.
  VRINResult Resolve();

  // Return the entities of all sections, read or not; empty without a format reader. The entities are not owned.
  VRELDynamicArray<VRELEntityReader*> GetHeaderEntityList();
  VRELDynamicArray<VRELEntityReader*> GetDataEntityList();

 private:
  VRELFormatReaderHandle formatReader;
};

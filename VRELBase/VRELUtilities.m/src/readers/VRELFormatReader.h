// Base of the readers of documents.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;
class VRELSectionReader;

// Base of the reader of a document: header sections and data sections with their entities. A format module derives from
// it, opens the document, sets `buffer` and fills the two lists. VRELReader traverses it.
//
//   class NumberFormat : public VRELFormatReader {
//    public:
//     explicit NumberFormat(VRELFileHandle const& document) : VRELFormatReader(document) {
//       buffer = VRELBufferHandle(new VRELBuffer(document));
//       dataSections.add(&numbers);
//     }
//     ...
//
// Ownership: the lists do not own their sections. The destructor empties them; the derived class deletes the sections.
class VREL_EXPORT VRELFormatReader : public VRELReferenceCount {
 public:
  // Stores the handle. Does not open the file.
  VRELFormatReader(VRELFileHandle const& file);
  VRELFormatReader(VRELFormatReader const&) = delete;
  VRELFormatReader& operator=(VRELFormatReader const&) = delete;
  ~VRELFormatReader() override;

  // Return the next section of the list, or null at the end of the list or if `buffer` is invalid. The positions are
  // never reset, so that each list can be traversed once.
  virtual VRELSectionReader* GetNextHeaderSection();
  virtual VRELSectionReader* GetNextDataSection();

  // Hook that runs before the data sections are read. The base class returns VREL_E_NOT_IMPLEMENTED.
  virtual VRINResult PreprocessData();
  // Links the entities after reading. The base class returns VREL_E_NOT_IMPLEMENTED.
  virtual VRINResult Resolve();

  // Return the entities of all sections, section by section, in a new array. The traversal positions do not change.
  VRELDynamicArray<VRELEntityReader*> GetDataEntityList();
  VRELDynamicArray<VRELEntityReader*> GetHeaderEntityList();
  // Return the entities of the given sections. Null sections are skipped.
  VRELDynamicArray<VRELEntityReader*> GetDataEntityList(VRELDynamicArray<VRELSectionReader*>& sections);
  VRELDynamicArray<VRELEntityReader*> GetHeaderEntityList(VRELDynamicArray<VRELSectionReader*>& sections);

 protected:
  VRELFileHandle file;
  VRELBufferHandle buffer;
  VRELDynamicArray<VRELSectionReader*> headerSections;

 private:
  int nextHeaderSection = 0;

 protected:
  VRELDynamicArray<VRELSectionReader*> dataSections;

 private:
  VRELSectionReader* GetNext(VRELDynamicArray<VRELSectionReader*>& sections, int& next) const;

  int nextDataSection = 0;
};

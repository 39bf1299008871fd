// Base of the readers of sections.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;
class VRELFormatReader;

// Base of the reader of a section. A format module derives from it and fills `entityList`.
//
//   class Numbers : public VRELSectionReader {
//    public:
//     explicit Numbers(VRELBufferHandle document) : VRELSectionReader(document) { entityList.add(&first); }
//     ...
//
// Ownership: the list does not own its entities. The destructor empties it; the derived class deletes the entities.
class VREL_EXPORT VRELSectionReader : public VRELReferenceCount {
 public:
  // `buffer` contains the data of the section. It may be invalid.
  VRELSectionReader(VRELBufferHandle buffer);
  VRELSectionReader(VRELSectionReader const&) = delete;
  VRELSectionReader& operator=(VRELSectionReader const&) = delete;
  ~VRELSectionReader() override;

  // Returns the next entity, or null at the end of the list. The position is never reset, so that the list can be
  // traversed once.
  //
  // Compatibility: returns the entities even if `buffer` is invalid, unlike VRELFormatReader.
  virtual VRELEntityReader* GetNextKey();
  // Hook that runs before the entities of a data section are read. The base class returns VREL_E_NOT_IMPLEMENTED.
  virtual VRINResult PreProcess(VRELFormatReader* reader);

  int GetEntityReaderCount() const noexcept { return entityList.size(); }
  // Returns the list. The result shares its storage with the list of the section.
  VRELDynamicArray<VRELEntityReader*> GetEntityList() const { return entityList; }

 protected:
  VRELBufferHandle buffer;
  VRELDynamicArray<VRELEntityReader*> entityList;

 private:
  int nextEntity = 0;
};

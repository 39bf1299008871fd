// Reads one section of a document.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;
class VRELFormatReader;

// The frame of what a format module makes for each section of its format. The module's class fills the list with
// entity readers, which stay its own: the destructor here empties the list and deletes none of them.
class VREL_EXPORT VRELSectionReader : public VRELReferenceCount {
 public:
  // Where the section's data lies; a section without it serves all the same.
  VRELSectionReader(VRELBufferHandle buffer);
  VRELSectionReader(VRELSectionReader const&) = delete;
  VRELSectionReader& operator=(VRELSectionReader const&) = delete;
  ~VRELSectionReader() override;

  // The next entity of the list, null at its end; good for one walk, since nothing rewinds it. That a section without
  // a buffer gives out its entities too is promised, other than VRELFormatReader does with its sections.
  virtual VRELEntityReader* GetNextKey();
  // A hook that runs before the entities of a data section are read; VREL_E_NOT_IMPLEMENTED here.
  virtual VRINResult PreProcess(VRELFormatReader* reader);

  int GetEntityReaderCount() const noexcept { return entityList.size(); }
  // The list itself: it shares its storage with what is given out.
  VRELDynamicArray<VRELEntityReader*> GetEntityList() const { return entityList; }

 protected:
  VRELBufferHandle buffer;
  VRELDynamicArray<VRELEntityReader*> entityList;

 private:
  int nextEntity = 0;
};

// Reads one document of a format.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELDynamicArray.h"
#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELEntityReader;
class VRELSectionReader;

// The frame of what a format module makes for a document: header sections and data sections, each with its entities.
// The module's class opens the document, sets the buffer and fills the two lists with section readers, which stay its
// own: the destructor here empties the lists and deletes none of them. VRELReader walks through it.
class VREL_EXPORT VRELFormatReader : public VRELReferenceCount {
 public:
  // Opens nothing.
  VRELFormatReader(VRELFileHandle const& file);
  VRELFormatReader(VRELFormatReader const&) = delete;
  VRELFormatReader& operator=(VRELFormatReader const&) = delete;
  ~VRELFormatReader() override;

  // The next section of the list; null at its end, and as long as there is no buffer. Good for one walk each, since
  // nothing rewinds them.
  virtual VRELSectionReader* GetNextHeaderSection();
  virtual VRELSectionReader* GetNextDataSection();

  // A hook that runs before the data sections are read; VREL_E_NOT_IMPLEMENTED here.
  virtual VRINResult PreprocessData();
  // The step after reading, in which a format links what was read; VREL_E_NOT_IMPLEMENTED here.
  virtual VRINResult Resolve();

  // The entities of all sections, section by section, in a new array. The walks do not notice. The readers stay their
  // owner's.
  VRELDynamicArray<VRELEntityReader*> GetDataEntityList();
  VRELDynamicArray<VRELEntityReader*> GetHeaderEntityList();
  // The same for any sections; null ones are passed over.
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

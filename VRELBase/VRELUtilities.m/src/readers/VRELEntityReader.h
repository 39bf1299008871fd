// Reads one entity of a document.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELSectionReader;

// The frame of what a format module makes for each entity of its format. The module's class fills the protected fields.
class VREL_EXPORT VRELEntityReader : public VRELReferenceCount {
 public:
  // Where the entity's data lies; may be invalid.
  VRELEntityReader(VRELBufferHandle& buffer);
  ~VRELEntityReader() override;

  // Reads the entity's data.
  virtual VRINResult ReadEntity() = 0;
  // A hook for the format's own use, which no walk calls; VREL_E_NOT_IMPLEMENTED here.
  virtual VRINResult Proprocess(VRELSectionReader* section);
  // The id of the entity in its document. Always VREL_S_OK here.
  virtual VRINResult GetEntityId(int& id) const;
  // The name of the entity's type; empty here.
  virtual VRELString GetEntityType() const;
  virtual bool IsEntityRoot() const;

 protected:
  int entityId = 0;
  bool entityRoot = false;
  VRELBufferHandle buffer;
};

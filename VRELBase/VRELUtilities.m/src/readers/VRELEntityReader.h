// Base of the readers of entities.
#pragma once

#include "VRELBufferHandle.h"
#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELSectionReader;

// Base of the reader of one entity. A format module derives from it for the entities of its format and sets the
// protected fields.
//
//   class Number : public VRELEntityReader {
//    public:
//     Number(VRELBufferHandle& document, int id) : VRELEntityReader(document) { entityId = id; }
//     VRINResult ReadEntity() override;
//   };
class VREL_EXPORT VRELEntityReader : public VRELReferenceCount {
 public:
  // `buffer` contains the data of the entity. It may be invalid.
  VRELEntityReader(VRELBufferHandle& buffer);
  ~VRELEntityReader() override;

  // Reads the data of the entity.
  virtual VRINResult ReadEntity() = 0;
  // Hook for format modules; VRELReader does not call it. The base class returns VREL_E_NOT_IMPLEMENTED.
  virtual VRINResult Proprocess(VRELSectionReader* section);
  // Stores the id of the entity in the document and returns VREL_S_OK.
  virtual VRINResult GetEntityId(int& id) const;
  // Returns the name of the entity type. The base class returns an empty string.
  virtual VRELString GetEntityType() const;
  virtual bool IsEntityRoot() const;

 protected:
  int entityId = 0;
  bool entityRoot = false;
  VRELBufferHandle buffer;
};

// Abstract reader of the byte at a position.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

// Base class of readers with random access to bytes, through a block of memory that the derived class fills. Passed as
// VRELBufferHandlerHandle. VRELBufferFileHandler is the implementation for files.
//
//   unsigned char byte = 0;
//   if (handler->GetChar(512, byte).IsSuccess()) ...
class VREL_EXPORT VRELBufferHandler : public VRELReferenceCount {
 public:
  // Creates a reader without a block.
  VRELBufferHandler();
  VRELBufferHandler(VRELBufferHandler const&) = delete;
  VRELBufferHandler& operator=(VRELBufferHandler const&) = delete;
  // Deletes the block with delete[].
  ~VRELBufferHandler() override;

  // Reads the byte at a position, counted from 0. On failure `value` is unchanged.
  virtual VRINResult GetChar(long position, unsigned char& value) = 0;

 protected:
  char* buffer = nullptr;
};

// Reads the byte at a position.
#pragma once

#include "VRELExport.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

// The frame of what gives out bytes by their positions, through a block of memory that a derived class fills. It is
// passed around as a VRELBufferHandlerHandle.
class VREL_EXPORT VRELBufferHandler : public VRELReferenceCount {
 public:
  // No block.
  VRELBufferHandler();
  VRELBufferHandler(VRELBufferHandler const&) = delete;
  VRELBufferHandler& operator=(VRELBufferHandler const&) = delete;
  // Releases the block by delete[].
  ~VRELBufferHandler() override;

  // The byte at a position, counted from 0. A failure leaves `value` as it was.
  virtual VRINResult GetChar(long position, unsigned char& value) = 0;

 protected:
  char* buffer = nullptr;
};

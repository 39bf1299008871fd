// The typed reader that a format module derives from.
#pragma once

#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELBufferHandler;
class VRELString;

// Reads the values of a format from a file. What a number or a line looks like is up to the format: every operation
// here does nothing and gives VREL_E_FAIL, and a format module overrides those that it needs. It is passed around as a
// VRELBufferHandle.
class VREL_EXPORT VRELBuffer : public VRELReferenceCount {
 public:
  VRELBuffer(VRELFileHandle const& file);
  // Releases the file and nothing else.
  ~VRELBuffer() override;

  virtual VRINResult IsValid();
  virtual VRINResult ReadString(VRELString& text, int length);
  virtual VRINResult ReadChar(char& value);
  virtual VRINResult ReadUChar(unsigned char& value);
  virtual VRINResult ReadWideChar(wchar_t& value);
  virtual VRINResult ReadShort(short& value);
  virtual VRINResult ReadInt(int& value);
  virtual VRINResult ReadUInt(unsigned int& value);
  virtual VRINResult ReadDouble(double& value);
  virtual VRINResult ReadLong(long& value);
  virtual VRINResult ReadULong(unsigned long& value);
  virtual VRINResult ReadLine(VRELString& line);
  virtual VRINResult SetOffset(unsigned long offset);
  virtual VRINResult GetOffset(unsigned long& offset);

 protected:
  VRELFileHandle file;
  // For the derived class, which owns what it puts here.
  VRELBufferHandler* handler = nullptr;
};

// Abstract typed reader of a file format.
#pragma once

#include "VRELExport.h"
#include "VRELFileHandle.h"
#include "VRELReferenceCount.h"
#include "VRINResult.h"

class VRELBufferHandler;
class VRELString;

// Base class of the typed readers that format modules implement. Every operation here does nothing and returns
// VREL_E_FAIL; a format overrides those that it supports, and defines byte order and line ends. Buffers are passed as
// VRELBufferHandle.
//
//   class BinaryBuffer : public VRELBuffer {
//    public:
//     using VRELBuffer::VRELBuffer;
//     VRINResult ReadInt(int& value) override;
//   };
class VREL_EXPORT VRELBuffer : public VRELReferenceCount {
 public:
  VRELBuffer(VRELFileHandle const& file);
  // Releases the file. Does not delete the handler.
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
  // For the derived class, which owns the object.
  VRELBufferHandler* handler = nullptr;
};

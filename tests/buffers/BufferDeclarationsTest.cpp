// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELBuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "VRELBufferFileHandler.h"
#include "VRELBufferFileHandlerHandle.h"
#include "VRELBufferHandle.h"
#include "VRELBufferHandlerHandle.h"
#include "VRELFileHandle.h"
#include "VRELString.h"

namespace {

static_assert(IsDeclared<VRINResult (VRELBuffer::*)()>(&VRELBuffer::IsValid));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(VRELString&, int)>(&VRELBuffer::ReadString));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(char&)>(&VRELBuffer::ReadChar));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(unsigned char&)>(&VRELBuffer::ReadUChar));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(wchar_t&)>(&VRELBuffer::ReadWideChar));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(short&)>(&VRELBuffer::ReadShort));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(int&)>(&VRELBuffer::ReadInt));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(unsigned int&)>(&VRELBuffer::ReadUInt));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(double&)>(&VRELBuffer::ReadDouble));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(long&)>(&VRELBuffer::ReadLong));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(unsigned long&)>(&VRELBuffer::ReadULong));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(VRELString&)>(&VRELBuffer::ReadLine));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(unsigned long)>(&VRELBuffer::SetOffset));
static_assert(IsDeclared<VRINResult (VRELBuffer::*)(unsigned long&)>(&VRELBuffer::GetOffset));

static_assert(IsDeclared<VRINResult (VRELBufferHandler::*)(long, unsigned char&)>(&VRELBufferHandler::GetChar));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)(long, unsigned char&)>(&VRELBufferFileHandler::GetChar));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)()>(&VRELBufferFileHandler::IsBufferValid));
static_assert(
    IsDeclared<VRINResult (VRELBufferFileHandler::*)(unsigned long)>(&VRELBufferFileHandler::IsPointerPositionValid));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)(unsigned long)>(
    &VRELBufferFileHandler::AdvanceFilePointerPosition));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)()>(&VRELBufferFileHandler::FillBuffer));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)()>(&VRELBufferFileHandler::AllocateBuffer));
static_assert(IsDeclared<VRINResult (VRELBufferFileHandler::*)()>(&VRELBufferFileHandler::DecideFileBufferSize));

static_assert(std::is_base_of_v<VRELReferenceCount, VRELBuffer>);
static_assert(std::is_base_of_v<VRELReferenceCount, VRELBufferHandler>);
static_assert(std::is_base_of_v<VRELBufferHandler, VRELBufferFileHandler>);
static_assert(std::is_abstract_v<VRELBufferHandler>);
static_assert(!std::is_abstract_v<VRELBuffer>);
static_assert(std::is_constructible_v<VRELBuffer, VRELFileHandle const&>);
static_assert(std::is_constructible_v<VRELBufferFileHandler, VRELFileHandle const&>);
static_assert(std::is_constructible_v<VRELBufferHandle, VRELBuffer*>);
static_assert(std::is_constructible_v<VRELBufferHandlerHandle, VRELBufferHandler*>);
static_assert(std::is_constructible_v<VRELBufferFileHandlerHandle, VRELBufferFileHandler*>);

// A reader with the fields of VRELBuffer.
class Buffer : public VRELBuffer {
 public:
  using VRELBuffer::VRELBuffer;
  std::ptrdiff_t FileOffset() const { return reinterpret_cast<char const*>(&file) - Begin(); }
  std::ptrdiff_t HandlerOffset() const { return reinterpret_cast<char const*>(&handler) - Begin(); }

 private:
  char const* Begin() const { return reinterpret_cast<char const*>(this); }
};

TEST(BufferDeclarationsTest, FieldsByOffset) {
  VRELFileHandle const none;
  Buffer const buffer(none);
  EXPECT_EQ(buffer.FileOffset(), static_cast<std::ptrdiff_t>(sizeof(VRELReferenceCount)));
  EXPECT_EQ(buffer.HandlerOffset(), static_cast<std::ptrdiff_t>(sizeof(VRELReferenceCount) + sizeof(VRELFileHandle)));
  EXPECT_EQ(sizeof(VRELBuffer), sizeof(VRELReferenceCount) + sizeof(VRELFileHandle) + sizeof(void*));
}

}  // namespace

#include "VRELBuffer.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "VRELBufferHandle.h"
#include "VRELBufferHandler.h"
#include "VRELString.h"
#include "VirtualSlot.h"

namespace {

// Gives access to the protected members.
class OpenBuffer : public VRELBuffer {
 public:
  using VRELBuffer::file;
  using VRELBuffer::handler;
  using VRELBuffer::VRELBuffer;
};

TEST(VRELBufferTest, VirtualSlots) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELBuffer>);
  EXPECT_EQ(SlotOf(&VRELBuffer::IsValid), 5U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadString), 6U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadChar), 7U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadUChar), 8U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadWideChar), 9U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadShort), 10U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadInt), 11U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadUInt), 12U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadDouble), 13U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadLong), 14U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadULong), 15U);
  EXPECT_EQ(SlotOf(&VRELBuffer::ReadLine), 16U);
  EXPECT_EQ(SlotOf(&VRELBuffer::SetOffset), 17U);
  EXPECT_EQ(SlotOf(&VRELBuffer::GetOffset), 18U);
}

TEST(VRELBufferTest, HasFileAndNullHandler) {
  VRELFileHandle const file(new VRELFile("wheel.dat"));
  {
    OpenBuffer const buffer(file);
    EXPECT_EQ(buffer.file, file);
    EXPECT_EQ(buffer.handler, nullptr);
    EXPECT_EQ(file->GetReferenceCount(), 2U);
  }
  EXPECT_EQ(file->GetReferenceCount(), 1U);
}

TEST(VRELBufferTest, EveryOperationFails) {
  VRELBuffer buffer{VRELFileHandle()};
  EXPECT_EQ(buffer.GetName(), nullptr);
  EXPECT_EQ(buffer.IsValid(), 0x1000001);
  VRELString text("text");
  EXPECT_EQ(buffer.ReadString(text, 4), 0x1000001);
  EXPECT_EQ(buffer.ReadLine(text), 0x1000001);
  EXPECT_EQ(text.toUtf8(), "text");
  char character = 'a';
  EXPECT_EQ(buffer.ReadChar(character), 0x1000001);
  EXPECT_EQ(character, 'a');
  unsigned char byte = 1;
  EXPECT_EQ(buffer.ReadUChar(byte), 0x1000001);
  EXPECT_EQ(byte, 1);
  wchar_t wide = L'w';
  EXPECT_EQ(buffer.ReadWideChar(wide), 0x1000001);
  EXPECT_EQ(wide, L'w');
  short small = 2;
  EXPECT_EQ(buffer.ReadShort(small), 0x1000001);
  EXPECT_EQ(small, 2);
  int integer = 3;
  EXPECT_EQ(buffer.ReadInt(integer), 0x1000001);
  EXPECT_EQ(integer, 3);
  unsigned int natural = 4;
  EXPECT_EQ(buffer.ReadUInt(natural), 0x1000001);
  EXPECT_EQ(natural, 4U);
  double real = 5.5;
  EXPECT_EQ(buffer.ReadDouble(real), 0x1000001);
  EXPECT_EQ(real, 5.5);
  long large = 6;
  EXPECT_EQ(buffer.ReadLong(large), 0x1000001);
  EXPECT_EQ(large, 6);
  unsigned long offset = 7;
  EXPECT_EQ(buffer.ReadULong(offset), 0x1000001);
  EXPECT_EQ(buffer.SetOffset(9), 0x1000001);
  EXPECT_EQ(buffer.GetOffset(offset), 0x1000001);
  EXPECT_EQ(offset, 7U);
}

TEST(VRELBufferTest, HandleCallsDerivedClass) {
  struct One : VRELBuffer {
    using VRELBuffer::VRELBuffer;
    VRINResult ReadInt(int& value) override {
      value = 1;
      return VREL_S_OK;
    }
  };
  VRELBufferHandle const empty;
  EXPECT_FALSE(empty.IsValid());
  VRELBufferHandle const buffer(new One(VRELFileHandle()));
  int value = 0;
  EXPECT_EQ(buffer->ReadInt(value), VREL_S_OK);
  EXPECT_EQ(value, 1);
  EXPECT_EQ(static_cast<VRELBuffer*>(buffer), buffer.GetInstance());
  EXPECT_FALSE(buffer == empty);
}

}  // namespace

#include "VRELEntityReader.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "RecordingReaders.h"
#include "VirtualSlot.h"

namespace {

class PlainEntity : public VRELEntityReader {
 public:
  using VRELEntityReader::buffer;
  using VRELEntityReader::VRELEntityReader;
  VRINResult ReadEntity() override { return VREL_S_OK; }
};

TEST(VRELEntityReaderTest, OperationsKeepSlots) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELEntityReader>);
  static_assert(std::is_abstract_v<VRELEntityReader>);
  EXPECT_EQ(SlotOf(&VRELEntityReader::ReadEntity), 5U);
  EXPECT_EQ(SlotOf(&VRELEntityReader::Proprocess), 6U);
  EXPECT_EQ(SlotOf(&VRELEntityReader::GetEntityId), 7U);
  EXPECT_EQ(SlotOf(&VRELEntityReader::GetEntityType), 8U);
  EXPECT_EQ(SlotOf(&VRELEntityReader::IsEntityRoot), 9U);
}

TEST(VRELEntityReaderTest, StartsWithDefaults) {
  VRELBufferHandle buffer(new VRELBuffer(VRELFileHandle()));
  PlainEntity entity(buffer);
  EXPECT_EQ(entity.GetReferenceCount(), 0U);
  EXPECT_EQ(entity.GetName(), nullptr);
  EXPECT_EQ(entity.buffer, buffer);
  int id = 5;
  EXPECT_EQ(entity.GetEntityId(id), VREL_S_OK);
  EXPECT_EQ(id, 0);
  EXPECT_FALSE(entity.IsEntityRoot());
  EXPECT_EQ(entity.GetEntityType().length(), 0);
  EXPECT_EQ(entity.Proprocess(nullptr), VREL_E_NOT_IMPLEMENTED);
}

TEST(VRELEntityReaderTest, BufferMayBeInvalid) {
  VRELBufferHandle none;
  PlainEntity const entity(none);
  EXPECT_FALSE(entity.buffer.IsValid());
}

TEST(VRELEntityReaderTest, DerivedClassSetsFields) {
  recording::Journal journal;
  recording::Entity const root(VRELBufferHandle(), 1, VREL_S_OK, journal);
  recording::Entity const other(VRELBufferHandle(), 2, VREL_S_OK, journal);
  int id = 0;
  EXPECT_EQ(root.GetEntityId(id), VREL_S_OK);
  EXPECT_EQ(id, 1);
  EXPECT_TRUE(root.IsEntityRoot());
  other.GetEntityId(id);
  EXPECT_EQ(id, 2);
  EXPECT_FALSE(other.IsEntityRoot());
}

}  // namespace

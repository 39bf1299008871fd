#include "VRELSectionReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "RecordingReaders.h"
#include "VRELSectionReaderHandle.h"
#include "VirtualSlot.h"

namespace {

using testing::ElementsAre;

VRELBufferHandle NewBuffer() {
  return VRELBufferHandle(new VRELBuffer(VRELFileHandle()));
}

TEST(VRELSectionReaderTest, OperationsKeepSlots) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELSectionReader>);
  EXPECT_EQ(SlotOf(&VRELSectionReader::GetNextKey), 5U);
  EXPECT_EQ(SlotOf(&VRELSectionReader::PreProcess), 6U);
}

TEST(VRELSectionReaderTest, StartsEmpty) {
  VRELBufferHandle const buffer = NewBuffer();
  {
    VRELSectionReaderHandle const section(new VRELSectionReader(buffer));
    EXPECT_EQ(buffer->GetReferenceCount(), 2U);
    EXPECT_EQ(section->GetEntityReaderCount(), 0);
    EXPECT_EQ(section->GetEntityList().size(), 0);
    EXPECT_EQ(section->GetNextKey(), nullptr);
    EXPECT_EQ(section->PreProcess(nullptr), VREL_E_NOT_IMPLEMENTED);
  }
  EXPECT_EQ(buffer->GetReferenceCount(), 1U);
}

// With and without a buffer.
TEST(VRELSectionReaderTest, GetNextKeyTraversesOnce) {
  for (VRELBufferHandle const& buffer : {NewBuffer(), VRELBufferHandle()}) {
    SCOPED_TRACE(buffer.IsValid());
    recording::Journal journal;
    recording::Section section(buffer, 1, {0, 0, 0}, journal);
    EXPECT_EQ(section.GetEntityReaderCount(), 3);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(section.GetNextKey(), section.entities[static_cast<std::size_t>(i)].get());
    for (int i = 0; i < 20; ++i) EXPECT_EQ(section.GetNextKey(), nullptr);
    EXPECT_EQ(section.GetEntityReaderCount(), 3);
  }
}

TEST(VRELSectionReaderTest, GetEntityListSharesStorage) {
  class SectionWithList : public VRELSectionReader {
   public:
    using VRELSectionReader::VRELSectionReader;
    void Add(VRELEntityReader* entity) { entityList.add(entity); }
  };
  recording::Journal journal;
  recording::Entity first(VRELBufferHandle(), 1, 0, journal);
  recording::Entity second(VRELBufferHandle(), 2, 0, journal);
  auto section = std::make_unique<SectionWithList>(NewBuffer());
  section->Add(&first);
  VRELDynamicArray<VRELEntityReader*> const list = section->GetEntityList();
  section->Add(&second);
  EXPECT_THAT(recording::IdsOf(list), ElementsAre(1, 2));
  EXPECT_EQ(section->GetNextKey(), &first);
  // The entities outlive the list, which is emptied in all copies.
  section.reset();
  EXPECT_EQ(list.size(), 0);
  EXPECT_EQ(first.ReadEntity(), VREL_S_OK);
}

}  // namespace

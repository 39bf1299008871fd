#include "VRELFormatReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "RecordingReaders.h"
#include "VRELFormatReaderHandle.h"
#include "VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VRELFormatReaderTest, OperationsKeepSlots) {
  static_assert(std::is_base_of_v<VRELReferenceCount, VRELFormatReader>);
  EXPECT_EQ(SlotOf(&VRELFormatReader::GetNextHeaderSection), 5U);
  EXPECT_EQ(SlotOf(&VRELFormatReader::GetNextDataSection), 6U);
  EXPECT_EQ(SlotOf(&VRELFormatReader::PreprocessData), 7U);
  EXPECT_EQ(SlotOf(&VRELFormatReader::Resolve), 8U);
}

TEST(VRELFormatReaderTest, StartsEmpty) {
  VRELFileHandle const file(new VRELFile("wheel.step"));
  {
    VRELFormatReaderHandle const reader(new VRELFormatReader(file));
    EXPECT_EQ(file->GetReferenceCount(), 2U);
    EXPECT_EQ(reader->GetName(), nullptr);
    EXPECT_EQ(reader->GetNextHeaderSection(), nullptr);
    EXPECT_EQ(reader->GetNextDataSection(), nullptr);
    EXPECT_EQ(reader->PreprocessData(), VREL_E_NOT_IMPLEMENTED);
    EXPECT_EQ(reader->Resolve(), VREL_E_NOT_IMPLEMENTED);
    EXPECT_EQ(reader->GetDataEntityList().size(), 0);
    EXPECT_EQ(reader->GetHeaderEntityList().size(), 0);
  }
  EXPECT_EQ(file->GetReferenceCount(), 1U);
}

TEST(VRELFormatReaderTest, GetNextSectionTraversesOnce) {
  recording::Journal journal;
  recording::Format reader(journal);
  recording::Section& header = reader.AddHeader(1, {0});
  recording::Section& first = reader.AddData(2, {});
  recording::Section& second = reader.AddData(3, {0});
  EXPECT_EQ(reader.GetNextDataSection(), &first);
  EXPECT_EQ(reader.GetNextHeaderSection(), &header);
  EXPECT_EQ(reader.GetNextDataSection(), &second);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(reader.GetNextHeaderSection(), nullptr);
    EXPECT_EQ(reader.GetNextDataSection(), nullptr);
  }
}

TEST(VRELFormatReaderTest, GetNextSectionNeedsBuffer) {
  recording::Journal journal;
  recording::Format reader(journal, false);
  reader.AddHeader(1, {0});
  reader.AddData(2, {0});
  EXPECT_EQ(reader.GetNextHeaderSection(), nullptr);
  EXPECT_EQ(reader.GetNextDataSection(), nullptr);
  // The lists do not need a buffer.
  EXPECT_THAT(recording::IdsOf(reader.GetHeaderEntityList()), ElementsAre(1));
  EXPECT_THAT(recording::IdsOf(reader.GetDataEntityList()), ElementsAre(2));
}

TEST(VRELFormatReaderTest, GetEntityListReturnsAllSections) {
  recording::Journal journal;
  recording::Format reader(journal);
  reader.AddHeader(10, {0});
  recording::Section& first = reader.AddData(1, {0, 0});
  recording::Section& second = reader.AddData(3, {0, 0, 0});
  EXPECT_THAT(recording::IdsOf(reader.GetDataEntityList()), ElementsAre(1, 2, 3, 4, 5));
  EXPECT_THAT(recording::IdsOf(reader.GetHeaderEntityList()), ElementsAre(10));
  EXPECT_EQ(first.GetNextKey(), first.entities[0].get());
  EXPECT_THAT(recording::IdsOf(reader.GetDataEntityList()), ElementsAre(1, 2, 3, 4, 5));
  EXPECT_EQ(first.GetNextKey(), first.entities[1].get());
  EXPECT_EQ(reader.GetNextDataSection(), &first);
  // Each call returns a new array.
  VRELDynamicArray<VRELEntityReader*> list = reader.GetDataEntityList();
  list.clear();
  EXPECT_EQ(first.GetEntityReaderCount(), 2);
  EXPECT_EQ(second.GetEntityReaderCount(), 3);
  EXPECT_EQ(reader.GetDataEntityList().size(), 5);
}

TEST(VRELFormatReaderTest, GetEntityListAcceptsAnySections) {
  recording::Journal journal;
  recording::Format reader(journal);
  recording::Section one(VRELBufferHandle(), 1, {0, 0}, journal);
  recording::Section other(VRELBufferHandle(), 7, {0}, journal);
  VRELDynamicArray<VRELSectionReader*> sections;
  EXPECT_THAT(recording::IdsOf(reader.GetDataEntityList(sections)), IsEmpty());
  for (VRELSectionReader* const section :
       {static_cast<VRELSectionReader*>(&other), static_cast<VRELSectionReader*>(nullptr),
        static_cast<VRELSectionReader*>(&one)}) {
    sections.add(section);
  }
  EXPECT_THAT(recording::IdsOf(reader.GetDataEntityList(sections)), ElementsAre(7, 1, 2));
  EXPECT_THAT(recording::IdsOf(reader.GetHeaderEntityList(sections)), ElementsAre(7, 1, 2));
}

TEST(VRELFormatReaderTest, DestructorKeepsSections) {
  class Borrowing : public VRELFormatReader {
   public:
    explicit Borrowing(VRELSectionReader& section) : VRELFormatReader(VRELFileHandle()) {
      headerSections.add(&section);
      dataSections.add(&section);
    }
    VRELDynamicArray<VRELSectionReader*> Headers() const { return headerSections; }
    VRELDynamicArray<VRELSectionReader*> Data() const { return dataSections; }
  };
  recording::Journal journal;
  recording::Section section(VRELBufferHandle(), 1, {0}, journal);
  auto reader = std::make_unique<Borrowing>(section);
  VRELDynamicArray<VRELSectionReader*> const headers = reader->Headers();
  VRELDynamicArray<VRELSectionReader*> const data = reader->Data();
  EXPECT_EQ(headers.size(), 1);
  EXPECT_EQ(data.size(), 1);
  reader.reset();
  // Emptied in all copies.
  EXPECT_EQ(headers.size(), 0);
  EXPECT_EQ(data.size(), 0);
  EXPECT_EQ(section.GetEntityReaderCount(), 1);
}

}  // namespace

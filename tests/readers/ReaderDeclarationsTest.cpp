// Declarations of the classes in readers/: types of all public operations, offsets of fields and slots of virtual
// operations.
#include <gtest/gtest.h>

#include <type_traits>

#include "Declaration.h"
#include "VRELEntityReader.h"
#include "VRELFormatReader.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#include "VRELSectionReader.h"
#include "VRELSectionReaderHandle.h"
#include "VirtualSlot.h"

namespace {

using Entity = VRELEntityReader;
using Section = VRELSectionReader;
using Format = VRELFormatReader;
using Entities = VRELDynamicArray<VRELEntityReader*>;
using Sections = VRELDynamicArray<VRELSectionReader*>;

static_assert(IsDeclared<VRINResult (Entity::*)()>(&Entity::ReadEntity));
static_assert(IsDeclared<VRINResult (Entity::*)(Section*)>(&Entity::Proprocess));
static_assert(IsDeclared<VRINResult (Entity::*)(int&) const>(&Entity::GetEntityId));
static_assert(IsDeclared<VRELString (Entity::*)() const>(&Entity::GetEntityType));
static_assert(IsDeclared<bool (Entity::*)() const>(&Entity::IsEntityRoot));
static_assert(std::is_abstract_v<Entity> && std::is_base_of_v<VRELReferenceCount, Entity>);

static_assert(IsDeclared<Entity* (Section::*)()>(&Section::GetNextKey));
static_assert(IsDeclared<VRINResult (Section::*)(Format*)>(&Section::PreProcess));
static_assert(IsDeclared<int (Section::*)() const>(&Section::GetEntityReaderCount));
static_assert(IsDeclared<Entities (Section::*)() const>(&Section::GetEntityList));
static_assert(std::is_constructible_v<Section, VRELBufferHandle> && std::is_base_of_v<VRELReferenceCount, Section>);

static_assert(IsDeclared<Section* (Format::*)()>(&Format::GetNextHeaderSection));
static_assert(IsDeclared<Section* (Format::*)()>(&Format::GetNextDataSection));
static_assert(IsDeclared<VRINResult (Format::*)()>(&Format::PreprocessData));
static_assert(IsDeclared<VRINResult (Format::*)()>(&Format::Resolve));
static_assert(IsDeclared<Entities (Format::*)()>(&Format::GetDataEntityList));
static_assert(IsDeclared<Entities (Format::*)()>(&Format::GetHeaderEntityList));
static_assert(IsDeclared<Entities (Format::*)(Sections&)>(&Format::GetDataEntityList));
static_assert(IsDeclared<Entities (Format::*)(Sections&)>(&Format::GetHeaderEntityList));
static_assert(std::is_constructible_v<Format, VRELFileHandle const&> && std::is_base_of_v<VRELReferenceCount, Format>);

static_assert(IsDeclared<VRINResult (VRELReader::*)()>(&VRELReader::ReadHeaderSection));
static_assert(IsDeclared<VRINResult (VRELReader::*)()>(&VRELReader::ReadDataSection));
static_assert(IsDeclared<VRINResult (VRELReader::*)()>(&VRELReader::Resolve));
static_assert(IsDeclared<Entities (VRELReader::*)()>(&VRELReader::GetHeaderEntityList));
static_assert(IsDeclared<Entities (VRELReader::*)()>(&VRELReader::GetDataEntityList));
static_assert(std::is_constructible_v<VRELReader, VRELFormatReaderHandle>);
static_assert(std::is_same_v<decltype(VREL_E_READER_NO_FORMAT), long const>);

static_assert(std::is_base_of_v<VRELReferenceHandle, VRELFormatReaderHandle>);
static_assert(std::is_base_of_v<VRELReferenceHandle, VRELSectionReaderHandle>);
static_assert(std::is_convertible_v<VRELFormatReaderHandle const&, Format*>);
static_assert(std::is_convertible_v<VRELSectionReaderHandle const&, Section*>);

// Makes the protected fields accessible.
struct OpenEntity : Entity {
  using Entity::Entity;
  VRINResult ReadEntity() override { return VREL_S_OK; }
  using Entity::buffer;
  using Entity::entityId;
  using Entity::entityRoot;
};
struct OpenSection : Section {
  using Section::buffer;
  using Section::entityList;
  using Section::Section;
};
struct OpenFormat : Format {
  using Format::buffer;
  using Format::dataSections;
  using Format::file;
  using Format::Format;
  using Format::headerSections;
};

std::size_t Offset(void const* object, void const* field) {
  return static_cast<std::size_t>(static_cast<char const*>(field) - static_cast<char const*>(object));
}

TEST(ReaderDeclarationsTest, ReadersKeepSlots) {
  EXPECT_EQ(SlotOf(&Section::GetNextKey), 5U);
  EXPECT_EQ(SlotOf(&Section::PreProcess), 6U);
  EXPECT_EQ(SlotOf(&Format::GetNextHeaderSection), 5U);
  EXPECT_EQ(SlotOf(&Format::GetNextDataSection), 6U);
  EXPECT_EQ(SlotOf(&Format::PreprocessData), 7U);
  EXPECT_EQ(SlotOf(&Format::Resolve), 8U);
  EXPECT_EQ(SlotOf(&Entity::ReadEntity), 5U);
  EXPECT_EQ(SlotOf(&Entity::IsEntityRoot), 9U);
  EXPECT_EQ(SlotOf(&VRELReader::GetName), 4U);
}

TEST(ReaderDeclarationsTest, ReadersKeepFieldOffsets) {
  VRELBufferHandle buffer;
  OpenEntity const entity(buffer);
  EXPECT_EQ(Offset(&entity, &entity.entityId), 12U);
  EXPECT_EQ(Offset(&entity, &entity.entityRoot), 16U);
  EXPECT_EQ(Offset(&entity, &entity.buffer), 24U);

  OpenSection section(buffer);
  std::size_t const list = 16 + sizeof(VRELBufferHandle);
  EXPECT_EQ(Offset(&section, &section.buffer), 16U);
  EXPECT_EQ(Offset(&section, &section.entityList), list);
  section.entityList.add(nullptr);
  section.GetNextKey();
  EXPECT_EQ(FieldAt<int>(section, list + sizeof(Entities)), 1);

  OpenFormat format{VRELFileHandle()};
  std::size_t const header = 16 + sizeof(VRELFileHandle) + sizeof(VRELBufferHandle);
  std::size_t const data = header + sizeof(Sections) + 8;
  EXPECT_EQ(Offset(&format, &format.file), 16U);
  EXPECT_EQ(Offset(&format, &format.buffer), 16 + sizeof(VRELFileHandle));
  EXPECT_EQ(Offset(&format, &format.headerSections), header);
  EXPECT_EQ(Offset(&format, &format.dataSections), data);
  format.buffer = VRELBufferHandle(new VRELBuffer(VRELFileHandle()));
  format.headerSections.add(nullptr);
  format.dataSections.add(nullptr);
  format.dataSections.add(nullptr);
  format.GetNextHeaderSection();
  format.GetNextDataSection();
  format.GetNextDataSection();
  EXPECT_EQ(FieldAt<int>(format, data - 8), 1);
  EXPECT_EQ(FieldAt<int>(format, data + sizeof(Sections)), 2);

  VRELFormatReaderHandle const handle(new OpenFormat(VRELFileHandle()));
  VRELReader const reader(handle);
  auto const* const bytes = reinterpret_cast<char const*>(&reader);
  EXPECT_TRUE(*reinterpret_cast<VRELFormatReaderHandle const*>(bytes + 16) == handle);
}

}  // namespace

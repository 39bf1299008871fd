// Declarations of the classes in files/: types of all public operations, offsets of fields and slots of virtual
// operations.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "Gk_DirElement.h"
#include "Gk_DirEntry.h"
#include "Gk_DirTraversor.h"
#include "Gk_FileElement.h"
#include "VRELFile.h"
#include "VRELFileDescriptor.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELFileHandle.h"
#include "VRELFileHeader.h"
#include "VRELFilePath.h"
#include "VRELStreamFormatter.h"
#include "VRELTemporaryFile.h"
#include "VirtualSlot.h"

namespace {

namespace file_path {
using Path = VRELFilePath;
using Text = VRELString const&;
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetPath));
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetName));
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetNameWithoutExtension));
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetNameWithoutLastExtension));
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetLastExtension));
static_assert(IsDeclared<VRELString (Path::*)() const>(&Path::GetDirectory));
static_assert(IsDeclared<bool (Path::*)() const>(&Path::IsValid));
static_assert(IsDeclared<bool (Path::*)() const>(&Path::IsAbsolute));
static_assert(IsDeclared<bool (Path::*)(Text) const>(&Path::HasLastExtensionIgnoringCase));
static_assert(IsDeclared<void (Path::*)(Text)>(&Path::AddExtension));
static_assert(IsDeclared<Path (Path::*)(Text) const>(&Path::ReplaceLastExtension));
static_assert(IsDeclared<Path (Path::*)(Text) const>(&Path::ReplaceFirstExtension));
static_assert(IsDeclared<Path (Path::*)(Path&) const>(&Path::ResolveAgainst));
static_assert(IsDeclared<bool (Path::*)() const>(&Path::DoesFileExist));
static_assert(IsDeclared<std::FILE* (Path::*)(char const*) const>(&Path::OpenFile));
static_assert(IsDeclared<bool (Path::*)() const>(&Path::RemoveFile));
static_assert(IsDeclared<void (Path::*)()>(&Path::Initialize));
static_assert(IsDeclared<void (Path::*)(VRELString&)>(&Path::FixSeparator));
static_assert(IsDeclared<Path (Path::*)(Text) const>(&Path::operator+));
static_assert(IsDeclared<Path& (Path::*)(Path const&)>(&Path::operator=));
static_assert(IsDeclared<int (*)(Text)>(&Path::GetLastSeparatorIndex));
static_assert(IsDeclared<int (*)(Text)>(&Path::GetLastExtensionIndex));
static_assert(IsDeclared<int (*)(Text)>(&Path::GetFirstExtensionIndex));
static_assert(IsDeclared<int (*)(Text)>(&Path::GetNameIndex));
static_assert(IsDeclared<VRINResult (Path::*)(char*, int) const>(&Path::GetMBCSBuffer));
static_assert(IsDeclared<VRINResult (Path::*)(wchar_t*, int) const>(&Path::GetWideCharacterBuffer));
static_assert(IsDeclared<VRINResult (Path::*)(struct stat&) const>(&Path::GetFileStats));
static_assert(IsDeclared<VRINResult (Path::*)(long&) const>(&Path::GetFileSize));
static_assert(IsDeclared<VRINResult (Path::*)(long&) const>(&Path::GetCreationDate));
static_assert(IsDeclared<VRINResult (Path::*)(long&) const>(&Path::GetLastAccessDate));
static_assert(IsDeclared<VRINResult (Path::*)(long&) const>(&Path::GetLastModificationDate));
static_assert(IsDeclared<Path (*)()>(&Path::GetCurrentWorkingDirectory));
static_assert(std::is_default_constructible_v<Path> && std::is_copy_constructible_v<Path>);
static_assert(std::is_convertible_v<VRELString const&, Path> && std::is_convertible_v<char const*, Path>);
static_assert(std::has_virtual_destructor_v<Path>);
static_assert(sizeof(Path) == sizeof(void*) + sizeof(VRELString));
}  // namespace file_path

namespace file {
using File = VRELFile;
static_assert(IsDeclared<bool (File::*)() const>(&File::IsValidFile));
static_assert(IsDeclared<VRINResult (File::*)(std::FILE*&) const>(&File::GetFilePointer));
static_assert(IsDeclared<VRINResult (File::*)(std::FILE*&, File::VRELFilePointerOpenType)>(&File::GetFilePointer));
static_assert(IsDeclared<VRINResult (File::*)(int&) const>(&File::GetFileDescriptor));
static_assert(IsDeclared<VRINResult (File::*)(VRELString&) const>(&File::GetFileName));
static_assert(IsDeclared<VRINResult (File::*)(VRELFilePath&) const>(&File::GetFilePath));
static_assert(IsDeclared<File::VRELFilePointerOpenType (File::*)() const>(&File::GetFilePointerOpenType));
static_assert(std::is_default_constructible_v<File> && !std::is_copy_constructible_v<File>);
static_assert(std::is_constructible_v<File, int> && std::is_constructible_v<File, std::FILE*>);
static_assert(std::is_constructible_v<File, VRELFilePath const&> && std::is_constructible_v<File, VRELString const&>);
static_assert(std::is_constructible_v<File, char const*>);
static_assert(std::is_base_of_v<VRELReferenceCount, File>);
static_assert(std::is_same_v<std::underlying_type_t<File::VRELFilePointerOpenType>, int>);
}  // namespace file

namespace file_descriptor {
using Descriptor = VRELFileDescriptor;
static_assert(IsDeclared<long (Descriptor::*)(long) const>(&Descriptor::seek));
static_assert(IsDeclared<long (Descriptor::*)(long) const>(&Descriptor::offset));
static_assert(IsDeclared<long (Descriptor::*)() const>(&Descriptor::fileSize));
static_assert(IsDeclared<long (Descriptor::*)(char*, unsigned, long)>(&Descriptor::readBytes));
static_assert(IsDeclared<long (Descriptor::*)(char const*, unsigned, long)>(&Descriptor::writeBytes));
static_assert(IsDeclared<void (Descriptor::*)()>(&Descriptor::commit));
static_assert(std::is_constructible_v<Descriptor, int, Descriptor::IOMode>);
static_assert(std::is_constructible_v<Descriptor, std::FILE*, Descriptor::IOMode>);
static_assert(std::is_constructible_v<Descriptor, VRELFilePath&, Descriptor::IOMode>);
static_assert(!std::is_copy_constructible_v<Descriptor>);
static_assert(std::is_base_of_v<VRELReferenceCount, Descriptor>);
static_assert(std::is_same_v<std::underlying_type_t<Descriptor::IOMode>, int>);
}  // namespace file_descriptor

namespace handles {
template <class Handle, class Object>
constexpr bool IsHandleOf() {
  static_assert(std::is_base_of_v<VRELReferenceHandle, Handle>);
  static_assert(std::is_constructible_v<Handle, Object*> && std::is_copy_constructible_v<Handle>);
  static_assert(std::is_convertible_v<Handle const&, Object*>);
  static_assert(std::is_same_v<decltype(std::declval<Handle&>().operator->()), Object*>);
  static_assert(std::is_convertible_v<decltype(std::declval<Handle const&>().operator->()), Object const*>);
  static_assert(
      std::is_convertible_v<decltype(std::declval<Handle&>() = std::declval<Handle const&>()), Handle const&>);
  static_assert(std::is_convertible_v<decltype(std::declval<Handle&>() == std::declval<Handle&>()), bool>);
  static_assert(std::is_convertible_v<decltype(std::declval<Handle&>() < std::declval<Handle&>()), bool>);
  static_assert(sizeof(Handle) == 2 * sizeof(void*));
  return true;
}
static_assert(IsHandleOf<VRELFileHandle, VRELFile>());
static_assert(IsHandleOf<VRELFileDescriptorHandle, VRELFileDescriptor>());
}  // namespace handles

namespace elements {
using Element = Gk_FileElement;
using Directory = Gk_DirElement;
using List = VRELDynamicArray<Gk_FileElement>;
static_assert(IsDeclared<Gk_String const& (Element::*)() const>(&Element::pathName));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::exists));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::isDirectory));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::isFile));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::canRead));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::canWrite));
static_assert(IsDeclared<long (Element::*)() const>(&Element::length));
static_assert(IsDeclared<long (Element::*)() const>(&Element::lastModified));
static_assert(IsDeclared<Gk_String (Element::*)() const>(&Element::dirName));
static_assert(IsDeclared<Gk_String (Element::*)() const>(&Element::baseName));
static_assert(IsDeclared<Gk_String (Element::*)() const>(&Element::identifier));
static_assert(IsDeclared<Element& (Element::*)(char const*)>(&Element::changeExtn));
static_assert(IsDeclared<Element& (Element::*)()>(&Element::flatten));
static_assert(IsDeclared<Gk_String (Element::*)(Element const&) const>(&Element::relativeName));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::erase));
static_assert(IsDeclared<bool (Element::*)(Element const&) const>(&Element::renameTo));
static_assert(IsDeclared<Gk_String (*)()>(&Element::getCurrentDir));
static_assert(IsDeclared<bool (Element::*)() const>(&Element::ensureParent));
static_assert(std::is_convertible_v<Gk_String const&, Element> && std::is_convertible_v<Gk_String const&, Directory>);
static_assert(std::is_base_of_v<Gk_String, Element> && std::is_base_of_v<Element, Directory>);
static_assert(!std::is_polymorphic_v<Element> && sizeof(Element) == sizeof(Gk_String));
static_assert(!std::is_polymorphic_v<Directory> && sizeof(Directory) == sizeof(Gk_String));

static_assert(IsDeclared<bool (Directory::*)() const>(&Directory::isDot));
static_assert(IsDeclared<bool (Directory::*)() const>(&Directory::isDotDot));
static_assert(IsDeclared<bool (Directory::*)() const>(&Directory::mkdir));
static_assert(IsDeclared<bool (Directory::*)() const>(&Directory::rmdir));
static_assert(IsDeclared<List (Directory::*)() const>(&Directory::children));
static_assert(IsDeclared<List (Directory::*)(Gk_ROString const&) const>(&Directory::fetchLeafFiles));
static_assert(IsDeclared<Gk_String (Directory::*)() const>(&Directory::fullPath));

static_assert(IsDeclared<bool (Gk_DirEntry::*)() const>(&Gk_DirEntry::isValid));
static_assert(IsDeclared<char const* (Gk_DirEntry::*)() const>(&Gk_DirEntry::name));
static_assert(sizeof(Gk_DirEntry) == sizeof(void*));
static_assert(IsDeclared<Gk_DirTraversor* (*)(Directory const&)>(&Gk_DirTraversor::create));
static_assert(std::is_base_of_v<Directory, Gk_DirTraversor> && !std::is_polymorphic_v<Gk_DirTraversor>);
}  // namespace elements

namespace temporary_file {
using File = VRELTemporaryFile;
static_assert(IsDeclared<void (File::*)(VRELFilePath&) const>(&File::GetPath));
static_assert(IsDeclared<std::FILE* (File::*)(char const*)>(&File::Open));
static_assert(IsDeclared<void (File::*)()>(&File::Close));
static_assert(IsDeclared<int (File::*)()>(&File::Remove));
static_assert(IsDeclared<void (File::*)()>(&File::Terminate));
static_assert(std::is_default_constructible_v<File> && !std::is_copy_constructible_v<File>);
static_assert(std::is_constructible_v<File, VRELFilePath const&, char const*, unsigned int>);
static_assert(std::has_virtual_destructor_v<File>);
static_assert(sizeof(File) == 2 * sizeof(void*) + sizeof(VRELFilePath));
}  // namespace temporary_file

namespace file_header {
using Header = VRELFileHeader;
using Key = VRELString const&;
static_assert(IsDeclared<int (Header::*)()>(&Header::GetModelsCount));
static_assert(IsDeclared<VRINResult (Header::*)(int)>(&Header::SelectModel));
static_assert(IsDeclared<VRINResult (Header::*)(Key, VRELValue&) const>(&Header::Get));
static_assert(IsDeclared<VRINResult (Header::*)(Key, VRELString&) const>(&Header::Get));
static_assert(IsDeclared<VRINResult (Header::*)(Key, VRELValue const&)>(&Header::Set));
static_assert(IsDeclared<VRINResult (Header::*)(Key, VRELString const&)>(&Header::Set));
static_assert(IsDeclared<VRINResult (Header::*)(Key)>(&Header::AddSection));
static_assert(IsDeclared<int (Header::*)() const>(&Header::GetCount));
static_assert(IsDeclared<VRINResult (Header::*)(int, VRELString&, VRELValue&) const>(&Header::Get));
static_assert(IsDeclared<VRINResult (Header::*)(int)>(&Header::ResizeModels));
static_assert(IsDeclared<VRELStreamFormatter& (*)(VRELStreamFormatter&, Header const&)>(&operator<<));
static_assert(std::is_default_constructible_v<Header> && std::is_copy_constructible_v<Header>);
static_assert(std::is_same_v<decltype(Header::AUTHOR), VRELString const>);
}  // namespace file_header

TEST(FileDeclarationsTest, CountedClassesKeepVirtualSlots) {
  struct Probe : VRELReferenceCount {
    static std::size_t Raise() { return SlotOf(&Probe::RaiseReference); }
    static std::size_t Lower() { return SlotOf(&Probe::LowerReference); }
    static std::size_t Name() { return SlotOf(&Probe::GetName); }
  };
  EXPECT_EQ(Probe::Raise(), 2U);
  EXPECT_EQ(Probe::Lower(), 3U);
  EXPECT_EQ(Probe::Name(), 4U);
  EXPECT_EQ(SlotOf(&VRELFile::RaiseReference), 2U);
  EXPECT_EQ(SlotOf(&VRELFile::GetName), 4U);
  EXPECT_EQ(SlotOf(&VRELFileDescriptor::LowerReference), 3U);
}

TEST(FileDeclarationsTest, FileKeepsFieldOffsets) {
  VRELFile const path("wheel.step");
  VRELFile const descriptor(7);
  VRELFile const stream(stdin);
  EXPECT_TRUE(IsFirstBase<VRELReferenceCount>(path));
  EXPECT_EQ(FieldAt<std::FILE*>(path, 16), nullptr);
  EXPECT_EQ(FieldAt<std::FILE*>(stream, 16), stdin);
  auto const* const ownedPath = FieldAt<VRELFilePath const*>(path, 24);
  ASSERT_NE(ownedPath, nullptr);
  EXPECT_EQ(ownedPath->GetPath().toUtf8(), "wheel.step");
  EXPECT_EQ(FieldAt<int>(path, 32), -1);
  EXPECT_EQ(FieldAt<int>(descriptor, 32), 7);
  EXPECT_EQ(FieldAt<int>(path, 36), 0);
  VRELFile opened("/dev/null");
  std::FILE* null = nullptr;
  EXPECT_EQ(opened.GetFilePointer(null, VRELFile::BinaryOpen), VREL_S_OK);
  EXPECT_EQ(FieldAt<std::FILE*>(opened, 16), null);
  EXPECT_EQ(FieldAt<int>(opened, 36), 2);
}

TEST(FileDeclarationsTest, FileDescriptorKeepsFieldOffsets) {
  VRELFileDescriptor const borrowed(2, VRELFileDescriptor::ModeWrite);
  EXPECT_TRUE(IsFirstBase<VRELReferenceCount>(borrowed));
  EXPECT_EQ(FieldAt<int>(borrowed, 12), 2);
  EXPECT_EQ(FieldAt<int>(borrowed, 16), 2);
  EXPECT_FALSE(FieldAt<bool>(borrowed, 20));
  VRELFilePath const null("/dev/null");
  VRELFileDescriptor const owned(null, VRELFileDescriptor::ModeRead);
  EXPECT_GT(FieldAt<int>(owned, 12), 2);
  EXPECT_EQ(FieldAt<int>(owned, 16), 1);
  EXPECT_TRUE(FieldAt<bool>(owned, 20));
}

TEST(FileDeclarationsTest, TemporaryFileKeepsFieldOffsets) {
  VRELTemporaryFile file;
  VRELFilePath path;
  file.GetPath(path);
  EXPECT_EQ(FieldAt<std::FILE*>(file, 8), nullptr);
  auto const* const bytes = reinterpret_cast<char const*>(&file);
  EXPECT_EQ(reinterpret_cast<VRELFilePath const*>(bytes + 16)->GetPath().toUtf8(), path.GetPath().toUtf8());
  std::FILE* const stream = file.Open(nullptr);
  EXPECT_EQ(FieldAt<std::FILE*>(file, 8), stream);
}

TEST(FileDeclarationsTest, FileHeaderKeepsFieldOffsets) {
  VRELFileHeader header;
  header.SelectModel(2);
  EXPECT_EQ(FieldAt<int>(header, 8), 2);
  auto const* const bytes = reinterpret_cast<char const*>(&header);
  EXPECT_EQ(reinterpret_cast<VRELDynamicArray<VRELTable> const*>(bytes + 16)->size(), 3);
  EXPECT_EQ(sizeof(VRELFileHeader), 16 + sizeof(VRELDynamicArray<VRELTable>));
}

TEST(FileDeclarationsTest, DirectoryTraversorKeepsFieldOffsets) {
  Gk_DirElement const directory(Gk_String("/"));
  Gk_DirTraversor* const traversor = Gk_DirTraversor::create(directory);
  ASSERT_NE(traversor, nullptr);
  std::size_t const list = sizeof(Gk_DirElement);
  std::size_t const open = list + sizeof(VRELDynamicArray<Gk_FileElement>);
  auto const* const bytes = reinterpret_cast<char const*>(traversor);
  EXPECT_EQ(static_cast<void const*>(bytes + list), &traversor->entries());
  EXPECT_NE(FieldAt<void*>(traversor, open), nullptr);
  EXPECT_EQ(static_cast<void const*>(bytes + open + 8), &traversor->current());
  EXPECT_EQ(static_cast<void const*>(bytes + open + 16), &traversor->currentName());
  while (traversor->next()) continue;
  EXPECT_EQ(FieldAt<void*>(traversor, open), nullptr);
  delete traversor;
}

}  // namespace

// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELInputStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "Gk_IndexedInputStream.h"
#include "Gk_PacketInputStream.h"
#include "Gk_PacketOutputStream.h"
#include "VRELFileDescriptor.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELFileInputStream.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELFilterInputStream.h"
#include "VRELFilterOutputStream.h"
#include "VRELOutputStream.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"

namespace {

// VRELInputStream
static_assert(IsDeclared<VRELInputStream* (VRELInputStream::*)()>(&VRELInputStream::duplicate));
static_assert(IsDeclared<int (VRELInputStream::*)()>(&VRELInputStream::readChar));
static_assert(IsDeclared<int (VRELInputStream::*)(char*, int)>(&VRELInputStream::read));
static_assert(IsDeclared<long (VRELInputStream::*)(long)>(&VRELInputStream::skip));
static_assert(IsDeclared<long (VRELInputStream::*)() const>(&VRELInputStream::available));
static_assert(IsDeclared<bool (VRELInputStream::*)(Gk_String const&)>(&VRELInputStream::add));
static_assert(IsDeclared<long (VRELInputStream::*)() const>(&VRELInputStream::getCurrentOffset));
static_assert(IsDeclared<long (VRELInputStream::*)(long)>(&VRELInputStream::setOffset));

// VRELFilterInputStream
static_assert(IsDeclared<int (VRELFilterInputStream::*)()>(&VRELFilterInputStream::readChar));
static_assert(IsDeclared<int (VRELFilterInputStream::*)(char*, int)>(&VRELFilterInputStream::read));
static_assert(IsDeclared<long (VRELFilterInputStream::*)(long)>(&VRELFilterInputStream::skip));
static_assert(IsDeclared<long (VRELFilterInputStream::*)() const>(&VRELFilterInputStream::available));
static_assert(IsDeclared<bool (VRELFilterInputStream::*)(Gk_String const&)>(&VRELFilterInputStream::add));
static_assert(IsDeclared<long (VRELFilterInputStream::*)() const>(&VRELFilterInputStream::getCurrentOffset));
static_assert(IsDeclared<long (VRELFilterInputStream::*)(long)>(&VRELFilterInputStream::setOffset));

// VRELFileInputStream
static_assert(IsDeclared<VRELInputStream* (VRELFileInputStream::*)()>(&VRELFileInputStream::duplicate));
static_assert(IsDeclared<int (VRELFileInputStream::*)(char*, int)>(&VRELFileInputStream::read));
static_assert(IsDeclared<long (VRELFileInputStream::*)(long)>(&VRELFileInputStream::skip));
static_assert(IsDeclared<long (VRELFileInputStream::*)() const>(&VRELFileInputStream::available));
static_assert(IsDeclared<bool (VRELFileInputStream::*)(Gk_String const&)>(&VRELFileInputStream::add));
static_assert(IsDeclared<long (VRELFileInputStream::*)() const>(&VRELFileInputStream::getCurrentOffset));
static_assert(IsDeclared<long (VRELFileInputStream::*)(long)>(&VRELFileInputStream::setOffset));

// VRELStringInputStream
static_assert(IsDeclared<VRELInputStream* (VRELStringInputStream::*)()>(&VRELStringInputStream::duplicate));
static_assert(IsDeclared<int (VRELStringInputStream::*)()>(&VRELStringInputStream::readChar));
static_assert(IsDeclared<int (VRELStringInputStream::*)(char*, int)>(&VRELStringInputStream::read));
static_assert(IsDeclared<long (VRELStringInputStream::*)(long)>(&VRELStringInputStream::skip));
static_assert(IsDeclared<long (VRELStringInputStream::*)() const>(&VRELStringInputStream::available));
static_assert(IsDeclared<bool (VRELStringInputStream::*)(Gk_String const&)>(&VRELStringInputStream::add));

// Gk_PacketInputStream
static_assert(IsDeclared<VRELInputStream* (Gk_PacketInputStream::*)()>(&Gk_PacketInputStream::duplicate));
static_assert(IsDeclared<int (Gk_PacketInputStream::*)()>(&Gk_PacketInputStream::readChar));
static_assert(IsDeclared<int (Gk_PacketInputStream::*)(char*, int)>(&Gk_PacketInputStream::read));
static_assert(IsDeclared<long (Gk_PacketInputStream::*)(long)>(&Gk_PacketInputStream::skip));
static_assert(IsDeclared<long (Gk_PacketInputStream::*)() const>(&Gk_PacketInputStream::available));
static_assert(IsDeclared<bool (Gk_PacketInputStream::*)(Gk_String const&)>(&Gk_PacketInputStream::add));
static_assert(IsDeclared<long (Gk_PacketInputStream::*)() const>(&Gk_PacketInputStream::getCurrentOffset));
static_assert(IsDeclared<long (Gk_PacketInputStream::*)(long)>(&Gk_PacketInputStream::setOffset));

// Gk_IndexedInputStream
static_assert(IsDeclared<VRELInputStream* (Gk_IndexedInputStream::*)()>(&Gk_IndexedInputStream::duplicate));
static_assert(IsDeclared<int (Gk_IndexedInputStream::*)()>(&Gk_IndexedInputStream::readChar));
static_assert(IsDeclared<int (Gk_IndexedInputStream::*)(char*, int)>(&Gk_IndexedInputStream::read));
static_assert(IsDeclared<bool (Gk_IndexedInputStream::*)(Gk_String const&)>(&Gk_IndexedInputStream::add));
static_assert(IsDeclared<void (Gk_PacketInputStream::*)()>(&Gk_PacketInputStream::fetchPacket));
static_assert(IsDeclared<int (Gk_IndexedInputStream::*)() const>(&Gk_IndexedInputStream::getLineNumber));

// VRELOutputStream
static_assert(IsDeclared<int (VRELOutputStream::*)(char)>(&VRELOutputStream::writeChar));
static_assert(IsDeclared<int (VRELOutputStream::*)(char const*, int)>(&VRELOutputStream::write));
static_assert(IsDeclared<void (VRELOutputStream::*)()>(&VRELOutputStream::flush));
static_assert(IsDeclared<void (VRELOutputStream::*)()>(&VRELOutputStream::close));

// VRELFilterOutputStream
static_assert(IsDeclared<int (VRELFilterOutputStream::*)(char)>(&VRELFilterOutputStream::writeChar));
static_assert(IsDeclared<int (VRELFilterOutputStream::*)(char const*, int)>(&VRELFilterOutputStream::write));
static_assert(IsDeclared<void (VRELFilterOutputStream::*)()>(&VRELFilterOutputStream::flush));
static_assert(IsDeclared<void (VRELFilterOutputStream::*)()>(&VRELFilterOutputStream::close));

// VRELFileOutputStream
static_assert(IsDeclared<int (VRELFileOutputStream::*)(char const*, int)>(&VRELFileOutputStream::write));
static_assert(IsDeclared<void (VRELFileOutputStream::*)()>(&VRELFileOutputStream::flush));
static_assert(IsDeclared<void (VRELFileOutputStream::*)()>(&VRELFileOutputStream::close));

// VRELStringOutputStream
static_assert(IsDeclared<int (VRELStringOutputStream::*)(char const*, int)>(&VRELStringOutputStream::write));
static_assert(IsDeclared<void (VRELStringOutputStream::*)()>(&VRELStringOutputStream::flush));
static_assert(IsDeclared<void (VRELStringOutputStream::*)()>(&VRELStringOutputStream::close));

// Gk_PacketOutputStream
static_assert(IsDeclared<int (Gk_PacketOutputStream::*)(char const*, int)>(&Gk_PacketOutputStream::write));
static_assert(IsDeclared<void (Gk_PacketOutputStream::*)()>(&Gk_PacketOutputStream::flush));
static_assert(IsDeclared<char (Gk_PacketOutputStream::*)(char)>(&Gk_PacketOutputStream::write));
static_assert(IsDeclared<void (Gk_PacketOutputStream::*)()>(&Gk_PacketOutputStream::flushBuffer));
static_assert(IsDeclared<char const* (VRELStringOutputStream::*)() const>(&VRELStringOutputStream::contents));

static_assert(std::is_same_v<decltype(VRELFileInputStream::console), VRELFileInputStream>);
static_assert(std::is_same_v<decltype(VRELFileOutputStream::console), VRELFileOutputStream>);

// Constructors.
static_assert(std::is_constructible_v<VRELFileInputStream>);
static_assert(std::is_constructible_v<VRELFileInputStream, std::FILE*>);
static_assert(std::is_constructible_v<VRELFileInputStream, VRELFilePath&>);
static_assert(std::is_copy_constructible_v<VRELFileInputStream>);
static_assert(std::is_constructible_v<VRELFileOutputStream>);
static_assert(std::is_constructible_v<VRELFileOutputStream, std::FILE*>);
static_assert(std::is_constructible_v<VRELFileOutputStream, VRELFilePath&>);
static_assert(std::is_constructible_v<VRELFileOutputStream, VRELFileDescriptor*>);
static_assert(std::is_constructible_v<VRELStringInputStream, Gk_String const&>);
static_assert(std::is_constructible_v<VRELStringOutputStream>);
static_assert(std::is_constructible_v<Gk_PacketInputStream, VRELInputStream*, int>);
static_assert(std::is_constructible_v<Gk_PacketOutputStream, VRELOutputStream*, int>);
static_assert(std::is_constructible_v<Gk_IndexedInputStream, VRELInputStream*>);
static_assert(std::is_copy_constructible_v<Gk_IndexedInputStream>);

// Bases.
static_assert(std::is_base_of_v<VRELInputStream, VRELFilterInputStream>);
static_assert(std::is_base_of_v<VRELInputStream, VRELFileInputStream>);
static_assert(std::is_base_of_v<VRELInputStream, VRELStringInputStream>);
static_assert(std::is_base_of_v<VRELFilterInputStream, Gk_PacketInputStream>);
static_assert(std::is_base_of_v<VRELFilterInputStream, Gk_IndexedInputStream>);
static_assert(std::is_base_of_v<VRELOutputStream, VRELFilterOutputStream>);
static_assert(std::is_base_of_v<VRELOutputStream, VRELFileOutputStream>);
static_assert(std::is_base_of_v<VRELOutputStream, VRELStringOutputStream>);
static_assert(std::is_base_of_v<VRELFilterOutputStream, Gk_PacketOutputStream>);

// Returns the part of type `Field` at `offset` of `object`.
template <class Field, class Object>
Field const& PartAt(Object const& object, std::size_t offset) {
  return *reinterpret_cast<Field const*>(reinterpret_cast<char const*>(&object) + offset);
}

TEST(StreamDeclarationsTest, FieldsByOffset) {
  VRELStringInputStream text(Gk_String("abc"));
  text.readChar();
  EXPECT_EQ(PartAt<VRELInputStream*>(text, 8), nullptr);
  EXPECT_EQ(PartAt<Gk_String>(text, 16).len(), 4);
  EXPECT_EQ(PartAt<long>(text, 16 + sizeof(Gk_String)), 1);

  Gk_PacketInputStream packet(&text, 2);
  packet.readChar();
  EXPECT_EQ(PartAt<VRELInputStream*>(packet, 8), &text);
  EXPECT_EQ(PartAt<Gk_String>(packet, 16).len(), 2);
  EXPECT_EQ(PartAt<int>(packet, 16 + sizeof(Gk_String)), 1);
  EXPECT_EQ(PartAt<int>(packet, 20 + sizeof(Gk_String)), 2);

  VRELStringOutputStream out;
  out.write("ab", 2);
  EXPECT_EQ(PartAt<VRELOutputStream*>(out, 8), nullptr);
  EXPECT_EQ(PartAt<Gk_String>(out, 16).len(), 2);
  Gk_PacketOutputStream pending(&out, 8);
  pending.write("abc", 3);
  EXPECT_EQ(PartAt<VRELOutputStream*>(pending, 8), &out);
  EXPECT_EQ(PartAt<Gk_String>(pending, 16).len(), 8);
  EXPECT_EQ(PartAt<int>(pending, 16 + sizeof(Gk_String)), 3);

  VRELStringInputStream lines(Gk_String("\n\n"));
  Gk_IndexedInputStream indexed(&lines);
  indexed.readChar();
  EXPECT_EQ(PartAt<VRELInputStream*>(indexed, 8), &lines);
  EXPECT_EQ(PartAt<int>(indexed, 16), 1);

  VRELFileInputStream const& console = VRELFileInputStream::console;
  EXPECT_EQ(PartAt<long>(console, 16), -1);
  EXPECT_EQ(PartAt<long>(console, 24), -1);
  EXPECT_TRUE(PartAt<VRELFileDescriptorHandle>(console, 32).IsValid());
  EXPECT_TRUE(PartAt<VRELFileDescriptorHandle>(VRELFileOutputStream::console, 16).IsValid());
}

}  // namespace

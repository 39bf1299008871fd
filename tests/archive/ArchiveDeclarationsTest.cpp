// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELArchive.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "VRELArchiveException.h"
#include "VRELBlast.h"
#include "VRELString.h"
#include "VRELStringInputStream.h"

namespace {

static_assert(IsDeclared<int (VRELArchive::*)(char*, int)>(&VRELArchive::Read));
static_assert(IsDeclared<long (VRELArchive::*)() const>(&VRELArchive::GetBytesRead));
static_assert(IsDeclared<long (VRELArchive::*)()>(&VRELArchive::RestoreCount));
static_assert(IsDeclared<long (VRELArchive::*)()>(&VRELArchive::GetCStringLength));
static_assert(IsDeclared<void (VRELArchive::*)(VRELString&)>(&VRELArchive::RestoreCString));
static_assert(IsDeclared<VRINResult (VRELArchive::*)(VRELString&, unsigned short*)>(&VRELArchive::RestoreClassObject));
static_assert(IsDeclared<VRINResult (VRELArchive::*)(char const*, unsigned short*)>(&VRELArchive::RestoreClassObject));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(unsigned char&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(char&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(unsigned short&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(short&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(unsigned int&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(int&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(long&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(float&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<VRELArchive& (VRELArchive::*)(double&)>(&VRELArchive::operator>>));
static_assert(IsDeclared<int (*)(char const*)>(&VRELIsnan));
static_assert(IsDeclared<eVRELArchiveException (VRELArchiveException::*)() const>(&VRELArchiveException::GetCode));
static_assert(sizeof(VRELArchiveException) == 4 && !std::is_polymorphic_v<VRELArchiveException>);
static_assert(std::is_constructible_v<VRELArchive, VRELInputStream*> && !std::is_polymorphic_v<VRELArchive>);

static_assert(std::is_same_v<blast_in, unsigned (*)(void*, unsigned char**)>);
static_assert(std::is_same_v<blast_out, int (*)(void*, unsigned char*, unsigned)>);
static_assert(IsDeclared<int (*)(blast_in, void*, blast_out, void*)>(&blast));

TEST(ArchiveDeclarationsTest, FieldsByOffset) {
  VRELStringInputStream stream(Gk_String("abc"));
  VRELArchive archive(&stream);
  char byte = 0;
  archive >> byte;
  EXPECT_EQ(*reinterpret_cast<VRELInputStream* const*>(&archive), &stream);
  EXPECT_EQ(reinterpret_cast<long const*>(&archive)[1], 1);
}

}  // namespace

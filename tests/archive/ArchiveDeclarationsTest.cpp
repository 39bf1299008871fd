// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELArchive.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "VRELArchiveException.h"
#include "VRELBlast.h"
#include "VRELString.h"
#include "VRELStringInputStream.h"

namespace {

// Selects the overload with exactly this type.
template <class Member>
constexpr bool Declares(Member member) {
  return member != nullptr;
}

static_assert(Declares<int (VRELArchive::*)(char*, int)>(&VRELArchive::Read));
static_assert(Declares<long (VRELArchive::*)() const>(&VRELArchive::GetBytesRead));
static_assert(Declares<long (VRELArchive::*)()>(&VRELArchive::RestoreCount));
static_assert(Declares<long (VRELArchive::*)()>(&VRELArchive::GetCStringLength));
static_assert(Declares<void (VRELArchive::*)(VRELString&)>(&VRELArchive::RestoreCString));
static_assert(Declares<VRINResult (VRELArchive::*)(VRELString&, unsigned short*)>(&VRELArchive::RestoreClassObject));
static_assert(Declares<VRINResult (VRELArchive::*)(char const*, unsigned short*)>(&VRELArchive::RestoreClassObject));
static_assert(Declares<VRELArchive& (VRELArchive::*)(unsigned char&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(char&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(unsigned short&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(short&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(unsigned int&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(int&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(long&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(float&)>(&VRELArchive::operator>>));
static_assert(Declares<VRELArchive& (VRELArchive::*)(double&)>(&VRELArchive::operator>>));
static_assert(Declares<int (*)(char const*)>(&VRELIsnan));
static_assert(Declares<eVRELArchiveException (VRELArchiveException::*)() const>(&VRELArchiveException::GetCode));
static_assert(sizeof(VRELArchiveException) == 4 && !std::is_polymorphic_v<VRELArchiveException>);
static_assert(std::is_constructible_v<VRELArchive, VRELInputStream*> && !std::is_polymorphic_v<VRELArchive>);

static_assert(std::is_same_v<blast_in, unsigned (*)(void*, unsigned char**)>);
static_assert(std::is_same_v<blast_out, int (*)(void*, unsigned char*, unsigned)>);
static_assert(Declares<int (*)(blast_in, void*, blast_out, void*)>(&blast));

TEST(ArchiveDeclarationsTest, FieldsByOffset) {
  VRELStringInputStream stream(Gk_String("abc"));
  VRELArchive archive(&stream);
  char byte = 0;
  archive >> byte;
  EXPECT_EQ(*reinterpret_cast<VRELInputStream* const*>(&archive), &stream);
  EXPECT_EQ(reinterpret_cast<long const*>(&archive)[1], 1);
}

}  // namespace

// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELStreamFormatter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>
#include <utility>

#include "Gk_HTMLAnchor.h"
#include "Gk_HTMLEndline.h"
#include "Gk_HTMLMargin.h"
#include "Gk_HTMLSpace.h"
#include "Gk_HTMLTag.h"
#include "VRELHTMLStreamFormatter.h"
#include "VRELString.h"
#include "VRELValue.h"
#include "VirtualSlot.h"

namespace {

// Selects the overload with exactly this type.
template <class Member>
constexpr bool Declares(Member member) {
  return member != nullptr;
}

static_assert(Declares<void (VRELStreamFormatter::*)(char)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(int)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(unsigned int)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(long)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(unsigned long)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(double)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(void const*)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(VRELStreamFormatter::VRELStreamFormatterObject const*)>(
    &VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(VRELString const&)>(&VRELStreamFormatter::dump));
static_assert(Declares<void (VRELStreamFormatter::*)(VRELValue const&)>(&VRELStreamFormatter::dump));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(void const*)>(
    &VRELStreamFormatter::define));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(void const*)>(
    &VRELStreamFormatter::refer));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(long)>(
    &VRELStreamFormatter::define));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(long)>(
    &VRELStreamFormatter::refer));
static_assert(
    Declares<VRELOutputStream* (VRELStreamFormatter::*)(VRELOutputStream*)>(&VRELStreamFormatter::installOutputStream));
static_assert(Declares<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::resetFormat));
static_assert(Declares<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setIntFormat));
static_assert(Declares<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setUIntFormat));
static_assert(Declares<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setLongFormat));
static_assert(Declares<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setULongFormat));
static_assert(
    Declares<char const* (VRELStreamFormatter::*)(char const*, bool, int)>(&VRELStreamFormatter::setDoubleFormat));
static_assert(Declares<void (VRELStreamFormatter::*)(VRELRealTrailingZerosRemovalFormat const&)>(
    &VRELStreamFormatter::SetTrailingZerosRemovalFormat));
static_assert(Declares<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::RemoveTrailingZeros));
static_assert(Declares<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::KeepDecimalAndOneZeroForTrailingZeros));
static_assert(Declares<VRINResult (*)(VRELString const&, VRELString&)>(
    &VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterMarginHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::margin));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::space));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::endline));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::empty));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(char const*, ...)>(
    &VRELStreamFormatter::format));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterObject::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterObject::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterLong::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterLong::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterPtr::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterPtr::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterSpace::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterSpace::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterEndline::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterEndline::dump));
static_assert(Declares<void (Gk_HTMLTag::*)(VRELStreamFormatter&) const>(&Gk_HTMLTag::dump));
static_assert(Declares<void (Gk_HTMLAnchor::*)(VRELStreamFormatter&) const>(&Gk_HTMLAnchor::dump));
static_assert(Declares<void (Gk_HTMLEndline::*)(VRELStreamFormatter&) const>(&Gk_HTMLEndline::dump));
static_assert(Declares<void (Gk_HTMLSpace::*)(VRELStreamFormatter&) const>(&Gk_HTMLSpace::dump));
static_assert(Declares<void (Gk_HTMLMargin::*)(VRELStreamFormatter&) const>(&Gk_HTMLMargin::dump));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)()>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::incr));
static_assert(Declares<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)()>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::decr));
static_assert(Declares<void (Gk_HTMLMargin::*)()>(&Gk_HTMLMargin::incr));
static_assert(Declares<void (Gk_HTMLMargin::*)()>(&Gk_HTMLMargin::decr));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(void const*)>(
    &VRELHTMLStreamFormatter::define));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(void const*)>(
    &VRELHTMLStreamFormatter::refer));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(long)>(
    &VRELHTMLStreamFormatter::define));
static_assert(Declares<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(long)>(
    &VRELHTMLStreamFormatter::refer));

using Inserter = VRELStreamFormatter&;
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << char()), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << int()), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << 0U), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << 0L), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << 0UL), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << 0.0), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << ""), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << std::declval<VRELString const&>()), Inserter>);
static_assert(std::is_same_v<decltype(std::declval<Inserter>() << std::declval<VRELValue const&>()), Inserter>);
static_assert(std::is_base_of_v<VRELStreamFormatter, VRELHTMLStreamFormatter>);
static_assert(std::is_base_of_v<VRELReferenceCount, VRELStreamFormatter::VRELStreamFormatterObject>);
static_assert(std::is_base_of_v<VRELStreamFormatter::VRELStreamFormatterMargin, Gk_HTMLMargin>);
static_assert(std::is_same_v<std::underlying_type_t<VRELRealTrailingZerosRemovalFormat>, int>);
static_assert(VREL_TRAILING_ZEROS_KEPT == 0 && VREL_TRAILING_ZEROS_REMOVED == 1);

TEST(FormatterDeclarationsTest, VirtualSlotsOfFormatObjects) {
  using Object = VRELStreamFormatter::VRELStreamFormatterObject;
  using Margin = VRELStreamFormatter::VRELStreamFormatterMargin;
  // After the destructors, RaiseReference, LowerReference and GetName.
  EXPECT_EQ(SlotOf(&Object::dump), 5U);
  EXPECT_EQ(SlotOf(&Margin::dump), 5U);
  EXPECT_EQ(SlotOf(&Margin::incr), 6U);
  EXPECT_EQ(SlotOf(&Margin::decr), 7U);
  EXPECT_EQ(SlotOf(&Gk_HTMLMargin::incr), 6U);
  EXPECT_EQ(SlotOf(&Gk_HTMLMargin::decr), 7U);
}

}  // namespace

// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELStreamFormatter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>
#include <utility>

#include "Declaration.h"
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

static_assert(IsDeclared<void (VRELStreamFormatter::*)(char)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(int)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(unsigned int)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(long)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(unsigned long)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(double)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(void const*)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(VRELStreamFormatter::VRELStreamFormatterObject const*)>(
    &VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(VRELString const&)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(VRELValue const&)>(&VRELStreamFormatter::dump));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(void const*)>(
    &VRELStreamFormatter::define));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(void const*)>(
    &VRELStreamFormatter::refer));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(long)>(
    &VRELStreamFormatter::define));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(long)>(
    &VRELStreamFormatter::refer));
static_assert(IsDeclared<VRELOutputStream* (VRELStreamFormatter::*)(VRELOutputStream*)>(
    &VRELStreamFormatter::installOutputStream));
static_assert(IsDeclared<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::resetFormat));
static_assert(IsDeclared<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setIntFormat));
static_assert(IsDeclared<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setUIntFormat));
static_assert(IsDeclared<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setLongFormat));
static_assert(IsDeclared<char const* (VRELStreamFormatter::*)(char const*)>(&VRELStreamFormatter::setULongFormat));
static_assert(
    IsDeclared<char const* (VRELStreamFormatter::*)(char const*, bool, int)>(&VRELStreamFormatter::setDoubleFormat));
static_assert(IsDeclared<void (VRELStreamFormatter::*)(VRELRealTrailingZerosRemovalFormat const&)>(
    &VRELStreamFormatter::SetTrailingZerosRemovalFormat));
static_assert(IsDeclared<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::RemoveTrailingZeros));
static_assert(IsDeclared<void (VRELStreamFormatter::*)()>(&VRELStreamFormatter::KeepDecimalAndOneZeroForTrailingZeros));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, VRELString&)>(
    &VRELStreamFormatter::TruncateTrailingZeroesKeepingDecimalAndOneZero));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterMarginHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::margin));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::space));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::endline));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle& (VRELStreamFormatter::*)()>(
    &VRELStreamFormatter::empty));
static_assert(
    IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELStreamFormatter::*)(char const*, ...)>(
        &VRELStreamFormatter::format));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterObject::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterObject::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterLong::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterLong::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterPtr::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterPtr::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterSpace::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterSpace::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterEndline::*)(VRELStreamFormatter&) const>(
    &VRELStreamFormatter::VRELStreamFormatterEndline::dump));
static_assert(IsDeclared<void (Gk_HTMLTag::*)(VRELStreamFormatter&) const>(&Gk_HTMLTag::dump));
static_assert(IsDeclared<void (Gk_HTMLAnchor::*)(VRELStreamFormatter&) const>(&Gk_HTMLAnchor::dump));
static_assert(IsDeclared<void (Gk_HTMLEndline::*)(VRELStreamFormatter&) const>(&Gk_HTMLEndline::dump));
static_assert(IsDeclared<void (Gk_HTMLSpace::*)(VRELStreamFormatter&) const>(&Gk_HTMLSpace::dump));
static_assert(IsDeclared<void (Gk_HTMLMargin::*)(VRELStreamFormatter&) const>(&Gk_HTMLMargin::dump));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)()>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::incr));
static_assert(IsDeclared<void (VRELStreamFormatter::VRELStreamFormatterMargin::*)()>(
    &VRELStreamFormatter::VRELStreamFormatterMargin::decr));
static_assert(IsDeclared<void (Gk_HTMLMargin::*)()>(&Gk_HTMLMargin::incr));
static_assert(IsDeclared<void (Gk_HTMLMargin::*)()>(&Gk_HTMLMargin::decr));
static_assert(
    IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(void const*)>(
        &VRELHTMLStreamFormatter::define));
static_assert(
    IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(void const*)>(
        &VRELHTMLStreamFormatter::refer));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(long)>(
    &VRELHTMLStreamFormatter::define));
static_assert(IsDeclared<VRELStreamFormatter::VRELStreamFormatterObjectHandle (VRELHTMLStreamFormatter::*)(long)>(
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

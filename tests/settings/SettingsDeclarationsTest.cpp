// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELProperties.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

#include "Declaration.h"
#include "Gk_Source.h"
#include "VRELArgs.h"
#include "VRELEnvironment.h"
#include "VRELOptionConstants.h"
#include "VRELOptionName.h"
#include "VRELStreamFormatter.h"
#include "VirtualSlot.h"

namespace {

static_assert(IsDeclared<VRINResult (VRELProperties::*)(VRELString const&, VRELValue&) const>(&VRELProperties::Get));
static_assert(IsDeclared<VRINResult (VRELProperties::*)(VRELString const&, VRELValue const&)>(&VRELProperties::Set));
static_assert(IsDeclared<VRINResult (VRELProperties::*)(VRELString const&)>(&VRELProperties::Set));
static_assert(IsDeclared<int (VRELProperties::*)() const>(&VRELProperties::GetCount));
static_assert(IsDeclared<VRINResult (VRELProperties::*)(int, VRELString&, VRELValue&) const>(&VRELProperties::Get));
static_assert(IsDeclared<VRELEnvironment* (*)()>(&VRELEnvironment::GetEnv));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, VRELString&)>(&VRELEnvironment::GetVariable));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, int&)>(&VRELEnvironment::GetVariable));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, bool&)>(&VRELEnvironment::GetVariable));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, VRELString&)>(&VRELEnvironment::PutVariable));
static_assert(IsDeclared<char* (VRELArgs::*)()>(&VRELArgs::GetNextArg));
static_assert(IsDeclared<bool (VRELArgs::*)() const>(&VRELArgs::AreThereOneMoreOptions));
static_assert(IsDeclared<bool (VRELArgs::*)(char**)>(&VRELArgs::GetOptionArgument));
static_assert(IsDeclared<bool (VRELArgs::*)()>(&VRELArgs::Shift));
static_assert(IsDeclared<bool (VRELArgs::*)(int, char**, char, int*) const>(&VRELArgs::IsLetterAnOption));
static_assert(IsDeclared<bool (VRELArgs::*)(int, char**, char*, int*)>(&VRELArgs::IsAnOption));
static_assert(IsDeclared<bool (VRELArgs::*)(int, char**, int*)>(&VRELArgs::GetNextOption));
static_assert(IsDeclared<VRINResult (*)(VRELString const&, VRELString const&, int&)>(&VRELOptionName::Match));
static_assert(IsDeclared<VRINResult (*)(VRELString const&)>(&VRELOptionName::IsValid));
static_assert(IsDeclared<VRELStreamFormatter& (*)(VRELStreamFormatter&, VRELProperties&)>(&operator<<));
static_assert(IsDeclared<Gk_Source& (*)(Gk_Source&, VRELProperties&)>(&operator>>));
static_assert(std::is_same_v<decltype(VRELEnvironment::_pVariables), VRELEnvironment*>);
static_assert(std::is_same_v<decltype(VRELOptionName::_optionNames), VRELDynamicArray<VRELOptionName*>>);
static_assert(std::is_same_v<decltype(VRELOptionName::AuthorName), VRELOptionName>);
static_assert(std::is_convertible_v<VRELString const&, VRELOptionName>);
static_assert(std::is_convertible_v<VRELOptionName const&, VRELString>);
static_assert(std::is_base_of_v<VRELReferenceCount, VRELProperties>);
static_assert(std::is_base_of_v<VRELProperties, VRELEnvironment>);
static_assert(std::is_constructible_v<VRELArgs, int, char**>);
static_assert(std::is_same_v<decltype(VREL_OPTION_WILDCARD), VRELString const>);
static_assert(VREL_OPTION_TOKENS == 7 && VREL_OPTION_SEPARATOR == L'.');
static_assert(VREL_OPTION_EXACT_MATCH == 0 && VREL_OPTION_NO_MATCH == 65535);

TEST(SettingsDeclarationsTest, VirtualSlotsOfEnvironment) {
  VRINResult (VRELEnvironment::*const get)(VRELString const&, VRELValue&) const = &VRELEnvironment::Get;
  EXPECT_EQ(SlotOf(get), 5U);
  EXPECT_EQ(SlotOf(&VRELEnvironment::GetCount), 8U);
}

}  // namespace

// The declarations that clients compile against, checked at compile time. Exact types: a changed parameter, result,
// const or static does not compile.
#include "VRELOptions.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>

#include "Declaration.h"
#include "Gk_Nest.h"
#include "Gk_Option.h"
#include "Gk_OptionDoc.h"
#include "VRELCfgFile.h"
#include "VRELFilePath.h"
#include "VRELOption.h"
#include "VRELOptionToken.h"
#include "VRELOptionsArray.h"
#include "VRELRoloTraits.h"

namespace {

static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELValue::VRELValueType&) const>(&VRELOption::GetValueType));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString&) const>(&VRELOption::GetName));
static_assert(IsDeclared<VRINResult (VRELOption::*)(bool&) const>(&VRELOption::IsPrivate));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString const&)>(&VRELOption::ChangeName));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELValue&) const>(&VRELOption::GetDefaultValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString&) const>(&VRELOption::GetDefaultValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(bool&) const>(&VRELOption::GetDefaultValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(double&) const>(&VRELOption::GetDefaultValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(int&) const>(&VRELOption::GetDefaultValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELValue&) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString&) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(bool&) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(double&) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(int&) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString&, bool) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(bool&, bool) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(double&, bool) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(int&, bool) const>(&VRELOption::GetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELValue const&)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(VRELString const&)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(bool)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(double)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(int)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(char const*)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(wchar_t const*)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(std::string const&)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRINResult (VRELOption::*)(std::string_view)>(&VRELOption::SetValue));
static_assert(IsDeclared<VRELOption& (VRELOption::*)(VRELOption const&)>(&VRELOption::operator=));
static_assert(IsDeclared<VRELString (*)(VRELString const&)>(&formEnvVarName));
static_assert(std::is_constructible_v<VRELOption, VRELOptionName const&, VRELValue&, bool>);
static_assert(std::is_constructible_v<VRELOption, VRELOptionName const&, VRELString&, bool>);
static_assert(std::is_constructible_v<VRELOption, VRELOptionName const&, bool, bool>);
static_assert(std::is_constructible_v<VRELOption, VRELOptionName const&, double, bool>);
static_assert(std::is_constructible_v<VRELOption, VRELOptionName const&, int, bool>);
static_assert(!std::is_constructible_v<VRELOption, VRELOptionName const&, void const*, bool>);
static_assert(!std::is_polymorphic_v<VRELOption>);

static_assert(IsDeclared<VRINResult (VRELOptionToken::*)(VRELString const&, VRELOptionToken*&) const>(
    &VRELOptionToken::GetToken));
static_assert(
    IsDeclared<VRINResult (VRELOptionToken::*)(VRELString const&, VRELOptionToken*&)>(&VRELOptionToken::AddToken));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)(VRELOption*&) const>(&VRELOptionToken::GetOption));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)(VRELOption*)>(&VRELOptionToken::SetOption));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)(VRELOptionToken*&) const>(&VRELOptionToken::GetParent));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)() const>(&VRELOptionToken::InitEnumeration));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)(VRELOptionToken*&) const>(&VRELOptionToken::GetNextChild));
static_assert(IsDeclared<VRINResult (VRELOptionToken::*)()>(&VRELOptionToken::RemoveAll));
static_assert(IsDeclared<unsigned int (*)(VRELString const&)>(&VRELOptionToken::GetHashValue));
static_assert(IsDeclared<bool (*)(VRELString const&, VRELString const&)>(&VRELOptionToken::HashEqualFunction));

static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELOption const*)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELOption const&)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, VRELString const&)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, char const*)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, double)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, int)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, bool)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, wchar_t const*)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, std::string const&)>(&VRELOptions::AddOption));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, std::string_view)>(&VRELOptions::AddOption));
static_assert(
    IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, VRELString const&)>(&VRELOptions::AddOptionParseValue));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELOptions&, bool)>(&VRELOptions::AddOptions));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&, VRELOption*&) const>(&VRELOptions::GetOption));
static_assert(IsDeclared<bool (VRELOptions::*)(VRELOption const&) const>(&VRELOptions::HasOption));
static_assert(IsDeclared<int (VRELOptions::*)() const>(&VRELOptions::Size));
static_assert(IsDeclared<void (VRELOptions::*)() const>(&VRELOptions::InitEnumeration));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELOption*&) const>(&VRELOptions::GetNext));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELOptionToken*&) const>(&VRELOptions::GetNext));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(VRELString const&)>(&VRELOptions::ReadFromFile));
static_assert(IsDeclared<VRINResult (VRELOptions::*)(std::FILE*)>(&VRELOptions::ReadFromFile));
static_assert(IsDeclared<void (VRELOptions::*)(char const*, char const*, char const*) const>(&VRELOptions::Dump));
static_assert(IsDeclared<void (VRELOptions::*)(VRELStreamFormatter&) const>(&VRELOptions::DumpOptions));
static_assert(IsDeclared<VRINResult (VRELOptions::*)()>(&VRELOptions::RemoveAll));

static_assert(IsDeclared<VRINResult (VRELCfgFile::*)(std::FILE*)>(&VRELCfgFile::Load));
static_assert(IsDeclared<VRINResult (VRELCfgFile::*)(VRELFilePath const&)>(&VRELCfgFile::Load));
static_assert(IsDeclared<VRELCfgFileSection* (VRELCfgFile::*)(char const*) const>(&VRELCfgFile::findSection));
static_assert(IsDeclared<VRELCfgFileSection* (VRELCfgFile::*)(char const*)>(&VRELCfgFile::createSection));
static_assert(IsDeclared<int (VRELCfgFile::*)() const>(&VRELCfgFile::GetErrorCount));
static_assert(IsDeclared<char const* (VRELCfgFile::*)(int) const>(&VRELCfgFile::GetErrorMessage));
static_assert(IsDeclared<void (*)(char*)>(&VRELCfgFile::removeWhiteSpaces));
static_assert(IsDeclared<bool (VRELCfgFile::*)(char const*, char const*) const>(&VRELCfgFile::ExistKey));
static_assert(IsDeclared<int (VRELCfgFile::*)(char const*, char const*) const>(&VRELCfgFile::GetArraySize));
static_assert(
    IsDeclared<int (VRELCfgFile::*)(char const*, VRELString&, int, char const*) const>(&VRELCfgFile::GetString));
static_assert(IsDeclared<int (VRELCfgFile::*)(char const*, double&, int, char const*)>(&VRELCfgFile::GetDouble));
static_assert(IsDeclared<int (VRELCfgFile::*)(char const*, int&, int, char const*)>(&VRELCfgFile::GetInt));
static_assert(IsDeclared<int (VRELCfgFile::*)(char const*, int&, int, char const*)>(&VRELCfgFile::GetLogical));
static_assert(IsDeclared<int (VRELCfgFile::*)(char const*, bool&, int, char const*)>(&VRELCfgFile::GetBool));
static_assert(IsDeclared<void (VRELCfgFile::*)(char const*, ...)>(&VRELCfgFile::flagError));
static_assert(IsDeclared<Gk_String const& (VRELCfgFileSection::*)() const>(&VRELCfgFileSection::GetSectionName));
static_assert(IsDeclared<int (VRELCfgFileSection::*)() const>(&VRELCfgFileSection::GetNumKeys));
static_assert(IsDeclared<VRELCfgFileKey* (VRELCfgFileSection::*)(int) const>(&VRELCfgFileSection::GetKey));
static_assert(IsDeclared<VRELCfgFileKey* (VRELCfgFileSection::*)(char const*) const>(&VRELCfgFileSection::findKey));
static_assert(IsDeclared<VRELCfgFileKey* (VRELCfgFileSection::*)(char const*)>(&VRELCfgFileSection::createKey));
static_assert(IsDeclared<VRELString const& (VRELCfgFileKey::*)() const>(&VRELCfgFileKey::GetName));
static_assert(IsDeclared<int (VRELCfgFileKey::*)() const>(&VRELCfgFileKey::GetNumValues));
static_assert(IsDeclared<VRELString (VRELCfgFileKey::*)(int) const>(&VRELCfgFileKey::GetValue));
static_assert(IsDeclared<void (VRELCfgFileKey::*)(char const*)>(&VRELCfgFileKey::AppendValue));
static_assert(IsDeclared<VRELString (VRELCfgFileKey::*)() const>(&VRELCfgFileKey::GetAllValues));
static_assert(std::has_virtual_destructor_v<VRELCfgFile> && std::has_virtual_destructor_v<VRELCfgFileSection>);
static_assert(std::has_virtual_destructor_v<VRELCfgFileKey> && std::has_virtual_destructor_v<VRELOptionsArray>);

static_assert(IsDeclared<void (Gk_Option::*)(Gk_String const&)>(&Gk_Option::setValue));
static_assert(IsDeclared<Gk_String const& (Gk_Option::*)()>(&Gk_Option::getValue));
static_assert(IsDeclared<VRINResult (Gk_Option::*)(VRELString, char const*)>(&Gk_Option::set));
static_assert(IsDeclared<VRINResult (Gk_Option::*)(bool, char const*)>(&Gk_Option::set));
static_assert(IsDeclared<VRINResult (Gk_Option::*)(double, char const*)>(&Gk_Option::set));
static_assert(IsDeclared<VRINResult (Gk_Option::*)(int, char const*)>(&Gk_Option::set));
static_assert(IsDeclared<double (Gk_Option::*)() const>(&Gk_Option::value));
static_assert(IsDeclared<int (Gk_Option::*)() const>(&Gk_Option::count));
static_assert(IsDeclared<bool (Gk_Option::*)() const>(&Gk_Option::on));
static_assert(IsDeclared<char const* (Gk_Option::*)()>(&Gk_Option::string));
static_assert(IsDeclared<VRELString (Gk_Option::*)() const>(&Gk_Option::getVRELString));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&, bool)>(&Gk_Option::fetch));
static_assert(IsDeclared<Gk_Nest& (*)()>(&Gk_Nest::fetchRoot));
static_assert(IsDeclared<Gk_Nest* (*)(Gk_ROString*, bool)>(&Gk_Nest::fetch));
static_assert(IsDeclared<Gk_Option* (*)(Gk_ROString const&, bool)>(&Gk_Nest::fetchOption));
static_assert(IsDeclared<Gk_Observable* (*)(Gk_ROString const&, bool)>(&Gk_Nest::fetchObservable));
static_assert(IsDeclared<VRELDynamicArray<Gk_Option*> const& (Gk_Nest::*)() const>(&Gk_Nest::getOptions));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&)>(&Gk_OptionDoc::fetchOption));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&, VRELString const&, char const*)>(&Gk_OptionDoc::addOption));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&, bool, char const*)>(&Gk_OptionDoc::addOption));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&, double, char const*)>(&Gk_OptionDoc::addOption));
static_assert(IsDeclared<Gk_Option* (*)(VRELString const&, int, char const*)>(&Gk_OptionDoc::addOption));
static_assert(IsDeclared<VRELDynamicArray<Gk_Option*> (*)(Gk_ROString const&)>(&Gk_OptionDoc::fetchOptions));
static_assert(IsDeclared<void (*)(Gk_ROString const&, VRELOptions&)>(&Gk_OptionDoc::FetchAllComponentOptions));
static_assert(IsDeclared<void (*)(VRELString const&, VRELString const&)>(&Gk_OptionDoc::SynchOptionsBetweenComponents));
static_assert(IsDeclared<void (*)(VRELRoloNode*, VRELString&, VRELOptions&)>(&GetAllOptionsUnderNode));
static_assert(IsDeclared<VRELRoloNode* (*)(Gk_ROString*, bool, bool)>(&VRELRoloTraits::fetch));
static_assert(std::is_base_of_v<VRELOption, Gk_Option> && std::is_base_of_v<VRELRoloNode, Gk_Nest>);
static_assert(std::is_constructible_v<Gk_Option, Gk_Option&>);

TEST(OptionDeclarationsTest, FieldsByOffset) {
  VRELOptionName const name(L"Test.Fields");
  VRELOption const option(name, 5, true);
  auto const* const bytes = reinterpret_cast<char const*>(&option);
  int value = 0;
  EXPECT_EQ(reinterpret_cast<VRELValue const*>(bytes)->GetValue(value), VREL_S_OK);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(reinterpret_cast<VRELValue const*>(bytes + sizeof(VRELValue))->GetValue(value), VREL_S_OK);
  EXPECT_EQ(value, 5);
  EXPECT_TRUE(reinterpret_cast<VRELString const*>(bytes + 2 * sizeof(VRELValue))->equals(L"Test.Fields"));
  EXPECT_TRUE(*reinterpret_cast<bool const*>(bytes + 2 * sizeof(VRELValue) + sizeof(VRELString)));

  // Children, parent, cursor, wildcard child, option.
  VRELOptionToken root(nullptr);
  VRELOptionToken* child = nullptr;
  root.AddToken(L"*", child);
  VRELOption* const stored = new VRELOption(option);
  child->SetOption(stored);
  auto const* const words = reinterpret_cast<void* const*>(child);
  EXPECT_EQ(words[1], &root);
  EXPECT_EQ(words[4], stored);
  EXPECT_EQ(reinterpret_cast<void* const*>(&root)[3], child);
  EXPECT_EQ(sizeof(VRELOptionToken), 40U);
  root.RemoveAll();

  // Root, current, size.
  VRELOptions options;
  options.AddOption(option);
  EXPECT_NE(*reinterpret_cast<void* const*>(&options), nullptr);
  EXPECT_EQ(reinterpret_cast<void* const*>(&options)[1], nullptr);
  EXPECT_EQ(reinterpret_cast<int const*>(&options)[4], 1);
}

}  // namespace

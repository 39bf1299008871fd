#include "VRINOptionName.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "NameList.h"
#include "PublicObject.h"

namespace {

std::vector<ListedName> Listed() {
  return ReadNameList("public/VRINOptionNames.def");
}

struct NameRow {
  VRINName const* member;
  char const* text;
  int number;  // of the object, in order of construction
};

TEST(VRINOptionNameListTest, NamesAreUniqueAndMatchIdentifiers) {
  std::set<std::string> texts;
  for (ListedName const& name : Listed()) {
    EXPECT_TRUE(texts.insert(name.text).second) << name.text;
    bool const beginsWithDigit = name.text[0] == '3';
    EXPECT_EQ(name.identifier, beginsWithDigit ? "ThreeD" + name.text.substr(2) : name.text);
  }
  EXPECT_EQ(texts.size(), 162U);
}

// Applications use these strings.
TEST(VRINOptionNameListTest, StringsAndOrderAreFixed) {
  EXPECT_EQ(FingerprintOf(Listed()), 0xE308BD591E505C4EU);
}

TEST(VRINOptionNameTest, MembersHaveStringsAndNumbers) {
  NameRow const rows[] = {
      {&VRINOptionName::Representation, "Representation", 1},
      {&VRINOptionName::ConvertAttributes, "ConvertAttributes", 2},
      {&VRINOptionName::RecordingSession, "RecordingSession", 3},
      {&VRINOptionName::AngleUnit, "AngleUnit", 6},
      {&VRINOptionName::CleanModel, "CleanModel", 11},
      {&VRINOptionName::ThreeDCurvePref, "3DCurvePref", 87},
      {&VRINOptionName::ThreeDCurveRegen, "3DCurveRegen", 88},
      {&VRINOptionName::ReadVisibleLayerOnly, "ReadVisibleLayerOnly", 161},
      {&VRINOptionName::EnableMissingComponentsData, "EnableMissingComponentsData", 162},
      {&VRINComponentName::Any, "*", 163},
      {&VRINComponentName::Morl, "Morl", 164},
      {&VRINComponentName::PeltaR4, "PeltaR4", 165},
      {&VRINComponentName::PeltaR5, "PeltaR5", 166},
      {&VRINComponentName::EBOM, "EBOM", 167},
      {&VRINComponentName::Generic, "Generic", 168},
      {&VRINComponentName::HSF, "HSF", 169},
      {&VRINComponentName::IDEAS, "IDEAS", 170},
      {&VRINComponentName::IGES, "IGES", 171},
      {&VRINComponentName::JT, "JT", 172},
      {&VRINComponentName::Hardwerk, "Hardwerk", 173},
      {&VRINComponentName::Step, "Step", 174},
      {&VRINComponentName::UG, "UG", 175},
      {&VRINComponentName::Vda, "Vda", 176},
      {&VRINComponentName::Proe, "Proe", 177},
      {&VRINComponentName::Inventor, "Inventor", 178},
      {&VRINReaderWriterName::Any, "*", 179},
      {&VRINReaderWriterName::Reader, "Reader", 180},
      {&VRINReaderWriterName::Writer, "Writer", 181},
      {&VRINRepresentationName::Any, "*", 182},
      {&VRINRepresentationName::Assembly, "Assembly", 183},
      {&VRINRepresentationName::BRep, "BRep", 184},
      {&VRINRepresentationName::Mesh, "Mesh", 185},
      {&VRINRepresentationName::Visualization, "Visualization", 186},
  };
  for (NameRow const& row : rows) {
    SCOPED_TRACE(row.number);
    EXPECT_TRUE(row.member->IsValid());
    EXPECT_EQ(NameText(*row.member), row.text);
    EXPECT_EQ(DiagnosticName(*row.member), "VRINName[" + std::to_string(row.number) + "]");
  }
}

TEST(VRINOptionNameTest, MembersAreConstructedInListOrder) {
  std::vector<VRINName const*> members;
#define VREL_NAME(identifier, text) members.push_back(&VRINOptionName::identifier);
#include "VRINOptionNames.def"
  std::vector<ListedName> const listed = Listed();
  ASSERT_EQ(members.size(), listed.size());
  for (std::size_t i = 0; i < members.size(); ++i) {
    EXPECT_EQ(NameText(*members[i]), listed[i].text);
    EXPECT_EQ(DiagnosticName(*members[i]), "VRINName[" + std::to_string(i + 1) + "]");
  }
}

TEST(VRINOptionNameTest, StoresString) {
  VRINOptionName const name("MySetting");
  EXPECT_TRUE(name.IsValid());
  EXPECT_EQ(NameText(name), "MySetting");
  EXPECT_EQ(NameText(VRINOptionName(static_cast<char const*>(nullptr))), "");
}

TEST(VRINOptionNameTest, CreatesOneObject) {
  int const before = VRINObjectImpl::_objectCounter;
  VRINOptionName const first("a");
  VRINOptionName const second(VRINComponentName::Step, first);
  EXPECT_EQ(DiagnosticName(first), "VRINName[" + std::to_string(before + 1) + "]");
  EXPECT_EQ(DiagnosticName(second), "VRINName[" + std::to_string(before + 2) + "]");
}

TEST(VRINOptionNameTest, CopyHasOwnString) {
  VRINOptionName first("a");
  VRINOptionName const second(first);
  EXPECT_NE(first.GetData(), second.GetData());
  EXPECT_EQ(UseCount(first), 1);
  ImplOf<VRINNameImpl>(first)->SetName(VRELString(L"b"));
  EXPECT_EQ(NameText(second), "a");
  VRINOptionName third("c");
  third = first;
  EXPECT_EQ(third.GetData(), first.GetData());
  EXPECT_EQ(UseCount(first), 2);
}

TEST(VRINOptionNameTest, JoinsPaths) {
  VRINOptionName const& option = VRINOptionName::Representation;
  EXPECT_EQ(NameText(VRINOptionName(VRINComponentName::Step, option)), "Step.Representation");
  EXPECT_EQ(NameText(VRINOptionName(VRINComponentName::Step, VRINRepresentationName::Mesh, option)),
            "Step.Mesh.Representation");
  EXPECT_EQ(NameText(VRINOptionName(VRINComponentName::PeltaR5, VRINRepresentationName::BRep,
                                    VRINReaderWriterName::Writer, option)),
            "PeltaR5.BRep.Writer.Representation");
  EXPECT_EQ(NameText(VRINOptionName(VRINComponentName::Any, VRINRepresentationName::Assembly,
                                    VRINReaderWriterName::Reader, option)),
            "*.Assembly.Reader.Representation");
  EXPECT_EQ(NameText(VRINOptionName(VRINComponentName("My"), VRINRepresentationName("Own"),
                                    VRINReaderWriterName("Pass"), VRINOptionName("Thing.Depth"))),
            "My.Own.Pass.Thing.Depth");
}

TEST(VRINOptionNameTest, InvalidPartKeepsDot) {
  VRINComponentName component("c");
  VRINRepresentationName representation("r");
  VRINReaderWriterName direction("d");
  VRINOptionName option("o");
  representation.SetData(nullptr);
  EXPECT_EQ(NameText(VRINOptionName(component, representation, direction, option)), "c..d.o");
  component.SetData(nullptr);
  direction.SetData(nullptr);
  option.SetData(nullptr);
  EXPECT_EQ(NameText(VRINOptionName(component, option)), ".");
  EXPECT_EQ(NameText(VRINOptionName(component, representation, option)), "..");
  EXPECT_EQ(NameText(VRINOptionName(component, representation, direction, option)), "...");
  VRINOptionName const copy(option);
  EXPECT_TRUE(copy.IsValid());
  EXPECT_EQ(NameText(copy), "");
}

}  // namespace

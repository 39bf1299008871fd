#include "VRELError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RecordingListener.h"
#include "StreamText.h"
#include "VirtualSlot.h"

namespace {

std::string DescriptionOf(VRELError& error) {
  VRELString description(L"before");
  EXPECT_EQ(error.GetDescription(description), VREL_S_OK);
  return description.toUtf8();
}

TEST(VRELErrorTest, ConstructorsSetFields) {
  VRELError none;
  EXPECT_EQ(none.GetErrorType(), VREL_UNDETERMINED);
  EXPECT_EQ(DescriptionOf(none), "");
  EXPECT_EQ(none.GetSourceFile().toUtf8(), "");
  EXPECT_EQ(none.GetSourceLine(), 0);

  VRELError typed(VREL_E_FILE_OPEN);
  EXPECT_EQ(typed.GetErrorType(), 0x100000E);
  EXPECT_EQ(DescriptionOf(typed), "");

  VRELError described(5, VRELString(L"no such face"));
  EXPECT_EQ(described.GetErrorType(), 5);
  EXPECT_EQ(DescriptionOf(described), "no such face");
}

TEST(VRELErrorTest, SetsDescription) {
  VRELError error(5);
  VRELString text(L"K\u00F6rper");
  EXPECT_EQ(error.SetDescription(text), VREL_S_OK);
  text = VRELString(L"other");
  EXPECT_EQ(DescriptionOf(error), "K\u00F6rper");
}

TEST(VRELErrorTest, SetsSourceFileInfo) {
  VRELError error(5);
  char file[] = "reader.cpp";
  error.SetSourceFileInfo(file, 17);
  file[0] = 'X';
  EXPECT_EQ(error.GetSourceFile().toUtf8(), "reader.cpp");
  EXPECT_EQ(error.GetSourceLine(), 17);
  error.SetSourceFileInfo(nullptr, -1);
  EXPECT_EQ(error.GetSourceFile().toUtf8(), "");
  EXPECT_EQ(error.GetSourceLine(), -1);
}

TEST(VRELErrorTest, CopiesAllFields) {
  VRELError source(5, VRELString(L"text"));
  source.SetSourceFileInfo("reader.cpp", 17);
  VRELError copy(source);
  VRELError assigned;
  assigned = source;
  VRELString other(L"other");
  source.SetDescription(other);
  for (VRELError* each : {&copy, &assigned}) {
    EXPECT_EQ(each->GetErrorType(), 5);
    EXPECT_EQ(DescriptionOf(*each), "text");
    EXPECT_EQ(each->GetSourceFile().toUtf8(), "reader.cpp");
    EXPECT_EQ(each->GetSourceLine(), 17);
  }
}

TEST(VRELErrorTest, FailErrorExistsAtStart) {
  EXPECT_EQ(VRELError::FAIL_ERROR.GetErrorType(), 16777217);
  EXPECT_EQ(DescriptionOf(VRELError::FAIL_ERROR), "");
}

TEST(VRELErrorTest, PrintfDoesNotIndent) {
  RecordingListener const listener;
  VRELError::Printf("%s %d", "text", 5);
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].level, 80);
  EXPECT_EQ(listener.events[0].text, "text 5");
}

TEST(VRELErrorTest, CFunctionPrints) {
  RecordingListener const listener;
  VRELError_Printf("%s %d", "text", 5);
  char const* const null = nullptr;
  VRELError_Printf(null);
  ASSERT_EQ(listener.events.size(), 1u);
  EXPECT_EQ(listener.events[0].name, "VRELErrorEvent");
  EXPECT_EQ(listener.events[0].level, 80);
  EXPECT_EQ(listener.events[0].text, "text 5");
}

TEST(VRELErrorTest, HasOnlyListedFields) {
  struct Fields {
    virtual ~Fields() = default;
    long type;
    VRELString description;
    VRELString sourceFile;
    int sourceLine;
  };
  EXPECT_EQ(sizeof(VRELError), sizeof(Fields));
}

std::string Description(VRELError error) {
  return TextOf([&](VRELOutputStream* stream) { error.GetFormattedDescription(stream); });
}

TEST(VRELErrorTest, WritesDescription) {
  EXPECT_EQ(Description(VRELError(5, VRELString(L"no such face"))), "Error Description : no such face\n");
  EXPECT_EQ(Description(VRELError(-1, VRELString(L" "))), "Error Description :  \n");
}

TEST(VRELErrorTest, WritesTypeWithoutDescription) {
  EXPECT_EQ(Description(VRELError(5)), "Error 5\n");
  EXPECT_EQ(Description(VRELError(VREL_E_FAIL)), "Error 16777217\n");
  EXPECT_EQ(Description(VRELError(-7)), "Error -7\n");
  // Printed as an int.
  EXPECT_EQ(Description(VRELError(0x100000003)), "Error 3\n");
}

TEST(VRELErrorTest, WritesNothingForTypeZero) {
  EXPECT_EQ(Description(VRELError(0)), "");
  EXPECT_EQ(Description(VRELError(0, VRELString(L"no such face"))), "");
}

TEST(VRELErrorTest, VirtualFunctionsHaveSlots) {
  EXPECT_EQ(SlotOf(&VRELError::SetDescription), 2u);
  EXPECT_EQ(SlotOf(&VRELError::GetDescription), 3u);
  EXPECT_EQ(SlotOf(&VRELError::GetFormattedDescription), 4u);
}

}  // namespace

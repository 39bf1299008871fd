#include "FormatModule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Document.h"
#include "RecordingListener.h"
#include "TestDocument.h"
#include "VRELFormatReaderHandle.h"
#include "VRELLibraryManager.h"

TEST(FormatModuleTest, OpensDocument) {
  FormatModule module(*Format::Named("step"));
  EXPECT_EQ(module.FindReader(), VREL_S_OK);
  EXPECT_EQ(module.FindWriter(), VREL_S_OK);
  BrivetOpenRequest request;
  request.file = VRELFileHandle(new VRELFile(BracketPath().c_str()));
  request.shownName = "bracket.stp";
  EXPECT_EQ(module.Open(request), VREL_S_OK);
  ASSERT_NE(request.document, nullptr);
  VRELFormatReaderHandle const document(request.document);
  EXPECT_EQ(request.document->GetInstanceCount(), 0);
}

TEST(FormatModuleTest, ReportsLoaderMessage) {
  constexpr Format kMissing = {"iges", "IGES", "BrivetIges", ".igs", " .igs "};
  FormatModule module(kMissing);
  RecordingListener const listener;
  EXPECT_EQ(module.FindReader(), VREL_E_NOT_SUPPORTED);
  ASSERT_EQ(listener.events.size(), 3U);
  EXPECT_EQ(listener.events[0].text, "BrivetIges library not loaded.");
  EXPECT_THAT(listener.events[1].text,
              testing::MatchesRegex("cannot load the module for reading IGES: .*libBrivetIges.so: cannot open shared "
                                    "object file: No such file or directory"));
  EXPECT_THAT(listener.events[2].text,
              testing::MatchesRegex("hint: the module belongs in /.* or in a folder of LD_LIBRARY_PATH"));
}

// The HTML module only writes.
TEST(FormatModuleTest, ReportsMissingEntryPoint) {
  FormatModule module(*Format::Named("html"));
  EXPECT_EQ(module.FindWriter(), VREL_S_OK);
  RecordingListener const listener;
  BrivetOpenRequest request;
  EXPECT_EQ(module.Open(request), VREL_E_NOT_SUPPORTED);
  EXPECT_EQ(request.document, nullptr);
  ASSERT_FALSE(listener.events.empty());
  EXPECT_THAT(listener.Texts(),
              testing::Contains(testing::MatchesRegex(
                  "cannot load the module for reading HTML: .*undefined symbol: BrivetOpenDocument")));
}

#include "StandardErrorListener.h"

#include <gtest/gtest.h>

#include "Diagnostics.h"
#include "VRELAssert.h"
#include "VRELDebug.h"
#include "VRELErrorEvent.h"
#include "VRELEventBus.h"
#include "VRELInfo.h"
#include "VRELTest.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"

namespace {

// Returns what a listener writes to standard error during `send`.
template <class Send>
std::string Output(Send send) {
  testing::internal::CaptureStderr();
  {
    StandardErrorListener const listener;
    send();
  }
  return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(StandardErrorListenerTest, WritesErrorsAndWarnings) {
  EXPECT_EQ(Output([] { VRELError::Printf("cannot open '%s'", "part.stp"); }), "brivet: cannot open 'part.stp'\n");
  EXPECT_EQ(Output([] { VRELWarning::Printf("%d units", 2); }), "brivet: warning: 2 units\n");
  EXPECT_EQ(Output([] { VRELWarningEvent::Fire("%d units", 2); }), "brivet: warning: 2 units\n");
  EXPECT_EQ(Output([] {
              VRELError::Printf("first");
              VRELWarning::Printf("second");
              VRELError::Printf("third");
            }),
            "brivet: first\nbrivet: warning: second\nbrivet: third\n");
}

TEST(StandardErrorListenerTest, LocationReplacesProgramName) {
  EXPECT_EQ(Output([] {
              ReportErrorAt({"part.stp", 12, 34}, "expected ')', found ';'", "add it");
            }),
            "part.stp:12:34: error: expected ')', found ';'\nhint: add it\n");
  EXPECT_EQ(Output([] {
              ReportWarningAt({"part.stp", 9, 0}, "a\nhint: b");
            }),
            "part.stp:9: warning: a<U+000A>hint: b\n");
  EXPECT_EQ(Output([] { ReportWarning("part.stp", "odd"); }), "brivet: warning: part.stp: odd\n");
}

TEST(StandardErrorListenerTest, WritesHintOnSeparateLine) {
  EXPECT_EQ(Output([] { VRELError::Printf("a:1: error: b\nhint: c"); }), "a:1: error: b\nhint: c\n");
  EXPECT_EQ(Output([] { VRELError::Printf("b\nhint: c\nd"); }), "brivet: b\nhint: c<U+000A>d\n");
  EXPECT_EQ(Output([] { VRELError::Printf("hint: c"); }), "hint: c\n");
}

TEST(StandardErrorListenerTest, EscapesControlCharacters) {
  EXPECT_EQ(Output([] { VRELError::Printf("a\nb\r\x1B[2J\x7F\tc\xC3\xB6\n"); }),
            "brivet: a<U+000A>b<U+000D><U+001B>[2J<U+007F><U+0009>c\xC3\xB6\n");
  EXPECT_EQ(Output([] { VRELWarning::Printf("a\xC2\x9B\n\n"); }), "brivet: warning: a<U+009B><U+000A>\n");
}

TEST(StandardErrorListenerTest, DescribesErrorWithoutText) {
  EXPECT_EQ(Output([] {
              VRELError error(VREL_E_FILE_OPEN, VRELString(L"J\u00F6rg is 100% out"));
              VRELErrorEvent::Fire(error, "here.cpp", 7);
            }),
            "brivet: J\xC3\xB6rg is 100% out\n");
  EXPECT_EQ(Output([] {
              VRELError error(VREL_E_FILE_OPEN);
              VRELErrorEvent::Fire(error, "here.cpp", 7);
            }),
            "brivet: File Open Error\n");
  EXPECT_EQ(Output([] { VRELWarning::Printf("%s", ""); }), "brivet: warning: \n");
}

TEST(StandardErrorListenerTest, IgnoresOtherEvents) {
  EXPECT_EQ(Output([] {
              VRELInfo::Printf("a");
              VRELTest::Printf("a");
              VRELDebug::NoTabPrintf("a");
              VRELAssert::Printf("a");
              VRELEvent event("VRELTaskEvent", VREL_LEVEL_ERROR);
              VRELEventBus::Fire(event);
            }),
            "");
}

// Any event can have this name.
TEST(StandardErrorListenerTest, AcceptsForeignEventOfSameName) {
  EXPECT_EQ(Output([] {
              VRELEvent event("VRELErrorEvent", VREL_LEVEL_ERROR);
              VRELEventBus::Fire(event);
            }),
            "brivet: \n");
}

TEST(StandardErrorListenerTest, WritesNotesOnRequest) {
  testing::internal::CaptureStderr();
  {
    StandardErrorListener const listener(nullptr, true);
    VRELInfo::Printf("note: odd");
    VRELInfo::Printf("Healing = On");
    VRELWarning::Printf("first");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "brivet: note: odd\nbrivet: warning: first\n");
  EXPECT_EQ(Output([] { VRELInfo::Printf("note: odd"); }), "");
}

TEST(StandardErrorListenerTest, DestructorRemovesListener) {
  int const before = VRELEventBus::GetEventBus()->GetListenerCount();
  {
    StandardErrorListener const listener;
    EXPECT_EQ(VRELEventBus::GetEventBus()->GetListenerCount(), before + 1);
  }
  EXPECT_EQ(VRELEventBus::GetEventBus()->GetListenerCount(), before);
}

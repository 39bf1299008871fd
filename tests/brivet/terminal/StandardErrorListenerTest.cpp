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

// What `send` makes a listener write to standard error.
template <class Send>
std::string Heard(Send send) {
  testing::internal::CaptureStderr();
  {
    StandardErrorListener const listener;
    send();
  }
  return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(StandardErrorListenerTest, WritesErrorsAndWarnings) {
  EXPECT_EQ(Heard([] { VRELError::Printf("%s:%d: expected ;", "part.stp", 12); }), "brivet: part.stp:12: expected ;\n");
  EXPECT_EQ(Heard([] { VRELWarning::Printf("%d units", 2); }), "brivet: warning: 2 units\n");
  EXPECT_EQ(Heard([] { VRELWarningEvent::Fire("%d units", 2); }), "brivet: warning: 2 units\n");
  EXPECT_EQ(Heard([] {
              VRELError::Printf("first");
              VRELWarning::Printf("second");
              VRELError::Printf("third");
            }),
            "brivet: first\nbrivet: warning: second\nbrivet: third\n");
}

TEST(StandardErrorListenerTest, EscapesControls) {
  EXPECT_EQ(Heard([] { VRELError::Printf("a\nb\r\x1B[2J\x7F\tc\xC3\xB6\n"); }),
            "brivet: a<U+000A>b<U+000D><U+001B>[2J<U+007F><U+0009>c\xC3\xB6\n");
  EXPECT_EQ(Heard([] { VRELWarning::Printf("a\n\n"); }), "brivet: warning: a<U+000A>\n");
}

TEST(StandardErrorListenerTest, ShowsTheErrorOfAnEventWithoutAText) {
  EXPECT_EQ(Heard([] {
              VRELError error(VREL_E_FILE_OPEN, VRELString(L"J\u00F6rg is 100% out"));
              VRELErrorEvent::Fire(error, "here.cpp", 7);
            }),
            "brivet: J\xC3\xB6rg is 100% out\n");
  EXPECT_EQ(Heard([] {
              VRELError error(VREL_E_FILE_OPEN);
              VRELErrorEvent::Fire(error, "here.cpp", 7);
            }),
            "brivet: File Open Error\n");
  EXPECT_EQ(Heard([] { VRELWarning::Printf("%s", ""); }), "brivet: warning: \n");
}

TEST(StandardErrorListenerTest, PassesOverOtherEvents) {
  EXPECT_EQ(Heard([] {
              VRELInfo::Printf("a");
              VRELTest::Printf("a");
              VRELDebug::NoTabPrintf("a");
              VRELAssert::Printf("a");
              VRELEvent event("VRELTaskEvent", VREL_LEVEL_ERROR);
              VRELEventBus::Fire(event);
            }),
            "");
}

// Any event can bear the name.
TEST(StandardErrorListenerTest, SurvivesAnEventThatOnlyLooksLikeAnError) {
  EXPECT_EQ(Heard([] {
              VRELEvent event("VRELErrorEvent", VREL_LEVEL_ERROR);
              VRELEventBus::Fire(event);
            }),
            "brivet: \n");
}

TEST(StandardErrorListenerTest, ListensFromConstructionToDestruction) {
  int const before = VRELEventBus::GetEventBus()->GetListenerCount();
  {
    StandardErrorListener const listener;
    EXPECT_EQ(VRELEventBus::GetEventBus()->GetListenerCount(), before + 1);
  }
  EXPECT_EQ(VRELEventBus::GetEventBus()->GetListenerCount(), before);
}

TEST(StandardErrorListenerTest, LocationReplacesProgramName) {
  EXPECT_EQ(Heard([] {
              ReportErrorAt({"part.stp", 12, 34}, "expected ')', found ';'", "add it");
            }),
            "part.stp:12:34: error: expected ')', found ';'\nhint: add it\n");
  EXPECT_EQ(Heard([] {
              ReportWarningAt({"part.stp", 9, 0}, "a\nhint: b");
            }),
            "part.stp:9: warning: a<U+000A>hint: b\n");
}

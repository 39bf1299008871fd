#include "Translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "Gk_ErrMgr.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "TextSource.h"
#include "VRELErrorTracker.h"
#include "VRELPerfTrackerStatus.h"

namespace {

using Texts = std::vector<std::string>;

class TranslationTest : public testing::Test {
 protected:
  TranslationTest() : before(std::filesystem::current_path()) {
    std::filesystem::current_path(folder.Path());
    VRELErrorTracker::Initialize();
    tracker.reset(VRELErrorTracker::GetInstance());
  }
  ~TranslationTest() override { std::filesystem::current_path(before); }

  // The names of the events that reading the file sends, the texts of those that have one.
  Texts Run(std::string const& bytes) {
    folder.Write("a.stp", bytes);
    RecordingListener listener;
    testing::internal::CaptureStdout();
    result = Translation("a.stp", options).Run();
    page = testing::internal::GetCapturedStdout();
    Texts texts;
    for (RecordedEvent const& event : listener.events) texts.push_back(event.hasText ? event.text : event.name);
    return texts;
  }

  std::unique_ptr<VRELErrorTracker> tracker;
  ScratchDirectory folder;
  std::filesystem::path before;
  OptionSet options;
  VRINResult result = VREL_UNDETERMINED;
  std::string page;
};

Texts const opening = {"Start Product", "VRELStartOptionsTaskEvent", "Options logging", "VRELStartReadFileTaskEvent"};

Texts operator+(Texts texts, Texts const& more) {
  texts.insert(texts.end(), more.begin(), more.end());
  return texts;
}

}  // namespace

TEST_F(TranslationTest, SendsTheEventsOfItsTasks) {
  EXPECT_EQ(Run(Document("#1=A();\n")),
            opening + (Texts{"File Reading", "Start Source Document Preprocessing", "Source Document Preprocessing",
                             "VRELStarReadEntitiesTaskEvent", "Entity Reading", "Translation", "Product End"}));
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_NE(page.find("\nentity instances           1\n"), page.npos);
  EXPECT_TRUE(folder.Has("brivet_read.log"));
}

// Whoever measures tasks is told where the translation begins.
TEST_F(TranslationTest, StartsTheTranslationForWhoMeasures) {
  VRELPerfTrackerStatus::instance.SetPerfTracking(true);
  Texts const texts = Run(Document(""));
  VRELPerfTrackerStatus::instance.SetPerfTracking(false);
  ASSERT_EQ(texts.size(), 12U);
  EXPECT_EQ(texts[2], "Options logging");
  EXPECT_EQ(texts[3], "Translation");
  EXPECT_EQ(texts[4], "VRELStartReadFileTaskEvent");
  EXPECT_EQ(texts[10], "Translation");
}

TEST_F(TranslationTest, TellsTheOptions) {
  options.Add({OptionSource::Setting, "Healing=On"});
  options.Add({OptionSource::Setting, "Healig=100%%"});
  Texts const texts = Run(Document(""));
  ASSERT_GT(texts.size(), 8U);
  EXPECT_EQ(Texts(texts.begin() + 2, texts.begin() + 4), (Texts{"-set Healing=On", "-set Healig=100%%"}));
  // In the order of the store.
  Texts dump(texts.begin() + 4, texts.begin() + 6);
  std::sort(dump.begin(), dump.end());
  EXPECT_EQ(dump, (Texts{"Healig = 100%", "Healing = true"}));
  EXPECT_EQ(texts[6], "-set Healig=100%%: unknown option Healig, set all the same; did you mean Healing?");
  EXPECT_EQ(texts[7], "Options logging");
}

TEST_F(TranslationTest, EndsWithTheTaskThatFails) {
  Texts const closing = {"Translation", "Product End"};
  Texts const preprocessing = {"Start Source Document Preprocessing"};
  Texts const entities = {"Source Document Preprocessing", "VRELStarReadEntitiesTaskEvent"};
  EXPECT_EQ(Run("solid"), (opening + Texts{"a.stp:1: expected ISO-10303-21, found solid", "File Reading"} + closing));
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");
  EXPECT_EQ(Run("ISO-10303-21;HEADER;ENDSEC;"),
            (opening + Texts{"File Reading"} + preprocessing +
             Texts{"a.stp:1: expected FILE_DESCRIPTION in the header, found ENDSEC", "Source Document Preprocessing"} +
             closing));
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(Run(Document("#1=A()\n")),
            (opening + Texts{"File Reading"} + preprocessing + entities +
             Texts{"a.stp:8: expected ; behind #1, found ENDSEC", "Entity Reading"} + closing));
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");
}

TEST_F(TranslationTest, IsStoppedOnRequest) {
  Gk_ErrMgr::setAbort();
  Texts const texts = Run(Document("#1=A();\n"));
  EXPECT_EQ(result, VREL_E_ABORTED);
  EXPECT_EQ(page, "");
  EXPECT_EQ(texts.back(), "Product End");
  std::string const log = folder.Read("brivet_read.log");
  EXPECT_NE(log.find("\nProduct Aborted\n"), log.npos);
}

#include "Translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Gk_ErrMgr.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "TestDocument.h"
#include "VRELErrorTracker.h"
#include "VRELPerfTrackerStatus.h"
#include "VRELStartConversionStageEvent.h"

namespace {

using Texts = std::vector<std::string>;

// Notes the stages, and asks for an abort when an event of that name comes.
class Watcher final : public VRELEventListener {
 public:
  explicit Watcher(std::string nameToAbortAt) : abortAt(std::move(nameToAbortAt)) {
    VRELEventBus::GetEventBus()->AddListener(this);
  }
  ~Watcher() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  Watcher(Watcher const&) = delete;
  Watcher& operator=(Watcher const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    if (!abortAt.empty() && event.IsA(abortAt.c_str())) Gk_ErrMgr::setAbort();
    auto const* const stage = dynamic_cast<VRELStartConversionStageEvent const*>(&event);
    if (stage == nullptr) return;
    stages.push_back(std::string(stage->GetEntityType()) + " " + std::to_string(stage->GetEntityCount()) + " " +
                     std::to_string(static_cast<int>(stage->GetStagePercent())) + (stage->GetLeaf() ? " leaf" : "") +
                     (stage->GetFinished() ? " finished" : ""));
  }

  Texts stages;

 private:
  std::string const abortAt;
};

// Notes what is told.
class NotedProgress final : public Progress {
 public:
  void Begin(char const* stage, long total) override { told.push_back(stage + (" of " + std::to_string(total))); }
  void Done(long units) override { last = units; }
  void End() override { told.emplace_back("end"); }

  Texts told;
  long last = -1;
};

class TranslationTest : public testing::Test {
 protected:
  TranslationTest() : before(std::filesystem::current_path()) {
    std::filesystem::current_path(folder.Path());
    VRELErrorTracker::Initialize();
    tracker.reset(VRELErrorTracker::GetInstance());
  }
  ~TranslationTest() override { std::filesystem::current_path(before); }

  // The names of the events that the translation sends, the texts of those that have one.
  Texts Run(std::string const& bytes, Format const* target = Format::Named("html")) {
    folder.Write("a.stp", bytes);
    RecordingListener listener;
    Job job;
    job.input = "a.stp";
    job.output = "a.html";
    job.target = target;
    testing::internal::CaptureStdout();
    result = Translation(job, options, progress).Run();
    page = testing::internal::GetCapturedStdout();
    Texts texts;
    for (RecordedEvent const& event : listener.events) texts.push_back(event.hasText ? event.text : event.name);
    return texts;
  }

  std::unique_ptr<VRELErrorTracker> tracker;
  ScratchDirectory folder;
  std::filesystem::path before;
  OptionSet options;
  NotedProgress progress;
  VRINResult result = VREL_UNDETERMINED;
  std::string page;
};

Texts const OPENING = {"Start Product", "VRELStartOptionsTaskEvent", "Options logging"};
Texts const READING = {"VRELStartReadFileTaskEvent",          "File Reading",
                       "Start Source Document Preprocessing", "Source Document Preprocessing",
                       "VRELStarReadEntitiesTaskEvent",       "Entity Reading"};
Texts const WRITING = {"VRELStartConversionTaskEvent",
                       "VRELStartConversionStageEvent",
                       "VRELStartConversionStageEvent",
                       "Start Target Document Preprocessing",
                       "Target Document Preprocessing",
                       "Start Target Document Postprocessing",
                       "Target Document Postprocessing",
                       "Writing File",
                       "File Write"};
Texts const CLOSING = {"Translation", "Product End"};

Texts operator+(Texts texts, Texts const& more) {
  texts.insert(texts.end(), more.begin(), more.end());
  return texts;
}

}  // namespace

TEST_F(TranslationTest, SendsTheEventsOfTheRoad) {
  EXPECT_EQ(Run(DocumentText("#1=A();\n")), OPENING + READING + WRITING + CLOSING);
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_EQ(page, "a.html: 1 instance of 1 type from a.stp\n");
  EXPECT_TRUE(folder.Has("a.html"));
  EXPECT_TRUE(folder.Has("brivet_read.log"));
  EXPECT_TRUE(folder.Has("brivet_write.log"));
}

TEST_F(TranslationTest, ListsWithoutTheWritingHalf) {
  EXPECT_EQ(Run(DocumentText("#1=A();\n"), nullptr), OPENING + READING + CLOSING);
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_NE(page.find("\nentity instances           1\n"), page.npos);
  EXPECT_TRUE(folder.Has("brivet_read.log"));
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  EXPECT_FALSE(folder.Has("a.html"));
}

// Whoever measures tasks is told of all of them.
TEST_F(TranslationTest, TellsTheGenericTasksToWhoMeasures) {
  VRELPerfTrackerStatus::instance.SetPerfTracking(true);
  Texts const texts = Run(DocumentText(""));
  VRELPerfTrackerStatus::instance.SetPerfTracking(false);
  Texts writing = WRITING;
  writing.insert(writing.begin() + 3, "Conversion");
  EXPECT_EQ(texts, OPENING + Texts{"Translation"} + READING + writing + CLOSING);
}

TEST_F(TranslationTest, TellsTheStagesOfTheConversion) {
  Watcher const watcher("");
  Run(DocumentText("#1=A();\n#2=A(#1);\n"));
  EXPECT_EQ(watcher.stages, (Texts{"References 2 100 leaf", "References 2 100 leaf finished"}));
}

TEST_F(TranslationTest, ShowsHowFarItIs) {
  std::string const bytes = DocumentText("#1=A();\n#2=A(#1);\n");
  Run(bytes);
  EXPECT_EQ(progress.told, (Texts{"reading of " + std::to_string(bytes.size()), "end", "writing of 2", "end"}));
  EXPECT_GE(progress.last, 0);
}

TEST_F(TranslationTest, TellsTheOptions) {
  options.Add({OptionSource::Setting, "Healing=On"});
  options.Add({OptionSource::Setting, "Healig=100%%"});
  Texts const texts = Run(DocumentText(""));
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
  Texts const refused = {"VRELStartReadFileTaskEvent",
                         "a.stp:1: expected ISO-10303-21, found solid; translate an ISO 10303-21 (STEP) file",
                         "File Reading"};
  EXPECT_EQ(Run("solid"), OPENING + refused + CLOSING);
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");
  Texts const twice = {"VRELStartConversionTaskEvent", "VRELStartConversionStageEvent",
                       "a.stp:8: expected an id that no other instance has, found #1, which stands in line 7 too; give "
                       "one of them another id",
                       "VRELStartConversionStageEvent"};
  EXPECT_EQ(Run(DocumentText("#1=A();\n#1=B();\n")), OPENING + READING + twice + CLOSING);
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");
  EXPECT_FALSE(folder.Has("a.html"));
}

TEST_F(TranslationTest, FoldsWhatWasLeftOut) {
  Texts const texts = Run(DocumentText("#1=A(;\n#2=B();\n"));
  EXPECT_EQ(result, VREL_S_PARTIAL);
  EXPECT_EQ(page, "a.html: 1 instance of 1 type from a.stp, 1 left out\n");
  EXPECT_NE(folder.Read("brivet_write.log").find("\nTranslation Result : Partial Success\n"), std::string::npos);
  EXPECT_NE(folder.Read("brivet_write.log").find("\nFailed Entities : 1\n"), std::string::npos);
  EXPECT_NE(folder.Read("brivet_write.log").find("Output File \"a.html\" is Successfully Written\n"),
            std::string::npos);
}

// The road is stopped wherever it is, and what stood in the output's place stays.
TEST_F(TranslationTest, IsStoppedOnRequest) {
  folder.Write("a.html", "of yesterday");
  for (char const* event : {"Start Product", "VRELStartReadFileTaskEvent", "VRELStarReadEntitiesTaskEvent",
                            "VRELStartConversionTaskEvent", "Writing File"}) {
    SCOPED_TRACE(event);
    Watcher const watcher(event);
    Texts const texts = Run(DocumentText("#1=A();\n"));
    EXPECT_EQ(result, VREL_E_ABORTED);
    EXPECT_EQ(result.GetReturnCode(), 3);
    EXPECT_EQ(page, "");
    EXPECT_EQ(texts.back(), "Product End");
    EXPECT_NE(std::find(texts.begin(), texts.end(), "a.stp: expected the end of the work, found a request to stop") !=
                  texts.end(),
              std::string(event) == "Writing File");
    EXPECT_NE(folder.Read("brivet_read.log").find("\nProduct Aborted\n"), std::string::npos);
    EXPECT_EQ(folder.Read("a.html"), "of yesterday");
  }
  EXPECT_NE(folder.Read("brivet_write.log").find("Output File \"a.html\" Writing is Aborted\n"), std::string::npos);
}

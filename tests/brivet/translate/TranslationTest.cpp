#include "Translation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
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

// Records conversion stages, and requests an abort at an event of a given name.
class StageRecorder final : public VRELEventListener {
 public:
  explicit StageRecorder(std::string nameToAbortAt) : abortAt(std::move(nameToAbortAt)) {
    VRELEventBus::GetEventBus()->AddListener(this);
  }
  ~StageRecorder() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  StageRecorder(StageRecorder const&) = delete;
  StageRecorder& operator=(StageRecorder const&) = delete;

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

// Records the calls.
class RecordingProgress final : public Progress {
 public:
  void Begin(char const* stage, long total) override { calls.push_back(stage + (" of " + std::to_string(total))); }
  void Done(long units) override { last = units; }
  void End() override { calls.emplace_back("end"); }

  Texts calls;
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

  // Returns the events of the translation: their texts, or the names of those without a text.
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
  RecordingProgress progress;
  VRINResult result = VREL_UNDETERMINED;
  std::string page;
};

Texts const kOpening = {"Start Product", "VRELStartOptionsTaskEvent", "Options logging"};
Texts const kReading = {"VRELStartReadFileTaskEvent",          "File Reading",
                        "Start Source Document Preprocessing", "Source Document Preprocessing",
                        "VRELStarReadEntitiesTaskEvent",       "Entity Reading"};
Texts const kWriting = {"VRELStartConversionTaskEvent",
                        "VRELStartConversionStageEvent",
                        "VRELStartConversionStageEvent",
                        "Start Target Document Preprocessing",
                        "Target Document Preprocessing",
                        "Start Target Document Postprocessing",
                        "Target Document Postprocessing",
                        "Writing File",
                        "File Write"};
Texts const kClosing = {"Translation", "Product End"};

Texts operator+(Texts texts, Texts const& more) {
  texts.insert(texts.end(), more.begin(), more.end());
  return texts;
}

}  // namespace

TEST_F(TranslationTest, SendsEventsInOrder) {
  EXPECT_EQ(Run(DocumentText("#1=A();\n")), kOpening + kReading + kWriting + kClosing);
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_EQ(page, "a.html: 1 instance of 1 type from a.stp\n");
  EXPECT_TRUE(folder.Has("a.html"));
  EXPECT_TRUE(folder.Has("brivet_read.log"));
  EXPECT_TRUE(folder.Has("brivet_write.log"));
}

TEST_F(TranslationTest, ListingHasNoWritePhase) {
  EXPECT_EQ(Run(DocumentText("#1=A();\n"), nullptr), kOpening + kReading + kClosing);
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_NE(page.find("\nentity instances           1\n"), page.npos);
  EXPECT_TRUE(folder.Has("brivet_read.log"));
  EXPECT_FALSE(folder.Has("brivet_write.log"));
  EXPECT_FALSE(folder.Has("a.html"));
}

TEST_F(TranslationTest, SendsGenericTasksWhenMeasuring) {
  VRELPerfTrackerStatus::instance.SetPerfTracking(true);
  Texts const texts = Run(DocumentText("#1=A();\n"));
  VRELPerfTrackerStatus::instance.SetPerfTracking(false);
  Texts writing = kWriting;
  writing.insert(writing.begin() + 3, "Conversion");
  EXPECT_EQ(texts, kOpening + Texts{"Translation"} + kReading + writing + kClosing);
}

TEST_F(TranslationTest, SendsConversionStages) {
  StageRecorder const recorder("");
  Run(DocumentText("#1=A();\n#2=A(#1);\n"));
  EXPECT_EQ(recorder.stages, (Texts{"References 2 100 leaf", "References 2 100 leaf finished"}));
}

TEST_F(TranslationTest, ReportsProgress) {
  std::string const bytes = DocumentText("#1=A();\n#2=A(#1);\n");
  Run(bytes);
  EXPECT_EQ(progress.calls, (Texts{"reading of " + std::to_string(bytes.size()), "end", "writing of 2", "end"}));
  EXPECT_GE(progress.last, 0);
}

TEST_F(TranslationTest, ReportsOptions) {
  options.Add({OptionSource::Setting, "Healing=On"});
  options.Add({OptionSource::Setting, "Healig=100%%"});
  Texts const texts = Run(DocumentText(""));
  ASSERT_GT(texts.size(), 8U);
  EXPECT_EQ(Texts(texts.begin() + 2, texts.begin() + 4), (Texts{"-set Healing=On", "-set Healig=100%%"}));
  // The order is that of the store.
  Texts dump(texts.begin() + 4, texts.begin() + 6);
  std::sort(dump.begin(), dump.end());
  EXPECT_EQ(dump, (Texts{"Healig = 100%", "Healing = true"}));
  EXPECT_EQ(texts[6], "-set Healig=100%%: unknown option 'Healig'; did you mean 'Healing'?");
  EXPECT_EQ(texts[7], "Options logging");
}

TEST_F(TranslationTest, EndsWithFailedTask) {
  Texts texts = Run("solid");
  ASSERT_EQ(texts.size(), kOpening.size() + 3 + kClosing.size());
  std::string& refusal = texts[kOpening.size() + 1];
  EXPECT_EQ(refusal.rfind("a.stp:1:", 0), 0U) << refusal;
  refusal = "refusal";
  EXPECT_EQ(texts, (kOpening + Texts{"VRELStartReadFileTaskEvent", "refusal", "File Reading"} + kClosing));
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");

  texts = Run(DocumentText("#1=A();\n#1=B();\n"));
  std::size_t const error = kOpening.size() + kReading.size() + 2;
  ASSERT_EQ(texts.size(), error + 2 + kClosing.size());
  EXPECT_EQ(texts[error].rfind("a.stp:8:", 0), 0U) << texts[error];
  texts[error] = "refusal";
  EXPECT_EQ(texts, (kOpening + kReading +
                    Texts{"VRELStartConversionTaskEvent", "VRELStartConversionStageEvent", "refusal",
                          "VRELStartConversionStageEvent"} +
                    kClosing));
  EXPECT_EQ(result, VREL_E_INVALID_FILE);
  EXPECT_EQ(page, "");
  EXPECT_FALSE(folder.Has("a.html"));
}

TEST_F(TranslationTest, ReportsPartialResult) {
  Texts const texts = Run(DocumentText("#1=A(;\n#2=B();\n"));
  EXPECT_EQ(result, VREL_S_PARTIAL);
  EXPECT_EQ(page, "a.html: 1 instance of 1 type from a.stp, 1 lost\n");
  EXPECT_NE(folder.Read("brivet_write.log").find("\nTranslation Result : Partial Success\n"), std::string::npos);
  EXPECT_NE(folder.Read("brivet_write.log").find("\nFailed Entities : 1\n"), std::string::npos);
  EXPECT_NE(folder.Read("brivet_write.log").find("Output File \"a.html\" is Successfully Written\n"),
            std::string::npos);
}

TEST_F(TranslationTest, AbortKeepsOldOutput) {
  folder.Write("a.html", "old");
  for (char const* event : {"Start Product", "VRELStartReadFileTaskEvent", "VRELStarReadEntitiesTaskEvent",
                            "VRELStartConversionTaskEvent", "Writing File"}) {
    SCOPED_TRACE(event);
    StageRecorder const recorder(event);
    Texts const texts = Run(DocumentText("#1=A();\n"));
    EXPECT_EQ(result, VREL_E_ABORTED);
    EXPECT_EQ(result.GetReturnCode(), 3);
    EXPECT_EQ(page, "");
    EXPECT_EQ(texts.back(), "Product End");
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "interrupted"), 1);
    EXPECT_NE(folder.Read("brivet_read.log").find("\nProduct Aborted\n"), std::string::npos);
    EXPECT_EQ(folder.Read("a.html"), "old");
  }
  EXPECT_NE(folder.Read("brivet_write.log").find("Output File \"a.html\" Writing is Aborted\n"), std::string::npos);
}

namespace {

// Appends a line to a file at an event of a given name.
class FileChanger final : public VRELEventListener {
 public:
  FileChanger(std::string eventName, std::string filePath) : name(std::move(eventName)), path(std::move(filePath)) {
    VRELEventBus::GetEventBus()->AddListener(this);
  }
  ~FileChanger() override { VRELEventBus::GetEventBus()->RemoveListener(this); }
  FileChanger(FileChanger const&) = delete;
  FileChanger& operator=(FileChanger const&) = delete;

  void HandleEvent(VRELEvent& event) override {
    if (event.IsA(name.c_str())) std::ofstream(path, std::ios::app) << "\n";
  }

 private:
  std::string const name;
  std::string const path;
};

}  // namespace

TEST_F(TranslationTest, ReportsChangedInput) {
  folder.Write("a.html", "old");
  for (char const* event : {"VRELStartReadFileTaskEvent", "Writing File"}) {
    SCOPED_TRACE(event);
    FileChanger const changer(event, folder.Path("a.stp"));
    Texts const texts = Run(DocumentText("#1=A();\n"));
    EXPECT_EQ(result, VREL_E_FILE_OPEN);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "cannot read 'a.stp': file changed while it was read"), 1);
    EXPECT_EQ(folder.Read("a.html"), "old");
  }
}

TEST_F(TranslationTest, AbortAfterCommitIsSuccess) {
  StageRecorder const recorder("File Write");
  Run(DocumentText("#1=A();\n"));
  EXPECT_EQ(result, VREL_S_OK);
  EXPECT_TRUE(folder.Has("a.html"));
  EXPECT_FALSE(Gk_ErrMgr::shouldAbort());
}

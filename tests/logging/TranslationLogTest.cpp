// Log of a whole translation.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "ChildProcess.h"
#include "ScratchDirectory.h"
#include "TaskRecorder.h"
#include "VRELAssertEvent.h"
#include "VRELDebugEvent.h"
#include "VRELEndOptionsTaskEvent.h"
#include "VRELEndPostprocessDocumentEvent.h"
#include "VRELEndPreprocessDocumentEvent.h"
#include "VRELEndProductEvent.h"
#include "VRELEndReadEntitiesTaskEvent.h"
#include "VRELEndReadFileTaskEvent.h"
#include "VRELEndTranslationTaskEvent.h"
#include "VRELEndWriteFileTaskEvent.h"
#include "VRELErrorEvent.h"
#include "VRELFileHeader.h"
#include "VRELFilePath.h"
#include "VRELInfo.h"
#include "VRELLogFileWrapper.h"
#include "VRELOptions.h"
#include "VRELStartConversionStageEvent.h"
#include "VRELStartConversionTaskEvent.h"
#include "VRELStartOptionsTaskEvent.h"
#include "VRELStartPostprocessDocumentEvent.h"
#include "VRELStartPreprocessDocumentEvent.h"
#include "VRELStartProductEvent.h"
#include "VRELStartReadEntitiesTaskEvent.h"
#include "VRELStartReadFileTaskEvent.h"
#include "VRELStartTranslateRepairEvent.h"
#include "VRELStartWriteFileTaskEvent.h"
#include "VRELWarning.h"

namespace {

class EndOptions : public VRELEndOptionsTaskEvent {
 public:
  using VRELEndOptionsTaskEvent::VRELEndOptionsTaskEvent;
  void GetFormattedDescription(VRELOutputStream* stream) override { VRELEndTaskEvent::GetFormattedDescription(stream); }
};

template <class Event>
void Send(Event&& event) {
  VRELEventBus::Fire(event);
}

void SendOptions(long result) {
  VRELOptions options;
  options.AddOption(L"*.Healing", true);
  options.AddOption(L"Step.Healing", 12);
  VRELStartOptionsTaskEvent::Fire();
  options.Dump(nullptr, "%s = %s", nullptr);
  Send(EndOptions(result));
}

void SendPreprocessing(bool source) {
  Send(VRELStartPreprocessDocumentEvent(source));
  Send(VRELEndPreprocessDocumentEvent(VREL_S_OK, source));
}

void SendEntities(long result) {
  Send(VRELStartReadEntitiesTaskEvent());
  Send(VRELEndReadEntitiesTaskEvent(result));
}

void SendPostprocessing(long result) {
  Send(VRELStartPostprocessDocumentEvent());
  Send(VRELEndPostprocessDocumentEvent(result));
}

void SendWriting(wchar_t const* name, long result) {
  Send(VRELStartWriteFileTaskEvent(VRELFilePath("wheel.html")));
  Send(VRELEndWriteFileTaskEvent(name, result));
}

void TranslateSuccessfully() {
  VRELStartProductEvent start("Brivet 1.0", "brivet");
  start.AddOption("*.File", "wheel.html");
  start.AddOption("Step.File", "wheel.step");
  Send(start);
  VRELStartTaskEvent::Fire("Translation", "Translation", VREL_LEVEL_INFO);
  SendOptions(VREL_S_OK);
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim");
  header.Set(VRELFileHeader::UNITS, L"mm");
  VRELStartReadFileTaskEvent::Fire("wheel.step");
  Send(VRELEndReadFileTaskEvent(VREL_S_OK, &header));
  SendPreprocessing(true);
  SendEntities(VREL_S_OK);
  VRELStartConversionTaskEvent::Fire();
  Send(VRELStartConversionStageEvent("Face", 3, 100, true));
  VRELStartTranslateRepairEvent::Fire("Face", "Exact", 7);
  VRELDebugEvent::Fire("below the threshold");
  VRELInfo::Printf("%d faces converted", 3);
  VRELEndTaskEvent::Fire(VREL_S_OK, "Conversion", "Conversion", VREL_LEVEL_INFO, false);
  SendPreprocessing(false);
  SendPostprocessing(VREL_S_OK);
  SendWriting(L"wheel.html", VREL_S_OK);
  VRELEndTranslationTaskEvent::Fire(VREL_S_OK, false);
  Send(VRELEndProductEvent(VREL_S_OK));
}

// Part of an assembly in a file of two models, with failures, logged in all detail except debug events. Tasks are
// measured, but their generic end events are silent.
void TranslateWithFailure() {
  PerfTracking const tracking;
  Send(VRELStartProductEvent("Brivet 1.0", ""));
  VRELStartTaskEvent::Fire("Translation", "Translation", VREL_LEVEL_INFO);
  SendOptions(VREL_S_PARTIAL);
  VRELFileHeader header;
  header.Set(VRELFileHeader::AUTHOR, L"Kim");
  header.SelectModel(1);
  header.Set(VRELFileHeader::UNITS, L"mm");
  VRELStartReadFileTaskEvent::Fire("wheel.step");
  Send(VRELEndReadFileTaskEvent(VREL_S_OK, &header));
  SendPreprocessing(true);
  SendEntities(VREL_S_PARTIAL);
  VRELStartConversionTaskEvent::Fire();
  Send(VRELStartConversionStageEvent("Face", 3, 100, true));
  VRELWarning::Printf("face %d is open by 5%%%% of its length", 7);
  VRELStartTranslateRepairEvent::Fire("Face", "Exact", 7);
  VRELInfo::Tab();
  VRELInfo::Printf("face %d closed", 7);
  VRELInfo::Untab();
  VRELErrorEvent::Fire("face %d has no surface", 8);
  VRELAssertEvent::Fire("%s", "face 8 %d");
  VRELEndTaskEvent::Fire(VREL_S_PARTIAL, "Conversion", "Conversion", VREL_LEVEL_INFO, true);
  SendPreprocessing(false);
  SendPostprocessing(VREL_E_FAIL);
  SendWriting(L"", VREL_E_FILE_SAVE);
  Send(VRELEndTranslationTaskEvent(VREL_S_PARTIAL, true, 2));
  Send(VRELEndProductEvent(VREL_S_PARTIAL));
}

// Returns the content of brivet_read.log after the translation, with the finish time replaced by a fixed time.
std::string LogOf(std::function<void()> const& translate, char const* logLevel) {
  ScratchDirectory const directory;
  ChildResult const child = RunInChild([&] {
    if (chdir(directory.Path().c_str()) != 0) return 2;
    unsetenv("VRELTrace");
    setenv("VRELLogLevel", logLevel, 1);
    VRELLogFileWrapper const log(true);
    translate();
    return 0;
  });
  EXPECT_EQ(child.exitStatus, 0) << child.errors;
  EXPECT_EQ(child.signal, 0);
  EXPECT_EQ(child.output + child.errors, "");
  std::string log = directory.Read("brivet_read.log");
  std::string const label = "\nFinish Time : ";
  std::size_t const time = log.find(label);
  if (time == log.npos) return "no time: " + log;
  return log.replace(time + label.size(), 24, "Thu Jan  1 00:00:00 1970");
}

std::string GoldenLog(char const* name) {
  std::ifstream file(std::string(GOLDEN_LOGS "/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(TranslationLogTest, LogOfSuccessfulTranslation) {
  EXPECT_EQ(LogOf(TranslateSuccessfully, "INFO"), GoldenLog("brivet_read.log"));
}

TEST(TranslationLogTest, LogOfFailedTranslation) {
  EXPECT_EQ(LogOf(TranslateWithFailure, "VERBOSE"), GoldenLog("brivet_read_failed.log"));
}

}  // namespace

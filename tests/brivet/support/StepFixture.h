// STEP files for tests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "DocumentRecorder.h"
#include "Progress.h"
#include "RecordingListener.h"
#include "ScratchDirectory.h"
#include "StepFormatReader.h"
#include "TestDocument.h"
#include "VRELFile.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"

// The bytes as an open file.
class BytesInFile {
 public:
  explicit BytesInFile(std::string const& bytes)
      : path(directory.Write("part.stp", bytes)), buffer(VRELFileHandle(new VRELFile(path.c_str())), nullptr) {}

  StepBuffer& Buffer() { return buffer; }

 private:
  ScratchDirectory directory;
  std::string const path;
  StepBuffer buffer;
};

// A document read as the driver reads it, and what was reported meanwhile.
class ReadDocument {
 public:
  explicit ReadDocument(std::string const& bytes, std::string const& shownName = "part.stp", bool resolves = true)
      : path(directory.Write("part.stp", bytes)) {
    Read(shownName, resolves);
  }

  StepFormatReader* operator->() { return document; }
  StepFormatReader& operator*() { return *document; }
  std::string const& Path() const { return path; }

  // Returns errors and warnings, each as "WARNING: TEXT" or "ERROR: TEXT".
  std::vector<std::string> Messages() const {
    std::vector<std::string> messages;
    for (RecordedEvent const& event : listener.events) {
      if (event.name == "VRELMessageEvent") continue;
      messages.push_back((event.name == "VRELErrorEvent" ? "ERROR: " : "WARNING: ") + event.text);
    }
    return messages;
  }
  std::string Record(bool referrers = false) {
    DocumentRecorder recorder;
    Progress progress;
    EXPECT_EQ(document->Describe(recorder, progress, referrers), VREL_S_OK);
    return recorder.text;
  }

  VRINResult opened = VREL_UNDETERMINED;
  VRINResult resolved = VREL_UNDETERMINED;
  RecordingListener listener;

 private:
  void Read(std::string const& shownName, bool resolves) {
    document = new StepFormatReader(VRELFileHandle(new VRELFile(path.c_str())), shownName);
    handle = document;
    opened = document->Open();
    VRELReader reader(handle);
    reader.ReadHeaderSection();
    reader.ReadDataSection();
    if (resolves) resolved = reader.Resolve();
  }

  ScratchDirectory directory;
  std::string const path;
  StepFormatReader* document = nullptr;
  VRELFormatReaderHandle handle;
};

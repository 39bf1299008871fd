#include "StepWork.h"

#include <string>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "HtmlPage.h"
#include "Progress.h"
#include "StepFormatReader.h"
#include "VRELFormatReaderHandle.h"
#include "VRELReader.h"
#ifdef VREL_BENCHMARK_OCCT_STEP
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#endif

namespace {

// Collects output in blocks, as a file stream does, and discards them.
class Discarded final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    block.append(buffer, static_cast<std::size_t>(count));
    if (block.size() > 65536) flush();
    return count;
  }
  void flush() override {
    bytes += block.size();
    block.clear();
  }
  void close() override { flush(); }
  std::string block;
  std::size_t bytes = 0;
};

StepFormatReader* Read(char const* path, VRELFormatReaderHandle& handle) {
  auto* const document = new StepFormatReader(VRELFileHandle(new VRELFile(path)), path);
  handle = document;
  document->Open();
  VRELReader reader(handle);
  reader.ReadHeaderSection();
  reader.ReadDataSection();
  return document;
}

}  // namespace

std::size_t ReadStepFile(char const* path) {
  VRELFormatReaderHandle handle;
  return static_cast<std::size_t>(Read(path, handle)->GetInstanceCount());
}

std::size_t WritePageOfStepFile(char const* path) {
  VRELFormatReaderHandle handle;
  StepFormatReader* const document = Read(path, handle);
  document->Resolve();
  Discarded target;
  CheckedOutputStream stream(&target);
  Progress progress;
  BrivetWriteRequest request;
  request.document = document;
  request.progress = &progress;
  HtmlPage(stream, "large").WritePage(request);
  target.flush();
  return target.bytes;
}

#ifdef VREL_BENCHMARK_OCCT_STEP
std::size_t ReadStepFileByOpenCascade(char const* path) {
  Message::DefaultMessenger()->ChangePrinters().Clear();
  STEPControl_Reader reader;
  if (reader.ReadFile(path) != IFSelect_RetDone) return 0;
  return static_cast<std::size_t>(reader.StepModel()->NbEntities());
}
#endif

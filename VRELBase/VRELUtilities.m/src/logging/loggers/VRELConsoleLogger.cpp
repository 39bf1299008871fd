#include "VRELConsoleLogger.h"

#include <unistd.h>

#include <memory>

#include "VRELEnvironment.h"
#include "VRELEventBus.h"
#include "VRELFileDescriptor.h"
#include "VRELFileOutputStream.h"
#include "VRELString.h"

namespace {

std::unique_ptr<VRELOutputStream> MakeStream(int descriptor) {
  return std::unique_ptr<VRELOutputStream>(
      new VRELFileOutputStream(new VRELFileDescriptor(descriptor, VRELFileDescriptor::ModeWrite)));
}

VRELEventLevel Threshold(VRELEventLevel wanted) {
  VRELString keyword;
  if (VRELEnvironment::GetVariable(L"VRELConsoleTracesLevel", keyword) == VREL_S_OK) {
    return VRELEvent::GetLevel(keyword, VREL_LEVEL_NONE);
  }
  return wanted == VREL_LEVEL_DEFAULT ? VREL_LEVEL_INFO : wanted;
}

}  // namespace

VRELConsoleLogger::VRELConsoleLogger() : standardOutput(nullptr), standardError(nullptr) {}

VRELConsoleLogger::~VRELConsoleLogger() {
  VRELEventBus::GetEventBus()->RemoveListener(this);
  delete standardOutput;
  delete standardError;
}

void VRELConsoleLogger::SetUp(VRELEventLevel level) {
  _console.Initialize(level);
}

void VRELConsoleLogger::Initialize(VRELEventLevel level) {
  if (IsInitialized()) return;
  std::unique_ptr<VRELOutputStream> output = MakeStream(STDOUT_FILENO);
  std::unique_ptr<VRELOutputStream> error = MakeStream(STDERR_FILENO);
  Listen(Threshold(level));
  standardOutput = output.release();
  standardError = error.release();
}

void VRELConsoleLogger::HandleEvent(VRELEvent& event) {
  if (!IsInitialized() || !IsPassing(event)) return;
  event.GetFormattedDescription(event.GetLevel() < VREL_LEVEL_WARNING ? standardOutput : standardError);
}

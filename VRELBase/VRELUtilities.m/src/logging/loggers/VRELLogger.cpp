#include "VRELLogger.h"

#include <memory>

#include "VRELAbortException.h"
#include "VRELEnvironment.h"
#include "VRELEventBus.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELString.h"

namespace {

// Returns VREL_LEVEL_INFO if the variable is unset or not a keyword.
VRELEventLevel LevelFromEnvironment() {
  VRELString keyword;
  VRELEnvironment::GetVariable(L"VRELLogLevel", keyword);
  return VRELEvent::GetLevel(keyword, VREL_LEVEL_INFO);
}

}  // namespace

VRELLogger::VRELLogger() : threshold(VREL_LEVEL_NONE), stream(nullptr) {}

VRELLogger::~VRELLogger() {
  VRELLogger::Finalize();
}

void VRELLogger::HandleEvent(VRELEvent& event) {
  if (stream != nullptr && IsPassing(event)) event.GetFormattedDescription(stream);
}

void VRELLogger::Initialize(VRELFilePath& path, VRELEventLevel level) {
  if (!path.IsValid()) return;
  try {
    Initialize(new VRELFileOutputStream(path), level);
  } catch (VRELAbortException const&) {
    throw VRELAbortException();
  } catch (...) {
    // The translation continues without its log.
    return;
  }
}

void VRELLogger::Initialize(std::FILE* file, VRELEventLevel level) {
  if (file != nullptr) Initialize(new VRELFileOutputStream(file), level);
}

void VRELLogger::Initialize(VRELOutputStream* newStream, VRELEventLevel level) {
  if (stream != nullptr || newStream == nullptr) return;
  std::unique_ptr<VRELOutputStream> taken(newStream);
  Listen(level == VREL_LEVEL_DEFAULT ? LevelFromEnvironment() : level);
  stream = taken.release();
}

void VRELLogger::Finalize() {
  threshold = VREL_LEVEL_NONE;
  VRELEventBus::GetEventBus()->RemoveListener(this);
  delete stream;
  stream = nullptr;
}

void VRELLogger::Listen(VRELEventLevel level) {
  VRELEventBus::GetEventBus()->AddListener(this);
  threshold = level;
}

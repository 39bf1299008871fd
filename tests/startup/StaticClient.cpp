// Prints what the library provides in a constructor before main and in a destructor after main of a client's object
// with static storage duration.
#include <cstdio>

#include "Gk_Unit.h"
#include "VREL4x4Matrix.h"
#include "VRELConsoleLogger.h"
#include "VRELEnvironment.h"
#include "VRELError.h"
#include "VRELErrorTracker.h"
#include "VRELEventBus.h"
#include "VRELFileHeader.h"
#include "VRELInfo.h"
#include "VRELLibraryManager.h"
#include "VRELOptionConstants.h"
#include "VRELOptionName.h"
#include "VRELTextEvent.h"
#include "VRELTimingLogger.h"
#include "VRELVectorf.h"
#include "VRINObjectImpl.h"
#include "VRINOptionName.h"
#include "VRINResult.h"
#include "VRINValue.h"

namespace {

class Printer : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    auto const* const message = dynamic_cast<VRELTextEvent const*>(&event);
    std::printf("event %s\n", message != nullptr ? message->GetMessage() : "");
  }
};

void Report(char const* when) {
  std::printf("%s\n", when);
  std::printf("result %#lx\n", static_cast<long>(VRINResult::E_FAIL_RESULT));
  std::printf("wildcard %d\n", VREL_OPTION_WILDCARD.toUtf8() == "*" ? 1 : 0);
  std::printf("option names %d\n", VRELOptionName::_optionNames.size());
  std::printf("public name %d\n", VRINOptionName::Representation.IsValid() ? 1 : 0);
  std::printf("inch %g\n", Gk_Unit::inch.getValue());
  std::printf("matrix %g\n", static_cast<double>(VREL4x4MatrixI.GetDeterminant()));
  std::printf("vector %g\n", static_cast<double>(VRELVectorKf.Z()));
  std::printf("error %#lx\n", VRELError::FAIL_ERROR.GetErrorType());
  std::printf("header key %d\n", VRELFileHeader::AUTHOR.toUtf8() == "Author" ? 1 : 0);
  std::printf("modules %d\n", VRELLibraryManager::_libraries.Size());
  std::printf("tracker %d\n", VRELErrorTracker::GetInstance() != nullptr ? 1 : 0);
  std::printf("environment %d\n", VRELEnvironment::_pVariables != nullptr ? 1 : 0);
  std::printf("console %d\n", VRELConsoleLogger::_console.IsInitialized() ? 1 : 0);
  std::printf("listeners %d\n", VRELEventBus::GetEventBus()->GetListenerCount());
  Printer printer;
  VRELEventBus::GetEventBus()->AddListener(&printer);
  VRELInfo::Printf("%s", when);
  VRELEventBus::GetEventBus()->RemoveListener(&printer);
}

struct Client {
  Client() { Report("before main"); }
  ~Client() { Report("after main"); }
} client;

}  // namespace

int main() {
  std::printf("objects %d\n", VRINObjectImpl::_objectCounter);
}

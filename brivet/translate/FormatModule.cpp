#include "FormatModule.h"

#include <dlfcn.h>

#include "Diagnostics.h"
#include "VRELLibraryManager.h"

namespace {

// The folder of libVRELBase.so, where the loader looks for modules first.
std::string LibraryFolder() {
  Dl_info info;
  void* const address = reinterpret_cast<void*>(&VRELLibraryManager::FreeLibraries);
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "the folder of libVRELBase.so";
  std::string const path = info.dli_fname;
  std::size_t const slash = path.rfind('/');
  return slash == path.npos ? "." : path.substr(0, slash);
}

}  // namespace

FormatModule::FormatModule(Format const& served)
    : format(served), library(served.module, BRIVET_INITIALIZE, BRIVET_FINALIZE) {}

VRINResult FormatModule::FindReader() {
  return Find(BRIVET_OPEN, "reads ", openFunction);
}

VRINResult FormatModule::FindWriter() {
  return Find(BRIVET_WRITE, "writes ", writeFunction);
}

VRINResult FormatModule::Find(char const* entry, char const* task, void*& function) {
  if (function != nullptr || library.GetFunction(entry, function).IsSuccess()) return VREL_S_OK;
  char const* const found = dlerror();
  ReportProblem(std::string("lib") + format.module + ".so",
                std::string("expected the module that ") + task + format.title + ", found " +
                    (found != nullptr ? found : "none") + "; put it into " + LibraryFolder() +
                    ", or its folder into LD_LIBRARY_PATH");
  return VREL_E_NOT_SUPPORTED;
}

VRINResult FormatModule::Open(BrivetOpenRequest& request) {
  VRINResult const result = FindReader();
  if (result.IsFailure()) return result;
  reinterpret_cast<BrivetOpenFunction*>(openFunction)(request);
  return request.result;
}

VRINResult FormatModule::Write(BrivetWriteRequest& request) {
  VRINResult const result = FindWriter();
  if (result.IsFailure()) return result;
  reinterpret_cast<BrivetWriteFunction*>(writeFunction)(request);
  return request.result;
}

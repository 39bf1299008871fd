#include "FormatModule.h"

#include <dlfcn.h>

#include "Diagnostics.h"
#include "PathNames.h"
#include "VRELLibraryManager.h"

namespace {

// Returns the folder of libVRELBase.so, where the loader looks for modules first.
std::string LibraryFolder() {
  Dl_info info;
  void* const address = reinterpret_cast<void*>(&VRELLibraryManager::FreeLibraries);
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "the folder of libVRELBase.so";
  std::string const folder(FolderOf(info.dli_fname));
  return folder.size() > 1 ? folder.substr(0, folder.size() - 1) : ".";
}

}  // namespace

FormatModule::FormatModule(Format const& moduleFormat)
    : format(moduleFormat), library(moduleFormat.module, BRIVET_INITIALIZE, BRIVET_FINALIZE) {}

VRINResult FormatModule::FindReader() {
  return Find(BRIVET_OPEN, "reading ", openFunction);
}

VRINResult FormatModule::FindWriter() {
  return Find(BRIVET_WRITE, "writing ", writeFunction);
}

VRINResult FormatModule::Find(char const* entry, char const* task, void*& function) {
  if (function != nullptr || library.GetFunction(entry, function).IsSuccess()) return VREL_S_OK;
  char const* const reason = dlerror();
  ReportProblem(std::string("cannot load the module for ") + task + format.title + ": " +
                (reason != nullptr ? reason : std::string("lib") + format.module + ".so not found"));
  ReportProblem("hint", "the module belongs in " + LibraryFolder() + " or in a folder of LD_LIBRARY_PATH");
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

// The library loads a module by name: dlopen("libNAME.so"). The dynamic loader takes a file that is loaded already if
// its soname is that name, so that a module in any folder is first loaded by its path.
#include "FormatModule.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <new>

#include "Descriptor.h"
#include "Diagnostics.h"
#include "FileError.h"
#include "ModuleDescription.h"
#include "ModuleRegistry.h"

namespace {

int loadedModules = 0;

// Called by exit.
void RefuseExit() {
  if (loadedModules == 0) return;
  constexpr std::string_view kMessage = "brivet: a format module has called exit\n";
  WriteAll(STDERR_FILENO, kMessage);
  _exit(1);
}

std::string LoaderMessage() {
  char const* const reason = dlerror();
  return reason != nullptr ? reason : "unknown reason";
}

}  // namespace

FormatModule::FormatModule(Format const& moduleFormat)
    : format(moduleFormat), library(moduleFormat.module, BRIVET_INITIALIZE, BRIVET_FINALIZE) {}

FormatModule::~FormatModule() {
  if (isGuarded) --loadedModules;
  if (fromPath != nullptr) dlclose(fromPath);
}

VRINResult FormatModule::FindReader() {
  return Find(BRIVET_OPEN, "reading ", openFunction);
}

VRINResult FormatModule::FindWriter() {
  return Find(BRIVET_WRITE, "writing ", writeFunction);
}

VRINResult FormatModule::FindEvaluator() {
  return Find(BRIVET_EVALUATE, "evaluating ", evaluateFunction);
}

VRINResult FormatModule::Find(char const* entry, char const* task, void*& function) {
  if (function != nullptr) return VREL_S_OK;
  static int const kRegistered = std::atexit(RefuseExit);
  if (!isGuarded && kRegistered == 0) {
    isGuarded = true;
    ++loadedModules;
  }
  VRINResult const loaded = LoadFromPath(task);
  if (loaded.IsFailure()) return loaded;
  if (library.GetFunction(entry, function).IsSuccess()) return VREL_S_OK;
  return ReportLoaderError(task);
}

VRINResult FormatModule::ReportLoaderError(char const* task) const {
  char const* const reason = dlerror();
  ReportProblem(std::string("cannot load the module for ") + task + format.title + ": " +
                (reason != nullptr ? reason : std::string("lib") + format.module + ".so not found"));
  ReportProblem("hint", "the module belongs in " + ModuleRegistry::LibraryFolder() +
                            "/brivet or in a folder of BRIVET_MODULE_PATH");
  return VREL_E_NOT_SUPPORTED;
}

VRINResult FormatModule::LoadFromPath(char const* task) {
  if (format.path == nullptr || fromPath != nullptr) return VREL_S_OK;
  void* const module = dlopen(format.path, RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return ReportLoaderError(task);
  std::string const problem = WhyNotUsable(module);
  if (problem.empty()) {
    fromPath = module;
    return VREL_S_OK;
  }
  ReportProblem("cannot use the module " + QuoteName(format.path) + ": " + problem);
  ReportProblem("hint", "build and install the module again, against the SDK of this brivet");
  dlclose(module);
  return VREL_E_NOT_SUPPORTED;
}

std::string FormatModule::WhyNotUsable(void* module) const {
  void* const version = dlsym(module, BRIVET_SDK_VERSION_FUNCTION);
  if (version == nullptr) return LoaderMessage();
  int const number = reinterpret_cast<BrivetSdkVersionFunction*>(version)();
  if (number != BRIVET_SDK_VERSION) {
    return "it was built for version " + std::to_string(number) + " of the SDK, this brivet has version " +
           std::to_string(BRIVET_SDK_VERSION);
  }
  void* const describe = dlsym(module, BRIVET_DESCRIBE);
  if (describe == nullptr) return LoaderMessage();
  ModuleDescription actual;
  reinterpret_cast<BrivetDescribeFunction*>(describe)(actual);
  FormatDescription const* const found = actual.Find(format.name);
  FormatDescription const* const listed = format.description->Find(format.name);
  if (actual.name != format.module || actual.version != format.description->version || found == nullptr ||
      listed == nullptr || found->reads != listed->reads || found->writes != listed->writes ||
      found->evaluates != listed->evaluates) {
    return "its manifest describes another module: format " + QuoteName(format.name) + " of version " +
           format.description->version + ", found version " + actual.version;
  }
  void* const byName = dlopen(("lib" + std::string(format.module) + ".so").c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (byName != nullptr) dlclose(byName);
  return byName == module ? "" : "its soname is not lib" + std::string(format.module) + ".so";
}

// An exception that is not of the standard library, and one that reports missing memory, is the caller's.
template <class Call>
VRINResult FormatModule::Run(Call const& call) {
  try {
    return call();
  } catch (std::bad_alloc const&) {
    throw;
  } catch (std::exception const& error) {
    ReportProblem("the module " + QuoteName(format.module) + " has failed: " + error.what());
  }
  return VREL_E_FAIL;
}

VRINResult FormatModule::Open(BrivetOpenRequest& request) {
  VRINResult const result = FindReader();
  if (result.IsFailure()) return result;
  return Run([this, &request]() -> VRINResult {
    reinterpret_cast<BrivetOpenFunction*>(openFunction)(request);
    if (request.result.IsFailure() || request.document != nullptr) return request.result;
    ReportProblem("the module " + QuoteName(format.module) + " has reported success without a document");
    return VREL_E_FAIL;
  });
}

VRINResult FormatModule::Write(BrivetWriteRequest& request) {
  VRINResult const result = FindWriter();
  if (result.IsFailure()) return result;
  request.format = format.name;
  return Run([this, &request]() -> VRINResult {
    reinterpret_cast<BrivetWriteFunction*>(writeFunction)(request);
    return request.result;
  });
}

VRINResult FormatModule::Evaluate(BrivetEvaluateRequest& request) {
  VRINResult const result = FindEvaluator();
  if (result.IsFailure()) return result;
  return Run([this, &request]() -> VRINResult {
    reinterpret_cast<BrivetEvaluateFunction*>(evaluateFunction)(request);
    return request.result;
  });
}

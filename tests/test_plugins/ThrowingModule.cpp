// Module with an entry point that throws an exception of a class defined in the module.
#include <exception>

#include "VRELExport.h"
#include "VRELInfo.h"

namespace {

class ModuleException : public std::exception {
 public:
  char const* what() const noexcept override { return MODULE_NAME; }
};

}  // namespace

extern "C" VREL_EXPORT void InitializeModule() {
  VRELInfo::NoTabPrintf("%s initializes", MODULE_NAME);
#ifdef THROW_FROM_INITIALIZE
  throw ModuleException();
#endif
}

extern "C" VREL_EXPORT void FinalizeModule() {
  VRELInfo::NoTabPrintf("%s finalises", MODULE_NAME);
#ifdef THROW_FROM_FINALIZE
  throw ModuleException();
#endif
}

// A format module that only writes "bad", with one fault, which a definition selects.
#include <cstdlib>
#include <stdexcept>

#include "BrivetModule.h"
#include "ModuleDescription.h"

#ifdef UNDEFINED
extern void NowhereDefined();
#endif

#ifdef OTHER_SDK
extern "C" __attribute__((visibility("default"))) int BrivetSdkVersion() {
  return 99;
}
extern "C" __attribute__((visibility("default"))) void BrivetDescribeModule(ModuleDescription& module)
#elif !defined(UNDESCRIBED)
BRIVET_DESCRIBE_MODULE(module)
#endif
#ifndef UNDESCRIBED
{
  module.name = "BrivetBad";
#ifdef OTHER_VERSION
  module.version = "2";
#else
  module.version = "1";
#endif
  FormatDescription bad;
  bad.name = "bad";
  bad.title = "Bad";
  bad.extensions = {".bad"};
  bad.reads = bad.writes = true;
#ifdef BAD_OPTION
  bad.writerOptions = {{"Count", OptionDescription::Int, "x", "number", {}, "", ""}};
#endif
  module.formats = {bad};
#ifdef TWICE
  module.formats.push_back(bad);
#endif
}
#endif

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}
#ifndef NO_OPEN
BRIVET_MODULE_ENTRY BrivetOpenDocument(BrivetOpenRequest& request) {
  request.result = VREL_S_OK;
}
#endif
BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
#if defined(THROWS)
  throw std::runtime_error("thrown by the module");
#elif defined(EXITS)
  std::exit(0);
#elif defined(UNDEFINED)
  NowhereDefined();
#endif
  request.result = VREL_E_FAIL;
}

// Module with a process monitor that reads the times of the operating system.
#include <sys/resource.h>

#include <stdexcept>

#include "VRELBasePerformanceMonitor.h"
#include "VRELBrivetLibrary.h"
#include "VRELExport.h"
#include "VRELInfo.h"
#include "VRELTimingLogger.h"

namespace {

double Seconds(timeval const& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000000;
}

class Monitor : public VRELBasePerformanceMonitor {
 public:
  VRINResult PrintStatistics() override {
    VRELInfo::NoTabPrintf("statistics of %s", MODULE_NAME);
    return VREL_S_OK;
  }
  VRINResult QueryProcessTimes(double& kernel, double& user) override {
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0) return VREL_E_FAIL;
    kernel = Seconds(usage.ru_stime);
    user = Seconds(usage.ru_utime);
    return VREL_S_OK;
  }
};

#ifndef HAS_TERMINATE
// Without TerminatePerformanceMonitor, the monitor is a static object of the module.
Monitor ownMonitor;
#endif

}  // namespace

extern "C" VREL_EXPORT void InitializeModule() {
#ifdef HAS_TERMINATE
  auto* const monitor = new Monitor;
#else
  auto* const monitor = &ownMonitor;
#endif
  VRELTimingLogger::_pMonitor = monitor;
  VRELBasePerformanceMonitor::Install(monitor, new VRELBrivetLibrary(MODULE_NAME, "InitializeModule", ""));
}

#ifdef HAS_TERMINATE
extern "C" VREL_EXPORT void TerminatePerformanceMonitor(VRELBasePerformanceMonitor** monitor) {
  VRELInfo::NoTabPrintf("%s terminates", MODULE_NAME);
  delete *monitor;
  *monitor = nullptr;
#ifdef THROW_FROM_TERMINATE
  throw std::runtime_error("terminated");
#endif
}
#endif

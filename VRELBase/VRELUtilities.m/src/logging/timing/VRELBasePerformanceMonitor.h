// The interface of what measures a process.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

class VRELBrivetLibrary;

// Derive a monitor from it, and set VRELTimingLogger::_pMonitor for as long as the monitor is to be asked. A monitor
// that dies is let go by itself, there and in Instance().
//
// A monitor that a module brings is known here by two slots: the monitor, and the library of the module. The program
// or the module fills them by Install, and VRELTimingLogger::Stop() empties them again:
//
//   auto* const library = new VRELBrivetLibrary(L"ProcessMonitor", L"StartMonitor", L"");
//   VRELBasePerformanceMonitor::Install(monitor, library);
//
// The module offers the entry point that takes its monitor back:
//
//   extern "C" void TerminatePerformanceMonitor(VRELBasePerformanceMonitor** monitor) {
//     delete *monitor;
//     *monitor = nullptr;
//   }
class VREL_EXPORT VRELBasePerformanceMonitor {
 public:
  virtual ~VRELBasePerformanceMonitor();

  // Tells in its own way how the process does. VREL_E_FAIL here.
  virtual VRINResult PrintStatistics();
  // The seconds that the process has spent in the system and in its own code. VREL_E_FAIL here, with both untouched.
  virtual VRINResult QueryProcessTimes(double& kernel, double& user);

  // The monitor that was installed; null if there is none.
  static VRELBasePerformanceMonitor* Instance() noexcept;

  // Fills both slots; what was there before is cleared. The library, made by new, is taken and loaded, so that the
  // module stays as long as its monitor is installed; the monitor is not taken. Either may be null.
  // VRELTimingLogger::_pMonitor stays as it is. What an entry point throws, of this library or of that before, reaches
  // the caller: this library is gone then, and the monitor not installed.
  static void Install(VRELBasePerformanceMonitor* monitor, VRELBrivetLibrary* library);

  // Calls the entry point TerminatePerformanceMonitor of the library, if it has one, with the address of the monitor's
  // slot, and deletes the library. Without a library nothing happens, and the monitor stays. What the entry point
  // throws reaches the caller, when the library is gone.
  static void Clear();
};

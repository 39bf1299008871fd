// Interface of a process monitor.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

class VRELBrivetLibrary;

// Process monitor: returns the kernel and user time of the process for VRELTimingLogger.
//
// Derive from it and set VRELTimingLogger::_pMonitor. The destructor removes the monitor from there and from
// Instance().
//
// A monitor that a module provides is installed together with the library of the module, which keeps the module loaded.
// VRELTimingLogger::Stop() removes both:
//
//   auto* const library = new VRELBrivetLibrary(L"ProcessMonitor", L"StartMonitor", L"");
//   VRELBasePerformanceMonitor::Install(monitor, library);
//
// The module exports the function that deletes its monitor:
//
//   extern "C" void TerminatePerformanceMonitor(VRELBasePerformanceMonitor** monitor) {
//     delete *monitor;
//     *monitor = nullptr;
//   }
class VREL_EXPORT VRELBasePerformanceMonitor {
 public:
  virtual ~VRELBasePerformanceMonitor();

  // Prints statistics of the process. The base class returns VREL_E_FAIL.
  virtual VRINResult PrintStatistics();
  // Stores the kernel and user time of the process in seconds. The base class returns VREL_E_FAIL and stores nothing.
  virtual VRINResult QueryProcessTimes(double& kernel, double& user);

  // Returns the installed monitor, or null.
  static VRELBasePerformanceMonitor* Instance() noexcept;

  // Installs a monitor and the library of its module, after Clear(). Loads the library. Does not change
  // VRELTimingLogger::_pMonitor. Both pointers may be null.
  //
  // Ownership: takes the library, which must have been created with new. The monitor is not owned.
  // Errors: rethrows exceptions of the entry points of both libraries; the new library is then deleted and the monitor
  // not installed.
  static void Install(VRELBasePerformanceMonitor* monitor, VRELBrivetLibrary* library);

  // Calls TerminatePerformanceMonitor of the installed library, if it exports it, with the address of the pointer to
  // the monitor, and deletes the library. Without a library it does nothing, and the monitor stays installed.
  //
  // Errors: rethrows exceptions of the entry point after deleting the library.
  static void Clear();
};

#include "VRELBasePerformanceMonitor.h"

#include <memory>
#include <utility>

#include "VRELBrivetLibrary.h"
#include "VRELTimingLogger.h"

namespace {

VRELBasePerformanceMonitor* monitorSlot = nullptr;
VRELBrivetLibrary* librarySlot = nullptr;

using TerminateFunction = void (*)(VRELBasePerformanceMonitor** monitor);

}  // namespace

VRELBasePerformanceMonitor::~VRELBasePerformanceMonitor() {
  if (monitorSlot == this) monitorSlot = nullptr;
  if (VRELTimingLogger::_pMonitor == this) VRELTimingLogger::_pMonitor = nullptr;
}

VRINResult VRELBasePerformanceMonitor::PrintStatistics() {
  return VREL_E_FAIL;
}

VRINResult VRELBasePerformanceMonitor::QueryProcessTimes(double& /*kernel*/, double& /*user*/) {
  return VREL_E_FAIL;
}

VRELBasePerformanceMonitor* VRELBasePerformanceMonitor::Instance() noexcept {
  return monitorSlot;
}

void VRELBasePerformanceMonitor::Install(VRELBasePerformanceMonitor* monitor, VRELBrivetLibrary* library) {
  if (library != librarySlot) {
    std::unique_ptr<VRELBrivetLibrary> taken(library);
    if (taken != nullptr) taken->Load();
    Clear();
    librarySlot = taken.release();
  }
  monitorSlot = monitor;
}

void VRELBasePerformanceMonitor::Clear() {
  std::unique_ptr<VRELBrivetLibrary> const library(std::exchange(librarySlot, nullptr));
  if (library == nullptr) return;
  void* function = nullptr;
  VRINResult const found = library->GetFunction(L"TerminatePerformanceMonitor", function);
  if (found == VREL_S_OK && function != nullptr) reinterpret_cast<TerminateFunction>(function)(&monitorSlot);
}

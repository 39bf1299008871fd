// Which allocations of a process fail.
#pragma once

#include <atomic>

// Mapped from a file by the test and by the program under test, so that the counts survive a crash of the program.
// Allocations are numbered from 1.
struct FaultPlan {
  long first = 0;                   // the first allocation that fails; 0 for none
  long last = 0;                    // the last one
  std::atomic<long> count{0};       // number of allocations
  std::atomic<long> beforeMain{0};  // number of allocations before main
};

// Environment variable with the absolute path of the file.
inline constexpr char kFaultPlanVariable[] = "VREL_FAULT_PLAN";

// The plan of this process; null for none. Defined in FailingAllocation.cpp.
extern "C" FaultPlan* faultPlan;

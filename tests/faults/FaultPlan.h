// Which allocations of a process fail.
#pragma once

#include <atomic>

// Lies in a file that the test and the program under test both map: what the program counts is there even if it died.
// The numbers of the allocations begin at 1.
struct FaultPlan {
  long first = 0;                   // the first allocation that fails; 0: none does
  long last = 0;                    // the last one
  std::atomic<long> count{0};       // how many were asked for
  std::atomic<long> beforeMain{0};  // how many of them before the program's own code
};

// Names the file, an absolute path.
inline constexpr char FAULT_PLAN_VARIABLE[] = "VREL_FAULT_PLAN";

// The plan that this process follows; null for none. Defined beside the allocation functions.
extern "C" FaultPlan* faultPlan;

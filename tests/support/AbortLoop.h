// A loop that only an abort request from a signal handler can stop.
#pragma once

#include <signal.h>
#include <sys/time.h>

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

// Returns true if a poll in a loop without other side effects sees the request of a SIGALRM handler. Inline, so that it
// is compiled with the options of the source that includes it.
static inline bool AbortStopsLoop() {
  struct sigaction action = {};
  struct sigaction previous = {};
  action.sa_handler = [](int) { Gk_ErrMgr::setAbort(); };
  sigaction(SIGALRM, &action, &previous);
  itimerval const timer = {{0, 0}, {0, 20000}};
  setitimer(ITIMER_REAL, &timer, nullptr);
  bool isStopped = false;
  try {
    // Some seconds, if the poll is hoisted out of the loop; 20 ms otherwise.
    for (long i = 0; i < 5000000000L; ++i) Gk_ErrMgr::checkAbort();
  } catch (VRELAbortException const&) {
    isStopped = true;
  }
  sigaction(SIGALRM, &previous, nullptr);
  return isStopped;
}

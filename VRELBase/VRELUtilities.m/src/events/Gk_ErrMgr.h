// The exception route: how an abort request and a named failure travel.
#pragma once

#include "Gk_Exception.h"
#include "VRELExport.h"

// Guarded operations begin with the same two steps: they poll for an abort, then test what they presume. A presumption
// that does not hold changes nothing in the flow.
//
//   Gk_ErrMgr::checkAbort();
//   if (dimension < 1) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
//
// Nothing in the library turns the exceptions into result codes: the module that drives a translation does.
class VREL_EXPORT Gk_ErrMgr {
 public:
  // Asks for an abort, from anywhere on the working thread; the next checkAbort throws.
  static void setAbort() noexcept { abortFlag = true; }

  // Whether an abort is asked for; the request stays.
  static bool shouldAbort() noexcept { return abortFlag; }

  // Takes the request back and throws a VRELAbortException, if there is one. A second check, during unwinding, does not
  // throw again.
  static void checkAbort() {
    if (abortFlag) Abort();
  }

  // Reports the token through VRELError::Printf, then throws a copy of the exception.
  [[noreturn]] static void raise(Gk_Exception const& exception);

  // Calls trap() and returns.
  static void doAssert(char const* file, int line);

  // Does nothing: a place to stop at in a debugger, before an exception is raised and after a failed assertion.
  static void trap();

 private:
  [[noreturn]] static void Abort();

  static bool abortFlag;
};

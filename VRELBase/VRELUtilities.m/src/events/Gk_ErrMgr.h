// Abort requests, named exceptions and assertions.
#pragma once

#include "Gk_Exception.h"
#include "VRELExport.h"

// Central point for abort requests, exceptions and assertions. Guarded operations begin with the same two steps: poll
// for an abort request, then test a precondition.
//
//   Gk_ErrMgr::checkAbort();
//   if (dimension < 1) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
//
// Nothing in the library converts the exceptions to result codes; the driver of a translation does.
//
// Thread safety: setAbort and shouldAbort can be called from a signal handler that runs on the working thread. The flag
// is one byte with volatile accesses, so a compiler cannot remove a poll from a loop. It is not atomic: a request from
// another thread is a data race. Send a signal to the working thread instead.
class VREL_EXPORT Gk_ErrMgr {
 public:
  // Requests an abort. The next checkAbort throws.
  static void setAbort() noexcept { abortFlag = true; }

  // Returns true if an abort is requested. The request remains.
  static bool shouldAbort() noexcept { return abortFlag; }

  // Throws a VRELAbortException if an abort is requested. Clears the request first, so that a second call during stack
  // unwinding does not throw.
  static void checkAbort() {
    if (abortFlag) Abort();
  }

  // Sends an error event with the token, as VRELError::Printf does, then throws a copy of the exception.
  [[noreturn]] static void raise(Gk_Exception const& exception);

  // Calls trap() and returns.
  // Compatibility: prints nothing and does not stop; the caller continues.
  static void doAssert(char const* file, int line);

  // Does nothing. Set a breakpoint here to stop before an exception is thrown and after a failed assertion.
  static void trap();

 private:
  [[noreturn]] static void Abort();

  static bool volatile abortFlag;
};

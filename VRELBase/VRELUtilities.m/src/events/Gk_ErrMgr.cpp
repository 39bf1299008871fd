#include "Gk_ErrMgr.h"

#include "VRELAbortException.h"
#include "VRELChannelLine.h"
#include "VRELErrorEvent.h"

bool volatile Gk_ErrMgr::abortFlag = false;

void Gk_ErrMgr::Abort() {
  abortFlag = false;
  throw VRELAbortException();
}

void Gk_ErrMgr::raise(Gk_Exception const& exception) {
  VRELSendLine<VRELErrorEvent>(exception.token());
  trap();
  throw Gk_Exception(exception);
}

void Gk_ErrMgr::doAssert(char const* /*file*/, int /*line*/) {
  trap();
}

// The empty assembly statement prevents the compiler from removing the calls of a function without effect.
__attribute__((noinline)) void Gk_ErrMgr::trap() {
  __asm__ volatile("");
}

// Checks whether an operation polls for an abort request.
#pragma once

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

// Requests an abort and runs `body`. Returns true if it polled. The request is cleared in either case.
template <class Body>
bool PollsAbort(Body const& body) {
  Gk_ErrMgr::setAbort();
  try {
    body();
  } catch (VRELAbortException const&) {
    return true;
  }
  try {
    Gk_ErrMgr::checkAbort();
  } catch (VRELAbortException const&) {
    return false;
  }
  return true;
}

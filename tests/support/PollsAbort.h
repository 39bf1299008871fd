// Tells whether an operation polls for an abort.
#pragma once

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

// Asks for an abort and runs `body`. Whether it threw; the request is gone afterwards in any case.
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

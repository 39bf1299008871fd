#include "VRELCallbackShared.h"

#include "Gk_ErrMgr.h"
#include "VRELAbortException.h"

bool (*VRELCallbackShared::m_AbortCallback)() = nullptr;

bool VRELCallbackShared::IsAborted() {
  bool const isRequested = Gk_ErrMgr::shouldAbort();
  bool const isCancelled = m_AbortCallback != nullptr && m_AbortCallback();
  if (isRequested || isCancelled) throw VRELAbortException();
  return false;
}

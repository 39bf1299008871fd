// The abort question that a worker puts to the application.
#pragma once

#include "VRELExport.h"

// A worker asks IsAborted() at points of its own choosing:
//
//   VRELCallbackShared::m_AbortCallback = [] { return dialog.IsCancelled(); };
//   ...
//   VRELCallbackShared::IsAborted();  // throws a VRELAbortException when it is
class VREL_EXPORT VRELCallbackShared {
 public:
  // Throws a VRELAbortException if the callback says so, or if Gk_ErrMgr::setAbort has asked for it; false otherwise.
  // The callback is asked either way. That the request stays, so that the next question throws again, is promised.
  // Without a callback the request alone counts.
  static bool IsAborted();

  // Set by the application; null at first.
  static bool (*m_AbortCallback)();
};

// Abort callback of the application.
#pragma once

#include "VRELExport.h"

// Abort callback. The application sets it; workers poll it:
//
//   VRELCallbackShared::m_AbortCallback = [] { return dialog.IsCancelled(); };
//   ...
//   VRELCallbackShared::IsAborted();  // throws if the user cancelled
class VREL_EXPORT VRELCallbackShared {
 public:
  // Returns false if no abort was requested. Calls the callback, if there is one, in every case.
  //
  // Errors: throws VRELAbortException if the callback returns true or the flag of Gk_ErrMgr::setAbort was set before
  // the call of the callback.
  // Compatibility: the flag stays set, so that the next call throws again.
  static bool IsAborted();

  // Callback of the application; null at start.
  static bool (*m_AbortCallback)();
};

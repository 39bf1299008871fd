// Remembers the errors of a run.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELError.h"
#include "VRELEventListener.h"
#include "VRINResult.h"

// A listener that keeps a copy of the error of each error event, from Initialize until it is deleted. Errors pile up
// for as long: who translates again in one process calls Reset in between.
//
//   VRELErrorTracker::Initialize();
//   ...
//   for (int i = 0; i < VRELError::GetErrorCount(); ++i) Report(*GetError(i));
//
// Pointers to errors are good until the next error arrives or the list is cleared.
class VREL_EXPORT VRELErrorTracker : public VRELEventListener {
 public:
  VRELErrorTracker();
  VRELErrorTracker(VRELErrorTracker const&) = delete;
  VRELErrorTracker& operator=(VRELErrorTracker const&) = delete;

  // Makes the tracker of the process and adds it to the bus, unless there is one. Always VREL_S_OK.
  static VRINResult Initialize();

  // The tracker of the process, or null. Whoever deletes it ends the tracking; the library never does.
  static VRELErrorTracker* GetInstance() noexcept { return _pTracker; }

  // Clears the list of the process's tracker, which stays on the bus. Always VREL_S_OK.
  static VRINResult Reset();

  // Keeps a copy of the error of a VRELErrorEvent, and ignores every other event. The text of the event is not kept.
  void HandleEvent(VRELEvent& event) override;

  // Takes the tracker of the process off the bus and forgets it; that the end of any tracker does so is promised.
  ~VRELErrorTracker() override;

  // The newest error; null when there is none.
  virtual VRELError* GetLastError();

  int GetErrorCount() const { return errors.size(); }

  // In the order of arrival; null outside.
  VRELError* GetError(int index);

  void ClearErrorList();

  static VRELErrorTracker* _pTracker;

 private:
  VRELDynamicArray<VRELError> errors;
};

// Collects the errors of a run.
#pragma once

#include "VRELDynamicArray.h"
#include "VRELError.h"
#include "VRELEventListener.h"
#include "VRINResult.h"

// Listener that stores a copy of the error of each error event. Errors accumulate until Reset: call it between two
// translations of one process.
//
//   VRELErrorTracker::Initialize();
//   ...
//   for (int i = 0; i < VRELError::GetErrorCount(); ++i) Report(*GetError(i));
//
// Ownership: the tracker owns its errors. A pointer to an error is valid until the next error arrives or the list is
// cleared. The library does not delete the tracker; the caller can, which ends the tracking.
// Thread safety: none; one tracker and one list for the process.
class VREL_EXPORT VRELErrorTracker : public VRELEventListener {
 public:
  VRELErrorTracker();
  VRELErrorTracker(VRELErrorTracker const&) = delete;
  VRELErrorTracker& operator=(VRELErrorTracker const&) = delete;

  // Creates the tracker of the process and adds it to the bus, unless it exists. Returns VREL_S_OK.
  static VRINResult Initialize();

  // Returns the tracker of the process, or null.
  static VRELErrorTracker* GetInstance() noexcept { return _pTracker; }

  // Clears the list of the tracker, which stays on the bus. Returns VREL_S_OK.
  static VRINResult Reset();

  // Stores a copy of the error of a VRELErrorEvent, without the message of the event. Ignores other events.
  void HandleEvent(VRELEvent& event) override;

  // Removes the tracker of the process from the bus and sets _pTracker to null.
  //
  // Compatibility: the destructor of any tracker object does so.
  ~VRELErrorTracker() override;

  // Returns the newest error, or null if there is none.
  virtual VRELError* GetLastError();

  int GetErrorCount() const { return errors.size(); }

  // Returns the error at an index, in order of arrival; null if the index is out of range.
  VRELError* GetError(int index);

  void ClearErrorList();

  static VRELErrorTracker* _pTracker;

 private:
  VRELDynamicArray<VRELError> errors;
};

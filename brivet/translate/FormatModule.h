// Format module of the driver.
#pragma once

#include <string>

#include "BrivetModule.h"
#include "Formats.h"
#include "VRELBrivetLibrary.h"

// Loads the module of a format when it is first needed.
//
// Errors: VREL_E_NOT_SUPPORTED if the module cannot be loaded or does not have the entry point; ReportProblem gets the
// message of the dynamic loader and the folder that was searched.
class FormatModule {
 public:
  explicit FormatModule(Format const& moduleFormat);

  // Find the entry point, so that a missing one is reported before any work is done.
  VRINResult FindReader();
  VRINResult FindWriter();

  // Return the result of the module.
  VRINResult Open(BrivetOpenRequest& request);
  VRINResult Write(BrivetWriteRequest& request);

 private:
  VRINResult Find(char const* entry, char const* task, void*& function);

  Format const& format;
  VRELBrivetLibrary library;
  void* openFunction = nullptr;
  void* writeFunction = nullptr;
};

// A format module as the driver uses it.
#pragma once

#include <string>

#include "BrivetModule.h"
#include "Formats.h"
#include "VRELBrivetLibrary.h"

// Loads the module of a format when it is first needed. A module that is missing, or that lacks what is asked of it, is
// reported by ReportProblem, with where it was looked for, and gives VREL_E_NOT_SUPPORTED.
class FormatModule {
 public:
  explicit FormatModule(Format const& served);

  // Finds the entry point, so that a failure is told before any work is done.
  VRINResult FindReader();
  VRINResult FindWriter();

  // What the module answers.
  VRINResult Open(BrivetOpenRequest& request);
  VRINResult Write(BrivetWriteRequest& request);

 private:
  VRINResult Find(char const* entry, char const* task, void*& function);

  Format const& format;
  VRELBrivetLibrary library;
  void* openFunction = nullptr;
  void* writeFunction = nullptr;
};

// Format module of the driver.
#pragma once

#include <string>

#include "BrivetModule.h"
#include "Formats.h"
#include "VRELBrivetLibrary.h"

// Loads the module of a format when it is first needed. A module with a manifest is loaded from its path, if it was
// built for this version of the SDK, has the soname libNAME.so, and describes the format as its manifest does.
//
// From then on until the object is destroyed, a call of exit ends the program with status 1 and a message: it is a
// module that calls it.
//
// Errors: VREL_E_NOT_SUPPORTED if the module cannot be loaded or does not have the entry point; ReportProblem gets the
// message of the dynamic loader, or what is wrong with the module, and a hint.
class FormatModule {
 public:
  explicit FormatModule(Format const& moduleFormat);
  ~FormatModule();
  FormatModule(FormatModule const&) = delete;
  FormatModule& operator=(FormatModule const&) = delete;

  // Find the entry point, so that a missing one is reported before any work is done.
  VRINResult FindReader();
  VRINResult FindWriter();
  VRINResult FindEvaluator();

  // Return the result of the module; VREL_E_FAIL, after a report, if it throws an exception of the standard library
  // other than std::bad_alloc, or reports success without a document.
  VRINResult Open(BrivetOpenRequest& request);
  VRINResult Write(BrivetWriteRequest& request);
  VRINResult Evaluate(BrivetEvaluateRequest& request);

 private:
  VRINResult Find(char const* entry, char const* task, void*& function);
  VRINResult LoadFromPath(char const* task);
  VRINResult ReportLoaderError(char const* task) const;
  std::string WhyNotUsable(void* module) const;
  template <class Call>
  VRINResult Run(Call const& call);

  Format const& format;
  VRELBrivetLibrary library;
  void* fromPath = nullptr;  // keeps the file loaded
  bool isGuarded = false;
  void* openFunction = nullptr;
  void* writeFunction = nullptr;
  void* evaluateFunction = nullptr;
};

// Environment variables of the process.
#pragma once

#include "VRELExport.h"
#include "VRELProperties.h"
#include "VRELString.h"
#include "VRINResult.h"

// Reads and writes environment variables. Three names are read from the system instead:
//
//   "USERNAME"      login name of the user of the process
//   "OS"            name of the kernel
//   "COMPUTERNAME"  name of the machine
//
// Compatibility: environment variables with these names are never read.
//
//   bool detailed = false;
//   VRELEnvironment::GetVariable(L"VRELTaskInfoDetailed", detailed);
//
// Names are converted to US-ASCII, other characters to the byte 0x1A. Values are in the default codepage of the
// process.
//
// The class is also a set of properties: GetEnv() returns an object that modules share. The properties are independent
// of the environment variables.
//
// Thread safety: GetEnv() can be called on any thread. The variables are not protected, like the environment of the C
// library.
class VREL_EXPORT VRELEnvironment : public VRELProperties {
 public:
  VRELEnvironment();
  ~VRELEnvironment() override;

  // Returns the shared object. It is made by the first call at the latest, and never destroyed.
  static VRELEnvironment* GetEnv();

  // Reads a variable as a string.
  // Errors: VREL_E_FAIL, with `value` unchanged, if it is not set or there is no login name.
  static VRINResult GetVariable(VRELString const& name, VRELString& value);
  // Reads a variable as an integer, by VRELStringToInteger.
  // Errors: those of the read and of the conversion, with `value` unchanged.
  static VRINResult GetVariable(VRELString const& name, int& value);
  // Reads a variable as a boolean, by VRELStringToBool.
  // Compatibility: `value` is always written. A string that is not a boolean is false, with success; VREL_E_FAIL, with
  // false, is returned only if the variable is not set.
  static VRINResult GetVariable(VRELString const& name, bool& value);

  // Puts "name=value" into the environment, and reports it on the channel VRELInfo.
  // Errors: VREL_E_FAIL, with the environment unchanged, for a string of more than 255 bytes, or if the system refuses
  // it.
  // Compatibility: all calls share one buffer, so that a call removes the variable of the previous call. The string is
  // read as a format without arguments: "%%" becomes "%", and other percent signs are kept.
  static VRINResult PutVariable(VRELString const& name, VRELString& value);

  // The object that GetEnv returns; null before it is made.
  static VRELEnvironment* _pVariables;
};

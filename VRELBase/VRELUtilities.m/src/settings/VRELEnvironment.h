// The variables of the process's environment.
#pragma once

#include "VRELExport.h"
#include "VRELProperties.h"
#include "VRELString.h"
#include "VRINResult.h"

// Reads and writes the environment, and answers three names by asking the system:
//
//   "USERNAME"      the login name of the process's user
//   "OS"            the name of the kernel
//   "COMPUTERNAME"  the name of the machine
//
// Variables of these very names in the environment are never read; that is promised.
//
//   bool detailed = false;
//   VRELEnvironment::GetVariable(L"VRELTaskInfoDetailed", detailed);
//
// A name is looked up in US-ASCII; what stands for another character in it is the byte 0x1A. Texts come in the
// process's default codepage. No locking, as in the C library's own environment.
class VREL_EXPORT VRELEnvironment : public VRELProperties {
 public:
  VRELEnvironment();
  ~VRELEnvironment() override;

  // The one object that modules share to hold properties of the process; made by the first call and never destroyed.
  // Its properties have nothing to do with the variables: neither side ever shows in the other.
  static VRELEnvironment* GetEnv();

  // The text of a variable. VREL_E_FAIL, with `value` untouched, where there is none, or no login name.
  static VRINResult GetVariable(VRELString const& name, VRELString& value);
  // The text as VRELStringToInteger reads it. A failure of either leaves `value` untouched.
  static VRINResult GetVariable(VRELString const& name, int& value);
  // The text as VRELStringToBool reads it. `value` is always written: it is promised that a text which is no boolean
  // gives false with success, and that a failure, which only a missing variable gives, comes with false.
  static VRINResult GetVariable(VRELString const& name, bool& value);

  // Puts "name=value" into the environment, and tells so on the channel VRELInfo. It is promised that there is one
  // place for such a text: a call takes the variable of the call before out of the environment. The text is read as a
  // format without arguments: "%%" becomes "%", and every other percent sign stands for itself. VREL_E_FAIL for a text
  // that is then longer than 255 bytes, which leaves the environment as it was, and where the system refuses it.
  static VRINResult PutVariable(VRELString const& name, VRELString& value);

  // What GetEnv gives; null until its first call.
  static VRELEnvironment* _pVariables;
};

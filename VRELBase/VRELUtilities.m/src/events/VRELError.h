// Error value, and the channel for errors.
#pragma once

#include "VRELExport.h"
#include "VRELString.h"
#include "VRINResult.h"
#include "detail/VRELPrintfFormat.h"

class VRELOutputStream;

// Describes a failure: a result code, a description, and the source file and line that raised it. Send it with
// VRELErrorEvent::Fire.
//
//   VRELError error(VREL_E_FILE_OPEN, L"wheel.stp");
//   return VRELErrorEvent::Fire(error, __FILE__, __LINE__);  // returns VREL_E_FILE_OPEN
class VREL_EXPORT VRELError {
 public:
  // Creates an error of type VREL_UNDETERMINED with empty strings.
  VRELError();
  // Creates an error of a type, which is the code of a VRINResult.
  explicit VRELError(long type);
  VRELError(long type, VRELString const& description);
  VRELError(VRELError const& other);
  VRELError& operator=(VRELError const& other);
  virtual ~VRELError();

  // Replaces the description. Returns VREL_S_OK.
  virtual VRINResult SetDescription(VRELString& description);
  // Copies the description out. Returns VREL_S_OK.
  virtual VRINResult GetDescription(VRELString& description);

  // Writes "Error Description : ", the description and a line end. If the description is empty, writes "Error ", the
  // low 32 bits of the type in decimal, and a line end. Writes nothing if the type is 0.
  virtual void GetFormattedDescription(VRELOutputStream* stream);

  long GetErrorType() const noexcept { return type; }

  // Sets the source file and line that raised the error. A null name is treated as the empty string.
  void SetSourceFileInfo(char const* file, int line);
  VRELString const& GetSourceFile() const noexcept { return sourceFile; }
  int GetSourceLine() const noexcept { return sourceLine; }

  // Sends a VRELErrorEvent with the message and the error FAIL_ERROR, without indentation. A null format sends nothing.
  // The message is formatted twice; see VRELIndentedChannel.
  //
  // Compatibility: the error tracker stores a copy of FAIL_ERROR, thus the code VREL_E_FAIL and no description.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Returns the newest error of the error tracker (see VRELErrorTracker), or null if there is none or no tracker.
  static VRELError* GetLastError();
  // Returns the number of errors of the error tracker, or 0 if there is no tracker.
  static int GetErrorCount();

  // Error of every event that is created from a format string: type VREL_E_FAIL, empty strings.
  static VRELError FAIL_ERROR;

 private:
  long type;
  VRELString description;
  VRELString sourceFile;
  int sourceLine;
};

// Returns the error at an index of the error tracker, in order of arrival; null if the index is out of range or there
// is no tracker.
VREL_EXPORT VRELError* GetError(int index);

// C function equivalent to VRELError::Printf.
extern "C" VREL_EXPORT void VRELError_Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

// One failure, and the channel on which failures are told.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"
#include "VRELString.h"
#include "VRINResult.h"

class VRELOutputStream;

// A plain value: what failed, in words and as a code, and where it was raised.
class VREL_EXPORT VRELError {
 public:
  // VREL_UNDETERMINED, without texts.
  VRELError();
  // The type is the code of a VRINResult.
  explicit VRELError(long type);
  VRELError(long type, VRELString const& description);
  VRELError(VRELError const& other);
  VRELError& operator=(VRELError const& other);
  virtual ~VRELError();

  // Always VREL_S_OK.
  virtual VRINResult SetDescription(VRELString& description);
  virtual VRINResult GetDescription(VRELString& description);

  // Writes "Error Description : ", the description and a line end; without a description "Error ", the low 32 bits of
  // the type in decimal, and a line end. Nothing where the type is 0.
  virtual void GetFormattedDescription(VRELOutputStream* stream);

  long GetErrorType() const noexcept { return type; }

  // Where the error was raised. The name is copied; null is the empty text.
  void SetSourceFileInfo(char const* file, int line);
  VRELString const& GetSourceFile() const noexcept { return sourceFile; }
  int GetSourceLine() const noexcept { return sourceLine; }

  // Sends a VRELErrorEvent with the text, on VRELError::FAIL_ERROR, without indentation. A null format sends nothing.
  // The text is formatted twice, as VRELIndentedChannel tells.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // What the error tracker of the process holds (see VRELErrorTracker): the newest error, null when there is none, and
  // the number of errors. Null and 0 without a tracker.
  static VRELError* GetLastError();
  static int GetErrorCount();

  // What every error event that is made from a format points at: type VREL_E_FAIL, no texts.
  static VRELError FAIL_ERROR;

 private:
  long type;
  VRELString description;
  VRELString sourceFile;
  int sourceLine;
};

// The error at an index of the process's tracker, in the order of arrival; null outside, and without a tracker.
VREL_EXPORT VRELError* GetError(int index);

// VRELError::Printf under a C name.
extern "C" VREL_EXPORT void VRELError_Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

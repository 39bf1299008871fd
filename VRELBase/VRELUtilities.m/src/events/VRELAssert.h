// The channel for conditions that had to hold, and the assertion that ends the process.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// Beside the function of the same name, `class VRELAssert` names the type; VRELAssert::Printf needs no such care.
class VREL_EXPORT VRELAssert {
 public:
  virtual ~VRELAssert();

  // Sends a VRELAssertEvent at level ABORT, without indentation. A null format sends nothing. The text is formatted
  // twice, as VRELIndentedChannel tells.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);
};

// One name for a class and a function is meant.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

// For the format modules. When the condition is false the message goes out as VRELError::Printf sends it, null as
// nothing, and the process ends by exit(0). That a failed assertion ends with status 0 is promised.
//
// The message is read as a format without arguments: "%%" becomes "%", twice over, and any other percent sign stands
// for itself.
VREL_EXPORT void VRELAssert(bool condition, char const* message);

#pragma GCC diagnostic pop

// Channel for failed assertions, and an assertion that ends the process.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// Channel for failed assertions.
//
//   VRELAssert::Printf("face %d has no loop", face);  // sends an event, continues
//   VRELAssert(loops > 0, "no loops");                 // ends the process if false
//
// The class and the function have the same name. Write `class VRELAssert` where the type is meant.
class VREL_EXPORT VRELAssert {
 public:
  virtual ~VRELAssert();

  // Sends a VRELAssertEvent at level ABORT, without indentation. A null format sends nothing. The message is formatted
  // twice; see VRELIndentedChannel.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);
};

// The class and the function have the same name, which is part of the API.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

// Assertion for format modules. If the condition is false, sends the message as VRELError::Printf does (null sends
// nothing) and calls exit(0).
//
// Compatibility: a failed assertion ends the process with status 0. The message is formatted twice without arguments:
// "%%%%" becomes "%". Other percent signs are kept.
VREL_EXPORT void VRELAssert(bool condition, char const* message);

#pragma GCC diagnostic pop

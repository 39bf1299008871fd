// The channels on which the library talks to the user: one family.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// What VRELWarning, VRELInfo, VRELVerbose and VRELTest share. Each call formats a text as printf does, puts it into an
// event of the channel's class and sends that on the bus; whether it appears anywhere is up to the loggers. Nothing
// fails and nothing is returned.
//
//   VRELInfo::Printf("%d faces", count);
//   VRELInfo::Tab();
//   VRELInfo::Printf("%d of them trimmed", trimmed);
//   VRELInfo::Untab();
//
// A text has at most 1023 bytes, indentation included; a longer one is cut.
//
// That a text is formatted twice is promised: a percent sign must be doubled twice over to survive, so that
// Printf("100%%%%") gives "100%". The second time there are no arguments. "%%" becomes "%", and any other percent sign
// stands for itself: a directive that came out of an argument is shown as it is.
//
// The indentation is one counter for each channel, a plain global that nothing resets and nothing bounds. A counter
// below 0 indents like 0.
template <class Event, int& tab>
class VREL_EXPORT VRELIndentedChannel {
 public:
  // Sends the text behind three blanks for each unit of the counter. A null format sends nothing, and an empty text is
  // sent as none.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // The same without the blanks.
  static void NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Add 1 to the counter, and take 1 from it.
  static void Tab() noexcept { tab = static_cast<int>(static_cast<unsigned int>(tab) + 1U); }
  static void Untab() noexcept { tab = static_cast<int>(static_cast<unsigned int>(tab) - 1U); }

  // Print matrices that are stored by columns, a line for each row: 16 floats, and 12 doubles in columns of 3. Null
  // prints nothing.
  static void Print4x4Matrix(float const* elements);
  static void Print3x4Matrix(double const* elements);

  // Prints `count` points of three floats, a line for each. That the last coordinate comes first is promised.
  static void PrintPointArray(float const* coordinates, int count);
};

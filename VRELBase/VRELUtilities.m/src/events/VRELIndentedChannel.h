// Base class template of the message channels.
#pragma once

#include "VRELExport.h"
#include "detail/VRELPrintfFormat.h"

// Implements VRELWarning, VRELInfo, VRELVerbose and VRELTest. Each call formats a message as printf does and sends it
// on the bus as an event of class `Event`. Listeners such as VRELLogger write it; without a listener nothing is
// written. The calls do not fail.
//
//   VRELInfo::Printf("%d faces", count);
//   VRELInfo::Tab();
//   VRELInfo::Printf("%d of them trimmed", trimmed);
//   VRELInfo::Untab();
//
// A message has at most 1023 bytes including the indentation; the rest is cut.
//
// Each channel has an indentation counter, a plain global variable that is never reset. A negative counter indents as
// 0.
//
// Thread safety: none; see VRELEventBus.
// Compatibility: a message is formatted twice, the second time without arguments. The second pass replaces "%%" by "%"
// and keeps single percent signs. Printf("100%%") and Printf("100%%%%") both send "100%"; two percent signs in a row
// need eight in the format. The second pass never reads an argument: "%s" from an argument is sent as it is.
template <class Event, int& tab>
class VREL_EXPORT VRELIndentedChannel {
 public:
  // Sends a message, indented by three spaces for each unit of the counter. A null format sends nothing. An empty
  // message is sent as an event with a null message.
  static void Printf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Sends a message without indentation.
  static void NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Add 1 to the counter, or subtract 1.
  static void Tab() noexcept { tab = static_cast<int>(static_cast<unsigned int>(tab) + 1U); }
  static void Untab() noexcept { tab = static_cast<int>(static_cast<unsigned int>(tab) - 1U); }

  // Print a matrix that is stored by columns, one line for each row: 16 floats, or 12 doubles in columns of 3. Null
  // prints nothing.
  static void Print4x4Matrix(float const* elements);
  static void Print3x4Matrix(double const* elements);

  // Prints `count` points of three floats, one line for each. Null prints nothing.
  //
  // Compatibility: the coordinates are printed in reverse order, z first.
  static void PrintPointArray(float const* coordinates, int count);
};

// Channel for messages to the user.
#pragma once

#include "VRELIndentedChannel.h"

class VRELMessageEvent;

// Indentation counter of VRELInfo.
extern VREL_EXPORT int _VRELInfoTab;

extern template class VRELIndentedChannel<VRELMessageEvent, _VRELInfoTab>;

// Channel that sends VRELMessageEvent at level INFO; see VRELIndentedChannel.
//
//   VRELInfo::Printf("%d faces", count);
//   VRELInfo::PrintfAsItIs("=====");  // a log writes the line without "Message : "
class VREL_EXPORT VRELInfo : public VRELIndentedChannel<VRELMessageEvent, _VRELInfoTab> {
 public:
  virtual ~VRELInfo();

  // Sends a message as Printf does; a log writes it without the prefix "Message : ".
  static void PrintfAsItIs(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Prints a matrix of nine floats that is stored by columns, one line for each row. Null prints nothing.
  static void Print3x3Matrix(float const* elements);
};

// C function equivalent to VRELInfo::NoTabPrintf.
extern "C" VREL_EXPORT void VRELInfo_NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

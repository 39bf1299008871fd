// The channel for what a user wants to know.
#pragma once

#include "VRELIndentedChannel.h"

class VRELMessageEvent;

// The indentation of the channel.
extern VREL_EXPORT int _VRELInfoTab;

extern template class VRELIndentedChannel<VRELMessageEvent, _VRELInfoTab>;

// Sends VRELMessageEvent, at level INFO.
class VREL_EXPORT VRELInfo : public VRELIndentedChannel<VRELMessageEvent, _VRELInfoTab> {
 public:
  virtual ~VRELInfo();

  // Like Printf, for a text that a log shows without a prefix.
  static void PrintfAsItIs(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

  // Prints nine floats that are stored by columns, a line for each row. Null prints nothing.
  static void Print3x3Matrix(float const* elements);
};

// VRELInfo::NoTabPrintf under a C name.
extern "C" VREL_EXPORT void VRELInfo_NoTabPrintf(char const* format, ...) VREL_PRINTF_FORMAT(1, 2);

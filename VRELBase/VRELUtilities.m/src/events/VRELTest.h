// The channel for the tests of a translator.
#pragma once

#include "VRELIndentedChannel.h"

class VRELTestEvent;

// The indentation of the channel.
extern VREL_EXPORT int _VRELTestTab;

extern template class VRELIndentedChannel<VRELTestEvent, _VRELTestTab>;

// Sends VRELTestEvent, at level TEST.
class VREL_EXPORT VRELTest : public VRELIndentedChannel<VRELTestEvent, _VRELTestTab> {
 public:
  virtual ~VRELTest();
};

// VRELTest::Tab and VRELTest::Untab under C names.
extern "C" VREL_EXPORT void VRELTest_Tab();
extern "C" VREL_EXPORT void VRELTest_Untab();

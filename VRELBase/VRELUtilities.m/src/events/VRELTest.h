// Channel for messages to the tests of a translator.
#pragma once

#include "VRELIndentedChannel.h"

class VRELTestEvent;

// Indentation counter of VRELTest.
extern VREL_EXPORT int _VRELTestTab;

extern template class VRELIndentedChannel<VRELTestEvent, _VRELTestTab>;

// Channel that sends VRELTestEvent at level TEST; see VRELIndentedChannel.
//
//   VRELTest::Printf("volume %g", volume);
class VREL_EXPORT VRELTest : public VRELIndentedChannel<VRELTestEvent, _VRELTestTab> {
 public:
  virtual ~VRELTest();
};

// C functions equivalent to VRELTest::Tab and VRELTest::Untab.
extern "C" VREL_EXPORT void VRELTest_Tab();
extern "C" VREL_EXPORT void VRELTest_Untab();

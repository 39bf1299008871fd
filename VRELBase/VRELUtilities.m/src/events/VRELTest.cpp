#include "VRELTest.h"

int _VRELTestTab = 0;

VRELTest::~VRELTest() = default;

void VRELTest_Tab() {
  VRELTest::Tab();
}

void VRELTest_Untab() {
  VRELTest::Untab();
}

// Length units of the public API.
#pragma once

// Length unit. The numbers equal those of VRELUnit.
enum VRINUnitValue : int {
  VRINUnitUnknown = 0,
  VRINUnitModel = 1,  // the unit of the model
  VRINUnitNanometer = 2,
  VRINUnitMicrometer = 3,
  VRINUnitMillimeter = 4,
  VRINUnitCentimeter = 5,
  VRINUnitDecimeter = 6,
  VRINUnitMeter = 7,
  VRINUnitInch = 8,
  VRINUnitFoot = 9,
  VRINUnitMile = 10,
  VRINUnitKilometer = 11,
  VRINUnitMilliinch = 12,
  VRINUnitMicroinch = 13
};

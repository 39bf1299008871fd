// The length units as an application names them.
#pragma once

// The numbers are those of VRELUnit.
enum VRINUnitValue : int {
  VRINUnitUnknown = 0,
  VRINUnitModel = 1,  // the unit that the model is written in, whatever it is
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

// A view of a model.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// The kind of a view. Each format module gives its own meaning to the other values.
enum VRELCameraType : int {
  VRELCameraTypeDefault = 2,
};

// Where an observer stands, what it looks at, which way is up, the angle of sight in degrees and the zoom. Positions
// and directions are three floats.
//
// The operations that fill an array of three floats give VREL_E_INVALID_ARGUMENT for null, VREL_S_OK otherwise. Delete
// a derived camera by its own type: the destructor is not virtual.
class VREL_EXPORT VRELCamera {
 public:
  // Of the default type, at (1, 1, 1), looking at the origin, with z up, an angle of 45 and a zoom of 1. That its
  // direction is (-1, -1, -1), which is no unit vector, is promised.
  VRELCamera() noexcept;
  // The direction is the unit vector from position to target. Where the two coincide it consists of not-a-numbers,
  // which is promised. In place of an array that is null stands that of the default camera.
  VRELCamera(VRELCameraType type, float const* position, float const* target, float const* zenith, float angle,
             float zoom) noexcept;

  virtual VRELCameraType GetType() const;
  virtual VRINResult GetPosition(float* out) const;
  virtual VRINResult GetTarget(float* out) const;
  virtual VRINResult GetDirection(float* out) const;
  virtual VRINResult GetZenith(float* out) const;
  // Return the value. That they take one, and leave the caller's variable alone, is promised.
  virtual float GetAngle(float value) const;
  virtual float GetZoom(float value) const;

 private:
  VRELCameraType cameraType;
  float positionPoint[3];
  float targetPoint[3];
  float directionVector[3];
  float zenithVector[3];
  float angleOfSight;
  float zoomFactor;
};

// View of a model.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

// Type of a view. Other values are defined by the format modules.
enum VRELCameraType : int {
  VRELCameraTypeDefault = 2,
};

// A camera has no virtual destructor, so that the slots of its virtual table keep their order.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Camera: position, target, zenith (up direction), angle of view in degrees and zoom. Positions and directions are
// arrays of three floats.
//
//   VRELCamera const camera;
//   float direction[3];
//   camera.GetDirection(direction);  // -1, -1, -1
//   float const angle = camera.GetAngle();  // 45
//
// Errors: operations that fill an array return VREL_E_INVALID_ARGUMENT for null, otherwise VREL_S_OK.
// Ownership: delete a derived camera through its own type; the destructor is not virtual.
class VREL_EXPORT VRELCamera {
 public:
  // Creates a camera of the default type at (1, 1, 1) that looks at the origin, with the zenith (0, 0, 1), an angle of
  // 45 and a zoom of 1.
  // Compatibility: its direction is (-1, -1, -1), which is not a unit vector.
  VRELCamera() noexcept;
  // Creates a camera whose direction is the unit vector from `position` to `target`. A null array is replaced by that
  // of the default camera.
  // Compatibility: if position and target are equal, the direction consists of NaN.
  VRELCamera(VRELCameraType type, float const* position, float const* target, float const* zenith, float angle,
             float zoom) noexcept;

  virtual VRELCameraType GetType() const;
  virtual VRINResult GetPosition(float* out) const;
  virtual VRINResult GetTarget(float* out) const;
  virtual VRINResult GetDirection(float* out) const;
  virtual VRINResult GetZenith(float* out) const;
  // Return the value.
  // Compatibility: the argument is ignored and not changed. The compiler warns if the result is not used.
  [[nodiscard]] virtual float GetAngle(float ignored = 0.0F) const;
  [[nodiscard]] virtual float GetZoom(float ignored = 0.0F) const;

 private:
  VRELCameraType cameraType;
  float positionPoint[3];
  float targetPoint[3];
  float directionVector[3];
  float zenithVector[3];
  float angleOfSight;
  float zoomFactor;
};

#pragma GCC diagnostic pop

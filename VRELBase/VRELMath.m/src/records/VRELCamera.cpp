#include "VRELCamera.h"

#include <algorithm>
#include <cmath>

#include "Gk_Func.h"

namespace {

void CopyUnlessNull(float const* from, float* to) noexcept {
  if (from != nullptr) std::copy_n(from, 3, to);
}

VRINResult CopyOut(float const* from, float* out) noexcept {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(from, 3, out);
  return VREL_S_OK;
}

}  // namespace

VRELCamera::VRELCamera() noexcept
    : cameraType(VRELCameraTypeDefault),
      positionPoint{1.0F, 1.0F, 1.0F},
      targetPoint{0.0F, 0.0F, 0.0F},
      directionVector{-1.0F, -1.0F, -1.0F},
      zenithVector{0.0F, 0.0F, 1.0F},
      angleOfSight(45.0F),
      zoomFactor(1.0F) {}

VRELCamera::VRELCamera(VRELCameraType type, float const* position, float const* target, float const* zenith,
                       float angle, float zoom) noexcept
    : VRELCamera() {
  cameraType = type;
  CopyUnlessNull(position, positionPoint);
  CopyUnlessNull(target, targetPoint);
  CopyUnlessNull(zenith, zenithVector);
  angleOfSight = angle;
  zoomFactor = zoom;

  double direction[3];
  for (int i = 0; i < 3; ++i) {
    direction[i] = static_cast<double>(targetPoint[i]) - static_cast<double>(positionPoint[i]);
  }
  // Compatibility: a length of 0 is not detected.
  double const length = std::sqrt(VRELSquare(direction[0]) + VRELSquare(direction[1]) + VRELSquare(direction[2]));
  for (int i = 0; i < 3; ++i) directionVector[i] = static_cast<float>(direction[i] / length);
}

VRELCameraType VRELCamera::GetType() const {
  return cameraType;
}

VRINResult VRELCamera::GetPosition(float* out) const {
  return CopyOut(positionPoint, out);
}

VRINResult VRELCamera::GetTarget(float* out) const {
  return CopyOut(targetPoint, out);
}

VRINResult VRELCamera::GetDirection(float* out) const {
  return CopyOut(directionVector, out);
}

VRINResult VRELCamera::GetZenith(float* out) const {
  return CopyOut(zenithVector, out);
}

float VRELCamera::GetAngle(float) const {
  return angleOfSight;
}

float VRELCamera::GetZoom(float) const {
  return zoomFactor;
}

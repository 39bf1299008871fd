#include "VRELDirectionf.h"

#include "VRELNormalizef.h"

VRELDirectionf::VRELDirectionf(float theX, float theY, float theZ) noexcept : x(theX), y(theY), z(theZ) {
  Normalize();
}

VRELDirectionf::VRELDirectionf(float const* coordinates) noexcept : VRELDirectionf(VRELVectorf(coordinates)) {}

VRELDirectionf::VRELDirectionf(VRELVectorf const& vector) noexcept
    : VRELDirectionf(vector.X(), vector.Y(), vector.Z()) {}

VRELDirectionf::VRELDirectionf(VRELPointf const& first, VRELPointf const& second) noexcept
    : VRELDirectionf(VRELVectorf(first, second)) {}

void VRELDirectionf::Normalize() noexcept {
  vrelNormalizef(x, y, z);
}

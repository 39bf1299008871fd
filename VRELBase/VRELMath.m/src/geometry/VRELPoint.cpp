#include "VRELPoint.h"

#include <algorithm>
#include <cmath>

#include "Gk_ErrMgr.h"
#include "VRELStreamFormatter.h"
#include "VRELWeightPoint.h"

VRELPoint::VRELPoint(int theDimension) noexcept
    : coordinate{0.0, 0.0, 0.0}, dimension(std::clamp(theDimension, 2, 3)) {}

VRELPoint& VRELPoint::operator=(VRELPoint const& other) noexcept {
  VRELReferenceCount::operator=(other);
  for (int i = 0; i < 3; ++i) coordinate[i] = other[i];
  return *this;
}

VRELPoint::~VRELPoint() = default;

void VRELPoint::CopyFrom(VRELPoint const& other) {
  for (int i = 0; i < 3; ++i) coordinate[i] = other[i];
  auto* const weighted = dynamic_cast<VRELWeightPoint*>(this);
  auto const* const source = dynamic_cast<VRELWeightPoint const*>(&other);
  if (weighted != nullptr && source != nullptr) weighted->SetWeight(source->GetWeight());
}

double& VRELPoint::operator[](int i) {
  return coordinate[std::clamp(i, 0, dimension - 1)];
}

double VRELPoint::operator[](int i) const {
  return coordinate[std::clamp(i, 0, dimension - 1)];
}

double VRELPoint::Length() const {
  double sum = 0.0;
  for (int i = 0; i < dimension; ++i) sum += coordinate[i] * coordinate[i];
  return std::sqrt(sum);
}

void VRELPoint::Negate() {
  Multiply(-1.0);
}

void VRELPoint::Multiply(double factor) {
  for (int i = 0; i < dimension; ++i) coordinate[i] *= factor;
}

void VRELPoint::Divide(double divisor) {
  if (divisor == 0.0) return;
  for (int i = 0; i < dimension; ++i) coordinate[i] /= divisor;
}

void VRELPoint::Substract(VRELPoint const& other) {
  CheckDimension(other);
  for (int i = 0; i < dimension; ++i) coordinate[i] -= other[i];
}

void VRELPoint::Add(VRELPoint const& other) {
  CheckDimension(other);
  for (int i = 0; i < dimension; ++i) coordinate[i] += other[i];
}

// Writes the last coordinate first. If the target has fewer coordinates, its operator[] clamps the extra index to its
// last coordinate, which the next step then overwrites with the right value.
void VRELPoint::CopyIn(VRELPoint& target) const {
  CheckDimension(target);
  for (int i = dimension - 1; i >= 0; --i) target[i] = coordinate[i];
}

void VRELPoint::Dump(VRELStreamFormatter& formatter) const {
  for (int i = 0; i < dimension; ++i) formatter << coordinate[i] << formatter.space();
}

double VRELPoint::DistanceTo(VRELPoint const& other) const {
  CheckDimension(other);
  double sum = 0.0;
  for (int i = 0; i < dimension; ++i) {
    double const difference = coordinate[i] - other[i];
    sum += difference * difference;
  }
  return std::sqrt(sum);
}

bool VRELPoint::IsWithinTolerance(VRELPoint const& other, double tolerance) const {
  CheckDimension(other);
  for (int i = 0; i < dimension; ++i) {
    if (std::fabs(coordinate[i] - other[i]) > std::fabs(tolerance)) return false;
  }
  return true;
}

bool VRELPoint::IsWithinTolerance(VRELPoint const& other, VRELPoint const& tolerances) const {
  CheckDimension(other);
  CheckDimension(tolerances);
  for (int i = 0; i < dimension; ++i) {
    if (std::fabs(coordinate[i] - other[i]) > std::fabs(tolerances[i])) return false;
  }
  return true;
}

void VRELPoint::CheckDimension(VRELPoint const& other) const {
  Gk_ErrMgr::checkAbort();
  if (other.dimension != dimension) Gk_ErrMgr::doAssert(__FILE__, __LINE__);
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELPoint const& point) {
  point.Dump(formatter);
  return formatter;
}

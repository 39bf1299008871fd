#include "VRELWeightPoint.h"

#include <cmath>

#include "VRELStreamFormatter.h"

VRELWeightPoint::~VRELWeightPoint() = default;

double& VRELWeightPoint::operator[](int i) {
  return i < GetDimension() ? VRELPoint::operator[](i) : weight;
}

double VRELWeightPoint::operator[](int i) const {
  return i < GetDimension() ? VRELPoint::operator[](i) : weight;
}

double VRELWeightPoint::Length() const {
  double sum = 0.0;
  for (int i = 0; i < GetDimension(); ++i) sum += GetCoordinates()[i] * GetCoordinates()[i];
  return std::sqrt(sum + weight * weight);
}

void VRELWeightPoint::Multiply(double factor) {
  VRELPoint::Multiply(factor);
  weight *= factor;
}

void VRELWeightPoint::Divide(double divisor) {
  if (divisor == 0.0) return;
  VRELPoint::Divide(divisor);
  weight /= divisor;
}

void VRELWeightPoint::Substract(VRELPoint const& other) {
  VRELPoint::Substract(other);
  weight -= other[GetDimension()];
}

void VRELWeightPoint::Add(VRELPoint const& other) {
  VRELPoint::Add(other);
  weight += other[GetDimension()];
}

// Writes the weight first. If the target has no weight, its operator[] clamps the index to the last coordinate, which
// VRELPoint::CopyIn then overwrites with the right value.
void VRELWeightPoint::CopyIn(VRELPoint& target) const {
  CheckDimension(target);
  target[GetDimension()] = weight;
  VRELPoint::CopyIn(target);
}

void VRELWeightPoint::Dump(VRELStreamFormatter& formatter) const {
  VRELPoint::Dump(formatter);
  formatter << weight << formatter.space();
}

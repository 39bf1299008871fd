// What the 2D and the 3D weight point have in common.
#pragma once

#include "VRELPoint.h"

// A point in homogeneous coordinates: those that are stored are multiplied by the weight already, and the weight takes
// part in the arithmetic as one more coordinate.
class VREL_EXPORT VRELWeightPoint : public VRELPoint {
 public:
  VRELWeightPoint(VRELWeightPoint const& other) noexcept = default;
  VRELWeightPoint& operator=(VRELWeightPoint const& other) noexcept = default;
  ~VRELWeightPoint() override;

  // A stored coordinate; the first for an index below 0, the weight for one beyond the coordinates.
  double& operator[](int i) override;
  double operator[](int i) const override;

  // The Euclidean norm of stored coordinates and weight.
  double Length() const override;
  void Multiply(double factor) override;
  void Divide(double divisor) override;
  void Substract(VRELPoint const& other) override;
  void Add(VRELPoint const& other) override;
  // The weight goes to a target that has one.
  void CopyIn(VRELPoint& target) const override;
  // The stored coordinates and the weight.
  void Dump(VRELStreamFormatter& formatter) const override;

  double GetWeight() const noexcept { return weight; }
  // Leaves the stored coordinates as they are.
  void SetWeight(double value) noexcept { weight = value; }

 protected:
  VRELWeightPoint(int theDimension, double theWeight) noexcept : VRELPoint(theDimension), weight(theWeight) {}

 private:
  double weight;
};

// The operations of a weight point that know its own class, Self, and the point without a weight, Plain.
template <class Self, class Plain>
class VRELWeightPointOf : public VRELWeightPoint {
 public:
  VRELWeightPointOf(VRELWeightPointOf const& other) noexcept = default;
  VRELWeightPointOf& operator=(VRELWeightPointOf const& other) noexcept = default;

  // The stored coordinates.
  Plain GetWeightedCoords() const noexcept {
    Plain coords;
    for (int i = 0; i < GetDimension(); ++i) coords[i] = GetCoordinates()[i];
    return coords;
  }
  void SetWeightedCoords(Plain const& coords) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] = coords.GetCoordinates()[i];
  }
  // The stored coordinates divided by the weight; undivided if it is exactly 1 or exactly 0.
  Plain GetCoords() const noexcept {
    Plain coords = GetWeightedCoords();
    if (GetWeight() != 1.0) coords /= GetWeight();
    return coords;
  }

  Self& operator+=(Self const& other) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] += other.GetCoordinates()[i];
    SetWeight(GetWeight() + other.GetWeight());
    return static_cast<Self&>(*this);
  }
  Self& operator-=(Self const& other) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] -= other.GetCoordinates()[i];
    SetWeight(GetWeight() - other.GetWeight());
    return static_cast<Self&>(*this);
  }
  Self& operator*=(double factor) noexcept {
    VRELWeightPoint::Multiply(factor);
    return static_cast<Self&>(*this);
  }
  // Does nothing for a divisor of exactly 0.
  Self& operator/=(double divisor) noexcept {
    VRELWeightPoint::Divide(divisor);
    return static_cast<Self&>(*this);
  }

  // Move the stored coordinates by those of the argument, and the weight by its weight if it has one.
  void Shift(Self const& by) noexcept { *this += by; }
  void Shift(Plain const& by) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] += by.GetCoordinates()[i];
  }

 protected:
  VRELWeightPointOf(int theDimension, double theWeight) noexcept : VRELWeightPoint(theDimension, theWeight) {}
  VRELWeightPointOf(Plain const& point, double theWeight, bool isUnweighted) noexcept
      : VRELWeightPoint(point.GetDimension(), theWeight) {
    SetWeightedCoords(isUnweighted && theWeight != 1.0 ? point * theWeight : point);
  }
};

// Base class of the 2D and 3D weight points.
#pragma once

#include "VRELPoint.h"

// Point in homogeneous coordinates: the stored coordinates are already multiplied by the weight, and the weight takes
// part in the arithmetic as an additional coordinate. See VRELWeightPoint2D and VRELWeightPoint3D.
class VREL_EXPORT VRELWeightPoint : public VRELPoint {
 public:
  VRELWeightPoint(VRELWeightPoint const& other) noexcept = default;
  VRELWeightPoint& operator=(VRELWeightPoint const& other) noexcept = default;
  ~VRELWeightPoint() override;

  // Returns a stored coordinate; the first one if `i` is negative, the weight if `i` is above the last coordinate.
  double& operator[](int i) override;
  double operator[](int i) const override;

  // Returns the Euclidean norm of the stored coordinates and the weight.
  double Length() const override;
  void Multiply(double factor) override;
  void Divide(double divisor) override;
  void Substract(VRELPoint const& other) override;
  void Add(VRELPoint const& other) override;
  // Copies the stored coordinates to `target`, and the weight if `target` has one.
  void CopyIn(VRELPoint& target) const override;
  // Writes the stored coordinates and the weight.
  void Dump(VRELStreamFormatter& formatter) const override;

  double GetWeight() const noexcept { return weight; }
  // Sets the weight; the stored coordinates do not change.
  void SetWeight(double value) noexcept { weight = value; }

 protected:
  VRELWeightPoint(int theDimension, double theWeight) noexcept : VRELPoint(theDimension), weight(theWeight) {}

 private:
  double weight;
};

// Operations of a weight point whose signatures contain its class, `Self`, or the class of the point without a weight,
// `Plain`.
template <class Self, class Plain>
class VRELWeightPointOf : public VRELWeightPoint {
 public:
  VRELWeightPointOf(VRELWeightPointOf const& other) noexcept = default;
  // Copies coordinates and weight.
  // Compatibility: sets the reference count to 0; see CopyFrom.
  VRELWeightPointOf& operator=(VRELWeightPointOf const& other) noexcept = default;

  // Copies the stored coordinates and the weight, and leaves the reference count unchanged.
  void CopyFrom(Self const& other) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] = other.GetCoordinates()[i];
    SetWeight(other.GetWeight());
  }
  using VRELPoint::CopyFrom;

  // Returns the stored coordinates.
  Plain GetWeightedCoords() const noexcept {
    Plain coords;
    for (int i = 0; i < GetDimension(); ++i) coords[i] = GetCoordinates()[i];
    return coords;
  }
  void SetWeightedCoords(Plain const& coords) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] = coords.GetCoordinates()[i];
  }
  // Returns the stored coordinates divided by the weight; undivided if the weight is exactly 1 or exactly 0.
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
  // Does nothing if `divisor` is exactly 0.
  Self& operator/=(double divisor) noexcept {
    VRELWeightPoint::Divide(divisor);
    return static_cast<Self&>(*this);
  }

  // Adds the stored coordinates of `by`, and its weight if it has one.
  void Shift(Self const& by) noexcept { *this += by; }
  void Shift(Plain const& by) noexcept {
    for (int i = 0; i < GetDimension(); ++i) ChangeCoordinates()[i] += by.GetCoordinates()[i];
  }

  // Returns true if the stored coordinates and the weights are exactly equal.
  friend bool operator==(Self const& a, Self const& b) noexcept {
    for (int i = 0; i < a.GetDimension(); ++i) {
      if (!(a.GetCoordinates()[i] == b.GetCoordinates()[i])) return false;
    }
    return a.GetWeight() == b.GetWeight();
  }
  friend bool operator!=(Self const& a, Self const& b) noexcept { return !(a == b); }

 protected:
  VRELWeightPointOf(int theDimension, double theWeight) noexcept : VRELWeightPoint(theDimension, theWeight) {}
  VRELWeightPointOf(Plain const& point, double theWeight, bool isUnweighted) noexcept
      : VRELWeightPoint(point.GetDimension(), theWeight) {
    SetWeightedCoords(isUnweighted && theWeight != 1.0 ? point * theWeight : point);
  }
};

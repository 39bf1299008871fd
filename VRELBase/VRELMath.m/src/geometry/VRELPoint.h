// Base class of the double-precision points.
#pragma once

#include <cstdint>

#include "VRELExport.h"
#include "VRELReferenceCount.h"

class VRELStreamFormatter;

// Reference-counted point of 2 or 3 double coordinates with virtual arithmetic; it is also used as a vector.
//
// Use VRELPoint2D and VRELPoint3D, or the weight points for rational curves and surfaces. Use this base class in code
// that does not depend on the dimension:
//
//   void Scale(VRELPoint& point, double factor) { point.Multiply(factor); }  // 2D, 3D, with or without a weight
//
// Operations that take another point read it with its operator[] and expect that it has the same dimension. They poll
// for an abort and then throw VRELAbortException.
//
// Compatibility: a point of another dimension is accepted. operator[] clamps its index, so that the last coordinate
// is also used for the missing ones.
// Compatibility: assignment sets the reference count of the left side to 0. Assign to a point that handles refer to
// with CopyFrom, which leaves the count unchanged.
class VREL_EXPORT VRELPoint : public VRELReferenceCount {
 public:
  // Creates a point with zero coordinates. A dimension below 2 is taken as 2, one above 3 as 3.
  explicit VRELPoint(int dimension) noexcept;
  VRELPoint(VRELPoint const& other) noexcept = default;
  // Copies three coordinates, read with the operator[] of `other`. The dimension does not change.
  //
  // Compatibility: a 2D source provides its y for z. The reference count becomes 0, as for every counted object, so
  // that the next handle that releases the point does not delete it, or another one deletes it too early; see CopyFrom.
  VRELPoint& operator=(VRELPoint const& other) noexcept;
  ~VRELPoint() override;

  // Copies the coordinates of `other`, and the weight if both points have one. Neither the dimension nor the reference
  // count changes, so that it is safe on a point that handles refer to.
  //
  //   VRELPointHandle handle(new VRELPoint3D(1.0, 2.0, 3.0));
  //   handle->CopyFrom(VRELPoint3D(4.0, 5.0, 6.0));  // and not *handle = ..., which sets the count to 0
  void CopyFrom(VRELPoint const& other);

  // Returns the coordinate with index `i`; the first one if `i` is negative, the last one if `i` is too large.
  virtual double& operator[](int i);
  virtual double operator[](int i) const;

  // Returns the Euclidean norm.
  virtual double Length() const;
  // Multiplies by -1.0 through the virtual Multiply.
  virtual void Negate();
  virtual void Multiply(double factor);
  // Divides each coordinate. Does nothing if `divisor` is exactly 0.
  virtual void Divide(double divisor);
  virtual void Substract(VRELPoint const& other);
  virtual void Add(VRELPoint const& other);
  // Copies the coordinates to `target`.
  virtual void CopyIn(VRELPoint& target) const;
  // Writes each coordinate, followed by the space object of the formatter.
  virtual void Dump(VRELStreamFormatter& formatter) const;

  // Returns the Euclidean distance of the coordinates; weights are ignored.
  double DistanceTo(VRELPoint const& other) const;

  // Returns false if a coordinate differs by more than the absolute value of the tolerance: of the single tolerance, or
  // of the matching coordinate of `tolerances`.
  // Compatibility: a difference that is NaN counts as within the tolerance.
  bool IsWithinTolerance(VRELPoint const& other, double tolerance) const;
  bool IsWithinTolerance(VRELPoint const& other, VRELPoint const& tolerances) const;

  // Returns 2 or 3.
  int GetDimension() const noexcept { return dimension; }
  // Returns the three stored doubles. Ignore the third one of a 2D point.
  double const* GetCoordinates() const noexcept { return coordinate; }

  // Iterates over the coordinates, 2 or 3 of them, without the weight.
  double const* begin() const noexcept { return coordinate; }
  double const* end() const noexcept { return coordinate + dimension; }

 protected:
  double* ChangeCoordinates() noexcept { return coordinate; }
  // Polls for an abort and asserts that `other` has the dimension of this point.
  void CheckDimension(VRELPoint const& other) const;

 private:
  double coordinate[3];
  std::int32_t dimension;
};

// Writes the point with the virtual Dump.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELPoint const& point);

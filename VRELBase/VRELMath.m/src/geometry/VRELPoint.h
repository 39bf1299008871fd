// The root of the double-precision points, which are the vectors as well.
#pragma once

#include <cstdint>

#include "VRELExport.h"
#include "VRELReferenceCount.h"

class VRELStreamFormatter;

// Two or three coordinates behind virtual arithmetic, counted like all that the library shares. Use VRELPoint2D and
// VRELPoint3D, or the weight points where a rational curve or surface needs them; this class is how code that does not
// care about the dimension sees all four.
//
// Operations with another point presume that it has the same dimension and poll for an abort, which they throw as
// VRELAbortException. A point of another kind is read and written by its operator[], which clamps: that it counts with
// its last coordinate for those that it does not have is promised.
class VREL_EXPORT VRELPoint : public VRELReferenceCount {
 public:
  // Zeros. The dimension is 2 or 3; another number counts as the nearer of the two.
  explicit VRELPoint(int dimension) noexcept;
  VRELPoint(VRELPoint const& other) noexcept = default;
  // Takes three coordinates by the other's operator[], so that a 2D point gives its y for z, which is promised. The
  // dimension stays; the use count becomes 0 as with every counted object.
  VRELPoint& operator=(VRELPoint const& other) noexcept;
  ~VRELPoint() override;

  // The coordinate; the first for an index below 0, the last for one that is too large.
  virtual double& operator[](int i);
  virtual double operator[](int i) const;

  // The Euclidean norm.
  virtual double Length() const;
  // Multiplies by -1.0 through the virtual Multiply.
  virtual void Negate();
  virtual void Multiply(double factor);
  // Does nothing for a divisor of exactly 0.
  virtual void Divide(double divisor);
  virtual void Substract(VRELPoint const& other);
  virtual void Add(VRELPoint const& other);
  // Copies the coordinates into the target.
  virtual void CopyIn(VRELPoint& target) const;
  // Each number followed by the formatter's space.
  virtual void Dump(VRELStreamFormatter& formatter) const;

  // The Euclidean distance; a weight plays no part.
  double DistanceTo(VRELPoint const& other) const;

  // False if a coordinate differs by more than the absolute value of the tolerance, of the one tolerance for all or of
  // the matching coordinate. What is not a number does not differ by more, which is promised.
  bool IsWithinTolerance(VRELPoint const& other, double tolerance) const;
  bool IsWithinTolerance(VRELPoint const& other, VRELPoint const& tolerances) const;

  // 2 or 3.
  int GetDimension() const noexcept { return dimension; }
  // Three stored doubles; the third of a 2D point has no meaning.
  double const* GetCoordinates() const noexcept { return coordinate; }

 protected:
  double* ChangeCoordinates() noexcept { return coordinate; }
  // Polls for an abort and presumes that the other has this dimension.
  void CheckDimension(VRELPoint const& other) const;

 private:
  double coordinate[3];
  std::int32_t dimension;
};

// The virtual Dump.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELPoint const& point);

// What the 2D and the 3D box have in common, written for the types of each.
#pragma once

#include <cmath>

#include "Gk_Def.h"
#include "Gk_Domain.h"
#include "VRELBox.h"
#include "VRINResult.h"

// A Box, its derived class, as one Gk_Domain for each of N axes: each tolerance here is that of the domain, 1e-10.
// Nothing fails.
template <class Box, class Point, class Morph, int N>
class VRELBoxOf : public VRELBox {
 public:
  void Reset() override {
    for (Gk_Domain& each : domain) each = Gk_Domain();
  }

  // Each finite axis by the distance at both ends. Always true, also for an empty box, which stays as it is.
  bool expand(double distance) override {
    bool expanded = false;
    for (Gk_Domain& each : domain) expanded = each.expand(distance) || expanded;
    return expanded;
  }

  int GetDimension() const override { return N; }

  virtual ~VRELBoxOf() = default;

  // The sides run along the axes and the corners may be any two opposite ones. Always VREL_S_OK.
  virtual VRINResult Set(Point const& a, Point const& b) {
    for (int i = 0; i < N; ++i) {
      double const p = a.GetCoordinates()[i];
      double const q = b.GetCoordinates()[i];
      domain[i] = q < p ? Gk_Domain(q, p, Gk_Def::FuzzKnot) : Gk_Domain(p, q, Gk_Def::FuzzKnot);
    }
    return VREL_S_OK;
  }

  // True if an axis changed: an empty box becomes the point; a point inside, or within the tolerance, changes nothing.
  virtual bool ExtendTo(Point const& point) {
    double const* const p = point.GetCoordinates();
    if (IsBetweenCorners(p)) return false;
    bool changed = false;
    for (int i = 0; i < N; ++i) changed = domain[i].extend(p[i]) || changed;
    return changed;
  }

  // By the corners of the other. That an empty box counts as the point at the origin, which are its corners, is
  // promised.
  virtual bool ExtendTo(Box const& box) {
    // The high corner comes first, and both come, whatever the first one changed.
    bool const byHigh = ExtendTo(box.high());
    bool const byLow = ExtendTo(box.low());
    return byHigh || byLow;
  }

  // Corners; the origin for an empty box.
  virtual Point low() const {
    Point corner;
    for (int i = 0; i < N; ++i) corner[i] = domain[i].low();
    return corner;
  }
  virtual Point high() const {
    Point corner;
    for (int i = 0; i < N; ++i) corner[i] = domain[i].high();
    return corner;
  }

  // From corner to corner.
  virtual double diagonal() const {
    double sum = 0.0;
    for (Gk_Domain const& each : domain) sum += each.length() * each.length();
    return std::sqrt(sum);
  }

  // Becomes the box of the images of its low and its high corner. That the other corners are not looked at, so that
  // under a rotation this is not the bound of the rotated box, is promised; and so it is that an empty box becomes the
  // point that is the image of the origin.
  virtual void apply(Morph const& morph) {
    Point lowImage = low();
    Point highImage = high();
    lowImage.Transform(morph, false);
    highImage.Transform(morph, false);
    Set(lowImage, highImage);
  }

  // Whether the other lies in this one, the boundary included.
  virtual bool isContained(Box const& box) const {
    for (int i = 0; i < N; ++i) {
      if (!domain[i].isContained(box.domain[i])) return false;
    }
    return true;
  }
  // Whether the corners agree. An empty box equals an empty one alone.
  virtual bool isEqual(Box const& box) const {
    for (int i = 0; i < N; ++i) {
      if (!domain[i].isSame(box.domain[i], -1.0)) return false;
    }
    return true;
  }

 protected:
  VRELBoxOf() noexcept = default;
  VRELBoxOf(VRELBoxOf const&) noexcept = default;
  VRELBoxOf& operator=(VRELBoxOf const&) noexcept = default;

 private:
  // Whether that is plain without a look at the tolerances, as for most points of a large number. All axes are set
  // together.
  bool IsBetweenCorners(double const* p) const noexcept {
    bool between = domain[0].isFinite();
    for (int i = 0; i < N; ++i) between = between && domain[i].low() <= p[i] && p[i] <= domain[i].high();
    return between;
  }

  Gk_Domain domain[N];
};

// Common implementation of VRELBox2D and VRELBox3D.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>

#include "Gk_Def.h"
#include "Gk_Domain.h"
#include "VRELBox.h"
#include "VRINResult.h"

// Axis-aligned box with one Gk_Domain for each of N axes, as a CRTP base class of `Box`. All tolerances are those of
// the domains, 1e-10. No operation fails.
template <class Box, class Point, class Morph, int N>
class VRELBoxOf : public VRELBox {
 public:
  void Reset() override {
    for (Gk_Domain& each : domain) each = Gk_Domain();
  }

  // Moves each bounded side outward by `distance`. Returns true, also for an empty box, which does not change.
  bool expand(double distance) override {
    bool expanded = false;
    for (Gk_Domain& each : domain) expanded = each.expand(distance) || expanded;
    return expanded;
  }

  int GetDimension() const override { return N; }

  virtual ~VRELBoxOf() = default;

  // Sets the box to the one with the opposite corners `a` and `b`, in any order. Returns VREL_S_OK.
  virtual VRINResult Set(Point const& a, Point const& b) {
    for (int i = 0; i < N; ++i) {
      double const p = a.GetCoordinates()[i];
      double const q = b.GetCoordinates()[i];
      domain[i] = q < p ? Gk_Domain(q, p, Gk_Def::FuzzKnot) : Gk_Domain(p, q, Gk_Def::FuzzKnot);
    }
    return VREL_S_OK;
  }

  // Extends the box to contain `point`; an empty box becomes the point. Returns true if a side moved. A point inside
  // the box, or outside within the tolerance, moves nothing.
  virtual bool ExtendTo(Point const& point) {
    double const* const p = point.GetCoordinates();
    return !IsBetweenCorners(p) && ExtendAxes(p);
  }

  // Extends the box to contain the corners of `box`. Returns true if a side moved.
  // Compatibility: an empty box has both corners at the origin and therefore extends this box to the origin.
  virtual bool ExtendTo(Box const& box) {
    // Both corners are used, the high corner first.
    bool const byHigh = ExtendTo(box.high());
    bool const byLow = ExtendTo(box.low());
    return byHigh || byLow;
  }

  // Extends the box to contain `count` points of an array, with the result of one ExtendTo after the other but without
  // a virtual call for each: the fastest way to bound many points. Returns true if a side moved. Does nothing for null.
  bool ExtendTo(Point const* points, std::size_t count) noexcept {
    bool changed = false;
    Corners corners(domain);
    for (std::size_t i = 0; points != nullptr && i < count; ++i) {
      double const* const p = points[i].GetCoordinates();
      if (corners.Contain(p)) continue;
      changed = ExtendAxes(p) || changed;
      corners = Corners(domain);
    }
    return changed;
  }

  // Return the corners; the origin if the box is empty.
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

  // Returns the distance between the two corners.
  virtual double diagonal() const {
    double sum = 0.0;
    for (Gk_Domain const& each : domain) sum += each.length() * each.length();
    return std::sqrt(sum);
  }

  // Transforms the low and the high corner and sets the box to the one between their images.
  // Compatibility: the other corners are not transformed. After a rotation the box does not bound the rotated box, and
  // an empty box becomes the image of the origin.
  virtual void apply(Morph const& morph) {
    Point lowImage = low();
    Point highImage = high();
    lowImage.Transform(morph, false);
    highImage.Transform(morph, false);
    Set(lowImage, highImage);
  }

  // Returns true if `box` is inside this box; the boundary counts as inside.
  virtual bool isContained(Box const& box) const {
    for (int i = 0; i < N; ++i) {
      if (!domain[i].isContained(box.domain[i])) return false;
    }
    return true;
  }
  // Returns true if the corners are equal within the tolerance. An empty box equals only an empty box.
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
  static constexpr auto kAxes = static_cast<std::size_t>(N);

  // Copy of the bounds of all axes, which the compiler keeps in registers while an array is searched for points that
  // are not between the corners. This needs no tolerances, and skips most points of a large number. Nothing is between
  // the corners of an empty box.
  class Corners {
   public:
    explicit Corners(Gk_Domain const (&domains)[kAxes]) noexcept {
      constexpr double infinity = std::numeric_limits<double>::infinity();
      bool const isSet = domains[0].isFinite();  // all axes are set together
      for (int i = 0; i < N; ++i) {
        low[i] = isSet ? domains[i].low() : infinity;
        high[i] = isSet ? domains[i].high() : -infinity;
      }
    }

    bool Contain(double const* p) const noexcept {
      bool between = true;
      for (int i = 0; i < N; ++i) between = between && low[i] <= p[i] && p[i] <= high[i];
      return between;
    }

   private:
    double low[kAxes];
    double high[kAxes];
  };

  bool IsBetweenCorners(double const* p) const noexcept {
    bool between = domain[0].isFinite();
    for (int i = 0; i < N; ++i) between = between && domain[i].low() <= p[i] && p[i] <= domain[i].high();
    return between;
  }

  bool ExtendAxes(double const* p) noexcept {
    bool changed = false;
    for (int i = 0; i < N; ++i) changed = domain[i].extend(p[i]) || changed;
    return changed;
  }

  Gk_Domain domain[kAxes];
};

// Transforms points, bounds them by a box, and uses an interval, a unit and a number.
#include <vector>

#include "Gk_Domain.h"
#include "Gk_LinMap.h"
#include "VRELBox3D.h"
#include "VRELFileOutputStream.h"
#include "VRELFloatUtil.h"
#include "VRELMorph3D.h"
#include "VRELPoint3D.h"
#include "VRELPoint3DHandle.h"
#include "VRELStreamFormatter.h"
#include "VRELUnit.h"

void Points(VRELStreamFormatter& out) {
  VRELMorph3D const rotation(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2);
  VRELMorph3D const shift(VRELPoint3D(1.0, 0.0, 0.0));
  VRELPoint3D p(1.0, 0.0, 0.0);
  VRELPoint3D q = p;
  p.Transform(rotation.multiply(shift), false);
  q.Transform(shift.multiply(rotation), false);
  out << "rotated, then shifted: " << p << out.endline();
  out << "shifted, then rotated: " << q << out.endline();
  out << "product " << p * q << ", distance " << p.DistanceTo(q) << out.endline();
}

void SharedPoints(VRELStreamFormatter& out) {
  VRELPoint3DHandle const corner(new VRELPoint3D(1.0, 2.0, 3.0));
  VRELPoint3DHandle const same(corner);
  corner->CopyFrom(VRELPoint3D(4.0, 5.0, 6.0));  // *corner = ... would set the reference count to 0
  out << *same << "has " << static_cast<int>(same->GetReferenceCount()) << " handles" << out.endline();
}

void ManyPoints(VRELStreamFormatter& out) {
  std::vector<VRELPoint3D> points = {VRELPoint3D(1.0, 2.0, 0.0), VRELPoint3D(3.0, 1.0, 5.0)};
  VRELPoint3D::TransformAll(points.data(), points.size(), VRELMorph3D(2.0), false);
  VRELBox3D bounds;
  bounds.ExtendTo(points.data(), points.size());
  out << "from " << bounds.low() << "to " << bounds.high() << out.endline();
}

void Boxes(VRELStreamFormatter& out) {
  VRELBox3D box;
  box.ExtendTo(VRELPoint3D(4.0, 1.0, 0.0));
  box.ExtendTo(VRELPoint3D(1.0, 5.0, 0.0));
  out << "diagonal " << box.diagonal() << out.endline();
  VRELBox3D const empty;
  out << (box.ExtendTo(empty) ? "extended to the origin" : "unchanged") << out.endline();
}

void Intervals(VRELStreamFormatter& out) {
  Gk_Domain knots(0.0, 1.0, Gk_Def::FuzzKnot);
  knots.extend(2.5);
  Gk_LinMap const toUnit = knots.mapTo(Gk_Domain(0.0, 1.0, Gk_Def::FuzzKnot));
  out << knots << out.space() << toUnit.apply(0.5) << out.endline();
}

void UnitsAndNumbers(VRELStreamFormatter& out) {
  double metres = 0.0;
  VRELUnit unit = VRELUnitUnknown;
  GetUnitScaleFactor(VRELUnitInch, metres);
  GetVRELUnit(0.001, unit);
  out << metres << ", unit " << static_cast<int>(unit) << out.endline();
  out << VRELFloatUtil::vrelstrtod("1.5d2", nullptr) << ", " << VRELFloatUtil::vrelatof("1.5") << out.endline();
}

int main() {
  VRELStreamFormatter out(&VRELFileOutputStream::console);
  out.SetTrailingZerosRemovalFormat(VREL_TRAILING_ZEROS_REMOVED);
  Points(out);
  SharedPoints(out);
  ManyPoints(out);
  Boxes(out);
  Intervals(out);
  UnitsAndNumbers(out);
}

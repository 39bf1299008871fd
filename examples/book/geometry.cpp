// Points that are moved, a box, an interval, a unit and a number.
#include "Gk_Domain.h"
#include "Gk_LinMap.h"
#include "VRELBox3D.h"
#include "VRELFileOutputStream.h"
#include "VRELFloatUtil.h"
#include "VRELMorph3D.h"
#include "VRELPoint3D.h"
#include "VRELStreamFormatter.h"
#include "VRELUnit.h"

void Points(VRELStreamFormatter& out) {
  VRELMorph3D const turn(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2);
  VRELMorph3D const shift(VRELPoint3D(1.0, 0.0, 0.0));
  VRELPoint3D p(1.0, 0.0, 0.0);
  VRELPoint3D q = p;
  p.Transform(turn.multiply(shift), false);
  q.Transform(shift.multiply(turn), false);
  out << "turned, then shifted: " << p << out.endline();
  out << "shifted, then turned: " << q << out.endline();
  out << "product " << p * q << ", distance " << p.DistanceTo(q) << out.endline();
}

void Boxes(VRELStreamFormatter& out) {
  VRELBox3D box;
  box.ExtendTo(VRELPoint3D(4.0, 1.0, 0.0));
  box.ExtendTo(VRELPoint3D(1.0, 5.0, 0.0));
  out << "diagonal " << box.diagonal() << out.endline();
  VRELBox3D const empty;
  out << (box.ExtendTo(empty) ? "grew to the origin" : "as it was") << out.endline();
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
  Boxes(out);
  Intervals(out);
  UnitsAndNumbers(out);
}

// Fuzzes geometry, units and records with numbers that include NaN, infinities, denormals and the edges of all
// tolerances.
//
// Input: a sequence of operations. The first byte of each selects a function of the table at the end of this file;
// numbers follow, one byte each. A digit or a small letter selects one of kSpecialNumbers; '#' takes the next 8 bytes
// as a double. Asserts what the headers document, and that every operation ends.
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <vector>

#include "FuzzInput.h"
#include "Gk_Domain.h"
#include "Gk_Exception.h"
#include "Gk_Unit.h"
#include "Require.h"
#include "VREL4x4Matrix.h"
#include "VRELAssemblyComponentTransform.h"
#include "VRELBox2D.h"
#include "VRELBox3D.h"
#include "VRELCamera.h"
#include "VRELMath3x3Matrixf.h"
#include "VRELMorph2D.h"
#include "VRELMorph3D.h"
#include "VRELRGBColor.h"
#include "VRELUnit.h"
#include "VRELUnitValue.h"
#include "VRELWeightPoint2D.h"
#include "VRELWeightPoint3D.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// By digit, '0' to '9', and letter, 'a' to 'z'.
constexpr double kSpecialNumbers[36] = {
    0.0,       1.0,        2.0,     3.0,
    0.5,       -1.0,       -2.0,    10.0,
    25.4,      0.1,  // 0 to 9
    5e-11,     1e-10,      2e-10,   5e-7,
    1e-6,      2e-6,       1e-15,   1e-14,
    1e-5,  // a to i
    -0.0,      -0.5,       -10.0,   1e9,
    -1e9,      1e17,       1e300,   -1e300,  // j to q
    DBL_MAX,   -DBL_MAX,   DBL_MIN, 4.9406564584124654e-324,
    kInfinity, -kInfinity, kNaN,    VRELPIBY2,
    VREL2PI,  // r to z
};

double ReadDouble(FuzzInput& input) {
  unsigned char const byte = input.Byte();
  if (byte == '#') {
    unsigned char bytes[sizeof(double)];
    for (unsigned char& each : bytes) each = input.Byte();
    double number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }
  if (byte >= '0' && byte <= '9') return kSpecialNumbers[byte - '0'];
  return kSpecialNumbers[(byte >= 'a' && byte <= 'z' ? byte - 'a' + 10 : byte) % 36];
}

// A double out of the range of float has no defined conversion.
float ReadFloat(FuzzInput& input) {
  double const number = ReadDouble(input);
  if (number > FLT_MAX) return std::numeric_limits<float>::infinity();
  if (number < -FLT_MAX) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(number);
}

VRELPoint2D ReadPoint2D(FuzzInput& input) {
  double const x = ReadDouble(input);
  return VRELPoint2D(x, ReadDouble(input));
}

VRELPoint3D ReadPoint3D(FuzzInput& input) {
  double const x = ReadDouble(input);
  double const y = ReadDouble(input);
  return VRELPoint3D(x, y, ReadDouble(input));
}

VRELVectorf ReadVectorf(FuzzInput& input) {
  float const x = ReadFloat(input);
  float const y = ReadFloat(input);
  return VRELVectorf(x, y, ReadFloat(input));
}

bool AreSame(double a, double b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

template <class Point>
bool AreSame(Point const& a, Point const& b, int count) {
  for (int i = 0; i < count; ++i) {
    if (!AreSame(a[i], b[i])) return false;
  }
  return true;
}

// Returns true if all coordinates are at most `limit`, so that no rounding exceeds the tolerances used below.
template <class Point>
bool IsModerate(Point const& point, double limit = 1000.0) {
  for (double each : point) {
    if (!(std::fabs(each) <= limit)) return false;
  }
  return true;
}

// Principal parameters within 2^24 periods are computed by a loop of that length; the fuzzer avoids the slow ones.
bool IsSlow(Gk_Domain const& domain, double v) {
  double const distance = v > domain.high() ? v - domain.high() : domain.low() - v;
  double const periods = distance / domain.length();
  return periods > 100000.0 && periods < 1e9;
}

void CheckPrincipalParam(Gk_Domain const& domain, double v) {
  if (IsSlow(domain, v)) return;
  double const reduced = domain.principalParam(v);
  if (!domain.isFinite() || std::isnan(v)) {
    Require(AreSame(reduced, v), "an unbounded interval and NaN leave a parameter unchanged");
    return;
  }
  double const period = domain.length();
  if (!(period > 0.0 && std::isfinite(period))) return;
  double const rounding = 8.0 * DBL_EPSILON * std::fmax(std::fabs(domain.low()), std::fabs(domain.high()));
  Require(reduced >= domain.low(), "a reduced parameter is not below the interval");
  Require(reduced <= domain.high() + rounding, "a reduced parameter is not above the interval");
}

void CheckDomain(FuzzInput& input) {
  auto const ends = static_cast<Gk_Domain::EndCondn>(input.Number(4));
  double const low = ReadDouble(input);
  double const high = ReadDouble(input);
  double const fuzz = ReadDouble(input);
  double const v = ReadDouble(input);
  Gk_Domain const domain(ends, low, high, fuzz);
  bool const isOrdered = std::isfinite(low) && std::isfinite(high) && low <= high && fuzz >= 0.0 && std::isfinite(fuzz);

  CheckPrincipalParam(domain, v);
  Gk_Domain const twice = -(-domain);
  Require(AreSame(twice.low(), low) && AreSame(twice.high(), high) && twice.endCondition() == ends,
          "an interval that is mirrored twice is the same");
  if (isOrdered && !std::isnan(v)) {
    double const stuck = domain.stick(v);
    Require(stuck >= low && stuck <= high, "stick stays in the interval");
    Require(domain.isSame(domain, -1.0), "an interval is the same as itself");
  }

  Gk_Domain extended = domain;
  bool const changed = extended.extend(v);
  if (!changed) Require(AreSame(extended.low(), low) && AreSame(extended.high(), high), "no extension, no change");
  if (isOrdered && std::isfinite(v)) Require(extended.isContained(v), "an extended interval contains the number");

  Gk_Domain const other(high, v, fuzz);
  Gk_Domain const common = domain.intersection(other);
  Require(common.isFinite() && AreSame(common.fuzz(), fuzz), "an intersection is finite and keeps the fuzz");
  extended.extend(other);
  extended.expand(v);
  Gk_LinMap const map = domain.mapTo(other);
  extended.apply(map);
  extended.apply(Gk_LinMap(v, low));
  domain.locate(v);
  domain.isInside(other);
  domain.isContained(other);
}

template <class Point>
void CheckPoint(Point const& a, Point const& b, double number) {
  int const dimension = a.GetDimension();
  Require(AreSame(a[-1], a[0]) && AreSame(a[100], a[dimension - 1]), "an index is clamped");
  Require(AreSame(a.DistanceTo(b), b.DistanceTo(a)), "a distance is symmetric");
  if (IsModerate(a, DBL_MAX)) Require(a.IsWithinTolerance(a, number), "a point is within any tolerance of itself");

  Point copy(b);
  copy.RaiseReference();
  copy.CopyFrom(a);
  Require(AreSame(copy, a, dimension), "CopyFrom copies all coordinates");
  Require(copy.GetReferenceCount() == 1, "CopyFrom keeps the reference count");
  Require(AreSame(copy / 0.0, a, dimension), "a division by 0 does nothing");

  if (!IsModerate(a)) {
    a.Normalize();
    a.Orthogonalize();
    return;
  }
  double const length = a.Length();
  if (length == 0.0) Require(a.Normalize() == a, "a zero vector is not normalized");
  if (length > 1e-100) Require(std::fabs(a.Normalize().Length() - 1.0) < 1e-12, "a normalized vector has the length 1");
  Point const perpendicular = a.Orthogonalize();
  Require(std::fabs(perpendicular.Length() - 1.0) < 1e-9, "a perpendicular vector has the length 1");
  Require(std::fabs(perpendicular * a) <= 1e-9 * (1.0 + length), "a perpendicular vector is perpendicular");
}

void CheckPoint2D(FuzzInput& input) {
  VRELPoint2D const a = ReadPoint2D(input);
  VRELPoint2D const b = ReadPoint2D(input);
  CheckPoint(a, b, ReadDouble(input));
}

void CheckPoint3D(FuzzInput& input) {
  VRELPoint3D const a = ReadPoint3D(input);
  VRELPoint3D const b = ReadPoint3D(input);
  CheckPoint(a, b, ReadDouble(input));
  if (!IsModerate(a) || !IsModerate(b)) return;
  VRELPoint3D const normal = VRELPoint3D::VectorProduct(a, b);
  Require(std::fabs(normal * a) <= 1e-3, "a vector product is perpendicular to its first factor");
}

void CheckWeightPoint(FuzzInput& input) {
  VRELPoint3D const point = ReadPoint3D(input);
  double const weight = ReadDouble(input);
  VRELWeightPoint3D weighted(point, weight, true);
  Require(AreSame(weighted[3], weight) && AreSame(weighted[100], weight),
          "an index above the coordinates is the weight");
  bool const isExact = IsModerate(point) && std::fabs(weight) > 1e-6 && std::fabs(weight) < 1e6;
  if (isExact) Require(weighted.GetCoords().IsWithinTolerance(point, 1e-9), "coordinates survive the weight");
  weighted.Negate();
  Require(AreSame(weighted.GetWeight(), weight * -1.0), "negation includes the weight");
  weighted.Transform(VRELMorph3D(point, weight), false);
  weighted.Divide(weight);
}

// Sets a box from points in two ways, which have to agree.
template <class Box, class Point, class Morph>
void CheckBox(std::vector<Point> const& points, Morph const& morph) {
  int const dimension = Point().GetDimension();
  Box one;
  bool changed = false;
  bool isFinite = true;
  for (Point const& each : points) {
    changed = one.ExtendTo(each) || changed;
    isFinite = isFinite && IsModerate(each, DBL_MAX);
  }
  Box all;
  Require(all.ExtendTo(points.data(), points.size()) == changed, "an array extends a box like its points");
  Require(AreSame(all.low(), one.low(), dimension) && AreSame(all.high(), one.high(), dimension),
          "an array extends a box to the same corners");
  if (isFinite && !points.empty()) {
    for (Point const& each : points) Require(one.isContained(Box(each, each)), "a box contains its points");
    Require(one.isEqual(all) && one.isContained(all), "a box equals itself");
    Require(!one.ExtendTo(all), "a box contains itself");
  }
  one.apply(morph);
  one.expand(morph.scaleFactor());
  all.ExtendTo(one);
  all.diagonal();
  all.Set(one.high(), one.low());
  Box empty;
  Require(empty.expand(1.0), "expand returns true");
  all.ExtendTo(empty);
}

void CheckBox2D(FuzzInput& input) {
  std::vector<VRELPoint2D> points(static_cast<std::size_t>(input.Number(12)));
  for (VRELPoint2D& each : points) each.CopyFrom(ReadPoint2D(input));
  VRELMorph2D morph(ReadPoint2D(input));
  morph.setScale(ReadDouble(input));
  CheckBox<VRELBox2D>(points, morph);
}

void CheckBox3D(FuzzInput& input) {
  std::vector<VRELPoint3D> points(static_cast<std::size_t>(input.Number(12)));
  for (VRELPoint3D& each : points) each.CopyFrom(ReadPoint3D(input));
  VRELPoint3D const axis = ReadPoint3D(input);
  VRELMorph3D morph(axis, ReadDouble(input));
  morph.setScale(ReadDouble(input));
  CheckBox<VRELBox3D>(points, morph);
}

VRELMorph3D ReadMorph3D(FuzzInput& input) {
  VRELPoint3D const axis = ReadPoint3D(input);
  double const angle = ReadDouble(input);
  VRELPoint3D const translation = ReadPoint3D(input);
  return VRELMorph3D(VRELMorph3D(axis, angle).affine(), translation, ReadDouble(input));
}

// Returns true for a similarity whose inverse and products can be compared within a tolerance.
bool IsSimilarity(VRELMorph3D const& morph) {
  VRELAffine3D transposed;
  VRELAffine3D product;
  VRELAffine3D identity;
  morph.affine().GetTranspose(transposed);
  morph.affine().Multiply(transposed, product);
  identity.MakeIdentity();
  double const scale = std::fabs(morph.scaleFactor());
  return product == identity && scale >= 0.01 && scale <= 100.0 && IsModerate(morph.translation());
}

void CheckMorph3D(FuzzInput& input) {
  VRELMorph3D const first = ReadMorph3D(input);
  VRELMorph3D const second = ReadMorph3D(input);
  VRELPoint3D const point = ReadPoint3D(input);
  VRELMorph3D const product = first.multiply(second);
  VRELMorph3D const inverse = first.inverse();
  Require(first.isIdentity() == (!first.isScale() && !first.isAffine() && !first.isTranslation()),
          "a morph is the identity if no part has an effect");

  VRELPoint3D each = point;
  VRELPoint3D array[2] = {point, point};
  each.Transform(first, true);
  VRELPoint3D::TransformAll(array, 2, first, true);
  Require(AreSame(each, array[0], 3) && AreSame(each, array[1], 3), "an array is transformed like its points");

  if (IsSimilarity(first) && IsSimilarity(second) && IsModerate(point)) {
    VRELPoint3D stepwise = point;
    stepwise.Transform(first, false);
    VRELPoint3D back = stepwise;
    back.Transform(inverse, false);
    Require(back.IsWithinTolerance(point, 0.01), "an inverse undoes a morph");
    stepwise.Transform(second, false);
    VRELPoint3D atOnce = point;
    atOnce.Transform(product, false);
    Require(atOnce.IsWithinTolerance(stepwise, 0.1), "a product applies the first morph and then the second");
    Require(first.isEqual(first), "a morph equals itself");
  }
  VRELMorph3D changed = first;
  changed.setScale(point[0]);
  changed.FixScaleFactor();
  changed.isMirror();
  changed.fixMorphFlags();
  changed.Inverse(changed);
  changed.SetToIdentity();
  Require(changed.isIdentity(), "SetToIdentity sets the flags");
}

void CheckMorph2D(FuzzInput& input) {
  VRELAffine2D affine;
  for (int i = 0; i < 4; ++i) affine.SetElement(i / 2, i % 2, ReadDouble(input));
  VRELPoint2D const translation = ReadPoint2D(input);
  VRELMorph2D morph(affine, translation, ReadDouble(input));
  VRELMorph2D const inverse = morph.inverse();
  VRELMorph2D const product = morph.multiply(inverse);
  VRELPoint2D point = translation;
  point.Transform(product, false);
  point.Transform(affine);
  morph.setScale(point[0]);
  morph.isMirror();
  morph.isEqual(product);
}

void CheckAffine(FuzzInput& input) {
  VRELAffine3D affine;
  bool isModerate = true;
  for (int i = 0; i < 9; ++i) {
    double const element = ReadDouble(input);
    affine.SetElement(i / 3, i % 3, element);
    isModerate = isModerate && std::fabs(element) <= 100.0;
  }
  double const determinant = affine.Determinant();
  VRELAffine3D inverse;
  affine.GetInverse(inverse);
  if (isModerate && std::fabs(determinant) > 0.1) {
    VRELAffine3D product;
    VRELAffine3D identity;
    affine.Multiply(inverse, product);
    identity.MakeIdentity();
    Require(product == identity, "a matrix times its inverse is the identity");
  }
  affine.IsIdentity();
  affine.Divide(ReadDouble(input));
  int const row = input.Byte() - 100;
  int const column = input.Byte() - 100;
  bool const isInside = row >= 0 && row < 3 && column >= 0 && column < 3;
  try {
    affine.GetElement(row, column);
    Require(isInside, "an index that is out of range throws");
  } catch (Gk_Exception const&) {
    Require(!isInside, "an index in range does not throw");
  }
  affine.DeterminantOfCofactor(row, column);
}

void CheckMatrix3x3(FuzzInput& input) {
  std::array<float, 9> c{};
  float largest = 0.0F;
  for (float& each : c) {
    each = ReadFloat(input);
    largest = std::fmax(largest, std::fabs(each));
  }
  VRELMath3x3Matrixf const matrix(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], c[8]);
  Require(matrix.GetType() >= -2 && matrix.GetType() <= 2, "a type is from -2 to 2");
  Require(matrix.IsIsometry() == (std::abs(matrix.GetType()) == 1), "an isometry has the type 1 or -1");
  Require(matrix.InfiniteNorm() == largest, "the norm is the largest coefficient");
  VRELMath3x3Matrixf inverse;
  bool const isInvertible = matrix.Inverse(inverse);
  float const determinant = std::fabs(matrix.Determinant());
  if (determinant > 1.0F) Require(isInvertible, "a matrix with a determinant above 1 can be inverted");
  if (determinant == 0.0F) Require(!isInvertible, "a singular matrix cannot be inverted");
  if (!isInvertible) Require(inverse.GetType() == 1, "a failed inversion leaves the output unchanged");
  VRELMath3x3Matrixf const back = matrix.Transpose().Transpose();
  Require(back.InfiniteNorm() == largest, "a matrix that is transposed twice is the same");
  float const s = ReadFloat(input);
  VRELMath3x3Matrixf const results[] = {matrix * inverse, matrix * s, matrix / s, matrix + inverse, matrix - back};
  for (VRELMath3x3Matrixf const& each : results) {
    Require(each.GetType() >= -2 && each.GetType() <= 2, "the type of a result is from -2 to 2");
  }
  VRELMath3x3Matrixf const reflection(VRELVectorf(c[0], c[1], c[2]));
  Require(reflection.Determinant() == -1.0F, "a reflection has the determinant -1");
}

void CheckMatrix4x4(FuzzInput& input) {
  VRELVectorf const rows[] = {ReadVectorf(input), ReadVectorf(input), ReadVectorf(input), ReadVectorf(input)};
  VREL4x4Matrix const matrix(rows[0], rows[1], rows[2], rows[3]);
  VREL4x4Matrix inverted;
  matrix.GetInvertedMatrix(inverted);
  if (!(std::fabs(static_cast<double>(matrix.GetDeterminant())) > 1e-15)) {
    Require(inverted.IsIdentity(), "a singular matrix leaves the output unchanged");
  }
  Require(!(matrix.GetScaling() < 0.0F), "a scaling is not negative");
  float normal[4];
  matrix.ComputeInverseTransposeThirdColumnNormalized(normal);
  VRELPointf const point = matrix * VRELPointf(rows[0].X(), rows[1].Y(), rows[2].Z());
  VREL4x4Matrix const rotation(rows[0], point, rows[3].X());
  VREL4x4Matrix const both(rows[1], rows[2], point, rows[3].Y());
  VREL4x4Matrix product = rotation * both;
  product *= matrix;
  product.SetScaling(rows[3].Z());
  VRELDirectionf const direction(rows[0]);
  float const length = VRELVectorf(direction).Norm();
  if (rows[0].Norm() < 1e18F) Require(std::fabs(length - 1.0F) < 1e-5F, "a direction has the length 1");
  double const angle = rows[0].AngleTo(rows[1]);
  Require(std::isnan(angle) || (angle >= 0.0 && angle <= VRELPI), "an angle is from 0 to pi");
  double const around = rows[0].AngleTo(rows[1], rows[2]);
  Require(std::isnan(around) || (around >= 0.0 && around <= VREL2PI), "an angle about a reference is from 0 to 2 pi");
}

void CheckUnits(FuzzInput& input) {
  double const factor = ReadDouble(input);
  VRELUnit unit = VRELUnitModel;
  VRINResult const result = GetVRELUnit(factor, unit);
  double metres = 0.0;
  if (result.IsFailure()) {
    Require(factor <= 0.0 && unit == VRELUnitModel, "only 0 and negative factors fail, without a change");
  } else if (unit != VRELUnitUnknown) {
    Require(GetUnitScaleFactor(unit, metres).IsSuccess() && std::fabs(metres - factor) < 1e-5, "a unit has the factor");
  }

  auto const any = static_cast<VRELUnit>(input.Byte() - 100);
  VRELUnit before = VRELUnitUnknown;
  VRELUnit after = VRELUnitUnknown;
  get_sending_system_unit(before);
  bool const isSet = set_sending_system_unit(any).IsSuccess();
  get_sending_system_unit(after);
  Require(isSet == CheckUnit(any).IsSuccess(), "a unit is set if it is valid");
  Require(after == (isSet ? any : before), "an invalid unit changes nothing");
  Require(GetUnitScaleFactor(any, metres).IsSuccess() == (any >= 2 && any <= 13), "units 2 to 13 have a factor");

  Gk_Unit const custom("custom", factor);
  Gk_Unit to;
  if (GetGkUnitFromVRELUnit(any, to).IsSuccess()) {
    Require(GetVRELUnitFromGkUnit(to, unit).IsSuccess(), "a unit is converted back");
    Require(GetUnitScaleFactor(unit, metres).IsSuccess(), "a unit that is converted back has a factor");
  }
  Require(!(custom.mapTo(to) < 0.0), "a conversion factor is not negative");
  GetVRELUnitFromGkUnit(custom, unit);
}

void CheckPlacement(FuzzInput& input) {
  double matrix[12];
  for (double& each : matrix) each = ReadDouble(input);
  VRELAssemblyComponentTransform const placement(matrix, ReadDouble(input));
  double determinant = 0.0;
  placement.GetDeterminant(determinant);
  Require(placement.IsValid() == (determinant != 0.0), "a placement is valid if its determinant is not 0");
  Require(placement.IsMirrorTransform() == (determinant < 0.0), "a mirror has a negative determinant");
  bool isMoved = false;
  for (double each : matrix) isMoved = isMoved || !(std::fabs(each) < 1e6);
  if (isMoved) return;
  float point[3] = {1.0F, 2.0F, 3.0F};
  placement.ApplyTransform(point);
  if (placement.IsIdentityTransform()) {
    Require(point[0] == 1.0F && point[1] == 2.0F && point[2] == 3.0F, "an identity leaves a point unchanged");
  }
  VRELAssemblyComponentTransform const product = placement * VRELAssemblyComponentTransform();
  double out[12];
  product.Get(out);
  for (int i = 0; i < 12; ++i) Require(out[i] == matrix[i], "a product with the identity is the same");
  VRELMorph3D const morph(placement);
  Require(morph.isIdentity(), "a morph of a placement has no effect at first");
}

void CheckColorAndCamera(FuzzInput& input) {
  float const c[] = {ReadFloat(input), ReadFloat(input), ReadFloat(input), ReadFloat(input)};
  VRELRGBColor const color(c[0], c[1], c[2], c[3]);
  bool isValid = true;
  for (float each : c) isValid = isValid && each >= 0.0F && each <= 1.0F;
  Require(color.IsValid() == isValid, "a valid color has components from 0 to 1");
  unsigned int integers[4];
  color.GetRGBA(integers);
  if (isValid)
    Require(VRELRGBColor(integers[0], integers[1], integers[2], integers[3]).IsValid(), "integers are valid");
  color.hashCode();
  if (isValid) Require(color == color && !(color != color), "a valid color equals itself");
  VRELCamera const camera(VRELCameraTypeDefault, c, c + 1, nullptr, c[0], c[1]);
  float direction[3];
  camera.GetDirection(direction);
}

constexpr void (*kChecks[])(FuzzInput&) = {
    CheckDomain,  CheckPoint2D, CheckPoint3D,   CheckWeightPoint, CheckBox2D, CheckBox3D,     CheckMorph2D,
    CheckMorph3D, CheckAffine,  CheckMatrix3x3, CheckMatrix4x4,   CheckUnits, CheckPlacement, CheckColorAndCamera,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
  FuzzInput input(bytes, size);
  for (int i = 0; i < 50 && !input.IsAtEnd(); ++i) {
    int const check = input.Number(static_cast<int>(std::size(kChecks)));
    kChecks[check](input);
  }
  return 0;
}

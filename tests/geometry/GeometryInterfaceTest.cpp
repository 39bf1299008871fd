// Declarations, virtual slots and field offsets of the geometry classes, as clients compiled against.
#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <utility>

#include "Declaration.h"
#include "Gk_Domain.h"
#include "VREL4x4Matrix.h"
#include "VRELAffine2D.h"
#include "VRELAffine3D.h"
#include "VRELBox2D.h"
#include "VRELBox3D.h"
#include "VRELMath3x3Matrixf.h"
#include "VRELMatrixOfVRELPoint3D.h"
#include "VRELMatrixOfVRELWeightPoint3D.h"
#include "VRELMatrixOfdouble.h"
#include "VRELMorph2D.h"
#include "VRELMorph3D.h"
#include "VRELPoint2DHandle.h"
#include "VRELPoint3DHandle.h"
#include "VRELPointHandle.h"
#include "VRELStreamFormatter.h"
#include "VRELWeightPoint2D.h"
#include "VRELWeightPoint3D.h"
#include "VirtualSlot.h"

namespace {

// Declarations that VRELPoint2D and VRELPoint3D share.
template <class Point, class Affine, class Morph>
constexpr bool DeclaresPoint() {
  return IsDeclared<Point& (Point::*)(Point const&)>(&Point::operator=) &&
         IsDeclared<Point& (Point::*)(Point const&)>(&Point::operator+=) &&
         IsDeclared<Point& (Point::*)(Point const&)>(&Point::operator-=) &&
         IsDeclared<Point& (Point::*)(double)>(&Point::operator*=) &&
         IsDeclared<Point& (Point::*)(double)>(&Point::operator/=) &&
         IsDeclared<void (Point::*)(Point const&)>(&Point::Shift) &&
         IsDeclared<Point* (Point::*)() const>(&Point::Copy) &&
         IsDeclared<Point (Point::*)() const>(&Point::Normalize) &&
         IsDeclared<Point (Point::*)() const>(&Point::Orthogonalize) &&
         IsDeclared<void (Point::*)(Affine const&)>(&Point::Transform) &&
         IsDeclared<void (Point::*)(Morph const&, bool)>(&Point::Transform) &&
         std::is_same_v<decltype(Point() + Point()), Point> && std::is_same_v<decltype(Point() - Point()), Point> &&
         std::is_same_v<decltype(-Point()), Point> && std::is_same_v<decltype(Point() * 2.0), Point> &&
         std::is_same_v<decltype(2.0 * Point()), Point> && std::is_same_v<decltype(Point() / 2.0), Point> &&
         std::is_same_v<decltype(Point() * Point()), double>;
}
static_assert(DeclaresPoint<VRELPoint2D, VRELAffine2D, VRELMorph2D>());
static_assert(DeclaresPoint<VRELPoint3D, VRELAffine3D, VRELMorph3D>());
static_assert(std::is_constructible_v<VRELPoint2D, double, double>);
static_assert(std::is_constructible_v<VRELPoint3D, double, double, double>);
static_assert(std::is_constructible_v<VRELPoint3D, double const*>);
static_assert(IsDeclared<VRELPoint3D (*)(VRELPoint3D const&, VRELPoint3D const&)>(&VRELPoint3D::VectorProduct));
static_assert(IsDeclared<void (*)(VRELPoint3D const&, double*)>(&VRELGetDoublesFromVRELPoint3D));
static_assert(IsDeclared<void (*)(double&, double&, double&, VRELMorph3D const&, bool)>(&Transform));

static_assert(std::is_base_of_v<VRELReferenceCount, VRELPoint>);
static_assert(std::is_constructible_v<VRELPoint, int>);
static_assert(IsDeclared<VRELPoint& (VRELPoint::*)(VRELPoint const&)>(&VRELPoint::operator=));
static_assert(IsDeclared<double& (VRELPoint::*)(int)>(&VRELPoint::operator[]));
static_assert(IsDeclared<double (VRELPoint::*)(int) const>(&VRELPoint::operator[]));
static_assert(IsDeclared<double (VRELPoint::*)() const>(&VRELPoint::Length));
static_assert(IsDeclared<void (VRELPoint::*)()>(&VRELPoint::Negate));
static_assert(IsDeclared<void (VRELPoint::*)(double)>(&VRELPoint::Multiply));
static_assert(IsDeclared<void (VRELPoint::*)(double)>(&VRELPoint::Divide));
static_assert(IsDeclared<void (VRELPoint::*)(VRELPoint const&)>(&VRELPoint::Substract));
static_assert(IsDeclared<void (VRELPoint::*)(VRELPoint const&)>(&VRELPoint::Add));
static_assert(IsDeclared<void (VRELPoint::*)(VRELPoint&) const>(&VRELPoint::CopyIn));
static_assert(IsDeclared<void (VRELPoint::*)(VRELStreamFormatter&) const>(&VRELPoint::Dump));
static_assert(IsDeclared<double (VRELPoint::*)(VRELPoint const&) const>(&VRELPoint::DistanceTo));
static_assert(IsDeclared<bool (VRELPoint::*)(VRELPoint const&, double) const>(&VRELPoint::IsWithinTolerance));
static_assert(IsDeclared<bool (VRELPoint::*)(VRELPoint const&, VRELPoint const&) const>(&VRELPoint::IsWithinTolerance));

// Declarations that VRELWeightPoint2D and VRELWeightPoint3D share.
template <class Weighted, class Plain, class Affine, class Morph>
constexpr bool DeclaresWeightPoint() {
  return std::is_base_of_v<VRELPoint, Weighted> && std::is_constructible_v<Weighted, Plain const&, double, bool> &&
         std::is_constructible_v<Weighted, double> && std::is_default_constructible_v<Weighted> &&
         IsDeclared<double (Weighted::*)() const>(&Weighted::GetWeight) &&
         IsDeclared<void (Weighted::*)(double)>(&Weighted::SetWeight) &&
         IsDeclared<Plain (Weighted::*)() const>(&Weighted::GetWeightedCoords) &&
         IsDeclared<void (Weighted::*)(Plain const&)>(&Weighted::SetWeightedCoords) &&
         IsDeclared<Plain (Weighted::*)() const>(&Weighted::GetCoords) &&
         IsDeclared<Weighted& (Weighted::*)(Weighted const&)>(&Weighted::operator=) &&
         IsDeclared<Weighted& (Weighted::*)(Weighted const&)>(&Weighted::operator+=) &&
         IsDeclared<Weighted& (Weighted::*)(Weighted const&)>(&Weighted::operator-=) &&
         IsDeclared<Weighted& (Weighted::*)(double)>(&Weighted::operator*=) &&
         IsDeclared<Weighted& (Weighted::*)(double)>(&Weighted::operator/=) &&
         IsDeclared<void (Weighted::*)(Weighted const&)>(&Weighted::Shift) &&
         IsDeclared<void (Weighted::*)(Plain const&)>(&Weighted::Shift) &&
         IsDeclared<void (Weighted::*)(Affine const&)>(&Weighted::Transform) &&
         IsDeclared<void (Weighted::*)(Morph const&, bool)>(&Weighted::Transform);
}
static_assert(DeclaresWeightPoint<VRELWeightPoint2D, VRELPoint2D, VRELAffine2D, VRELMorph2D>());
static_assert(DeclaresWeightPoint<VRELWeightPoint3D, VRELPoint3D, VRELAffine3D, VRELMorph3D>());

static_assert(std::is_base_of_v<VRELReferenceHandle, VRELPointHandle>);
static_assert(std::is_convertible_v<VRELPoint2DHandle, VRELPoint2D*>);
static_assert(std::is_convertible_v<VRELPoint3DHandle, VRELPoint3D*>);

static_assert(IsDeclared<void (VRELPointf::*)(float*) const>(&VRELPointf::GetValue));
static_assert(IsDeclared<VRELPointf (VRELPointf::*)(VRELVectorf const&) const>(&VRELPointf::operator+));
static_assert(IsDeclared<VRELPointf (VRELPointf::*)(VRELVectorf const&) const>(&VRELPointf::operator-));
static_assert(IsDeclared<VRELVectorf (VRELPointf::*)(VRELPointf const&) const>(&VRELPointf::operator-));
static_assert(IsDeclared<bool (VRELPointf::*)(VRELPointf const&) const>(&VRELPointf::operator==));
static_assert(IsDeclared<float (VRELPointf::*)(VRELPointf const&) const>(&VRELPointf::DistanceTo));
static_assert(IsDeclared<float (VRELPointf::*)(VRELPointf const&) const>(&VRELPointf::DistanceL1To));
static_assert(IsDeclared<void (VRELPointf::*)(VRELPointf const&)>(&VRELPointf::GetMinimum));
static_assert(IsDeclared<void (VRELPointf::*)(VRELPointf const&)>(&VRELPointf::GetMaximum));
static_assert(std::is_constructible_v<VRELPointf, float const*>);

// The negation of VRELPointf::operator== would be true for identical points.
template <class T, class = void>
struct HasNotEqual : std::false_type {};
template <class T>
struct HasNotEqual<T, std::void_t<decltype(std::declval<T const&>() != std::declval<T const&>())>> : std::true_type {};
static_assert(!HasNotEqual<VRELPointf>::value);
static_assert(HasNotEqual<VRELPoint3D>::value);

static_assert(std::is_constructible_v<VRELVectorf, VRELPointf const&, VRELPointf const&>);
static_assert(std::is_convertible_v<VRELDirectionf, VRELVectorf>);
static_assert(IsDeclared<void (VRELVectorf::*)(float&, float&, float&) const>(&VRELVectorf::GetCoord));
static_assert(IsDeclared<void (VRELVectorf::*)(float, float, float)>(&VRELVectorf::SetCoord));
static_assert(IsDeclared<float (VRELVectorf::*)() const>(&VRELVectorf::Norm));
static_assert(IsDeclared<void (VRELVectorf::*)()>(&VRELVectorf::Normalize));
static_assert(IsDeclared<double (VRELVectorf::*)(VRELVectorf const&) const>(&VRELVectorf::AngleTo));
static_assert(IsDeclared<double (VRELVectorf::*)(VRELVectorf const&, VRELVectorf const&) const>(&VRELVectorf::AngleTo));
static_assert(std::is_same_v<decltype(VRELVectorf() * VRELVectorf()), float>);
static_assert(std::is_same_v<decltype(VRELVectorf() ^ VRELVectorf()), VRELVectorf>);
static_assert(std::is_same_v<decltype(VRELVectorf() % VRELVectorf()), VRELVectorf>);
static_assert(std::is_same_v<decltype(VRELVectorf() + VRELPointf()), VRELPointf>);
static_assert(IsDeclared<void (VRELDirectionf::*)()>(&VRELDirectionf::Normalize));
static_assert(std::is_same_v<decltype(VRELDirectionf() ^ VRELVectorf()), VRELVectorf>);

using M4 = VREL4x4Matrix;
static_assert(std::is_constructible_v<M4, VRELVectorf const&, float>);
static_assert(std::is_constructible_v<M4, float const**, VRELVectorf const&>);
static_assert(std::is_constructible_v<M4, VRELVectorf const&, VRELPointf const&, float>);
static_assert(std::is_constructible_v<M4, VRELVectorf const&, VRELVectorf const&, VRELPointf const&, float>);
static_assert(IsDeclared<void (M4::*)(VRELVectorf const&, VRELVectorf const&, VRELVectorf const&, VRELPointf const&)>(
    &M4::SetComponents));
static_assert(IsDeclared<void (M4::*)(VRELDirectionf const&, VRELDirectionf const&, VRELDirectionf const&,
                                      VRELPointf const&)>(&M4::SetComponents));
static_assert(
    IsDeclared<void (M4::*)(VRELVectorf&, VRELVectorf&, VRELVectorf&, VRELPointf&) const>(&M4::GetComponents));
static_assert(
    IsDeclared<void (M4::*)(VRELDirectionf&, VRELDirectionf&, VRELDirectionf&, VRELPointf&) const>(&M4::GetComponents));
static_assert(IsDeclared<void (M4::*)(VRELVectorf const&, float)>(&M4::SetTranslation));
static_assert(IsDeclared<void (M4::*)(VRELVectorf&) const>(&M4::GetTranslation));
static_assert(IsDeclared<void (M4::*)(VRELDirectionf const&, VRELPointf const&, float const&)>(&M4::SetRotation));
static_assert(IsDeclared<void (M4::*)(float)>(&M4::SetScaling));
static_assert(IsDeclared<float (M4::*)() const>(&M4::GetDeterminant));
static_assert(IsDeclared<float (M4::*)() const>(&M4::GetScaling));
static_assert(IsDeclared<void (M4::*)()>(&M4::ComputeDeterminant));
static_assert(IsDeclared<void (M4::*)()>(&M4::ComputeScaling));
static_assert(IsDeclared<bool (M4::*)(M4 const&) const>(&M4::operator==));
static_assert(IsDeclared<bool (M4::*)() const>(&M4::IsIdentity));
static_assert(IsDeclared<M4& (M4::*)(M4 const&)>(&M4::operator*=));
static_assert(IsDeclared<M4 (M4::*)(M4 const&) const>(&M4::operator*));
static_assert(IsDeclared<VRELPointf (M4::*)(VRELPointf const&) const>(&M4::operator*));
static_assert(IsDeclared<VRELVectorf (M4::*)(VRELVectorf const&) const>(&M4::operator*));
static_assert(IsDeclared<VRELDirectionf (M4::*)(VRELDirectionf const&) const>(&M4::operator*));
static_assert(IsDeclared<void (M4::*)(M4&) const>(&M4::GetInvertedMatrix));
static_assert(IsDeclared<void (M4::*)(float*) const>(&M4::ComputeInverseTransposeThirdColumnNormalized));

using M3 = VRELMath3x3Matrixf;
static_assert(std::is_constructible_v<M3, float> && std::is_constructible_v<M3, VRELVectorf const&>);
static_assert(std::is_constructible_v<M3, VRELVectorf const&, double const&>);
static_assert(std::is_constructible_v<M3, VRELVectorf const&, VRELVectorf const&>);
static_assert(std::is_constructible_v<M3, VRELVectorf const&, VRELVectorf const&, VRELVectorf const&>);
static_assert(IsDeclared<int (M3::*)() const>(&M3::GetType));
static_assert(IsDeclared<bool (M3::*)() const>(&M3::IsScaling));
static_assert(IsDeclared<bool (M3::*)() const>(&M3::IsIsometry));
static_assert(IsDeclared<float (M3::*)() const>(&M3::Determinant));
static_assert(IsDeclared<float (M3::*)() const>(&M3::Trace));
static_assert(IsDeclared<float (M3::*)() const>(&M3::InfiniteNorm));
static_assert(IsDeclared<void (M3::*)(M3&) const>(&M3::Transpose));
static_assert(IsDeclared<M3 (M3::*)() const>(&M3::Transpose));
static_assert(IsDeclared<bool (M3::*)(M3&) const>(&M3::Inverse));
static_assert(IsDeclared<M3 (M3::*)() const>(&M3::Inverse));
static_assert(IsDeclared<void (M3::*)(VRELVectorf const&, VRELVectorf const&, VRELVectorf const&)>(&M3::SetMatrix));
static_assert(IsDeclared<void (M3::*)(VRELVectorf const&)>(&M3::SetFirstColumn));
static_assert(IsDeclared<void (M3::*)(VRELVectorf const&)>(&M3::SetSecondColumn));
static_assert(IsDeclared<void (M3::*)(VRELVectorf const&)>(&M3::SetThirdColumn));
static_assert(IsDeclared<void (M3::*)(VRELVectorf&) const>(&M3::GetFirstColumn));
static_assert(IsDeclared<void (M3::*)(VRELVectorf&) const>(&M3::GetSecondColumn));
static_assert(IsDeclared<void (M3::*)(VRELVectorf&) const>(&M3::GetThirdColumn));
static_assert(IsDeclared<void (M3::*)(float, float, float, float, float, float, float, float, float)>(&M3::SetCoef));
static_assert(IsDeclared<void (M3::*)(float&, float&, float&, float&, float&, float&, float&, float&, float&) const>(
    &M3::GetCoef));

// Declarations of the three grids.
template <class Matrix, class T>
constexpr bool DeclaresMatrix() {
  return std::is_class_v<Matrix> && std::is_default_constructible_v<Matrix> &&
         std::is_constructible_v<Matrix, int, int> && std::is_constructible_v<Matrix, int, int, T> &&
         std::is_constructible_v<Matrix, T*, int, int> && IsDeclared<int (Matrix::*)() const>(&Matrix::uSize) &&
         IsDeclared<int (Matrix::*)() const>(&Matrix::vSize) && IsDeclared<T& (Matrix::*)(int, int)>(&Matrix::elem) &&
         IsDeclared<T const& (Matrix::*)(int, int) const>(&Matrix::elem) &&
         IsDeclared<Matrix (Matrix::*)() const>(&Matrix::copy) &&
         IsDeclared<Matrix& (Matrix::*)()>(&Matrix::transpose) &&
         IsDeclared<Matrix (Matrix::*)(int, int, int, int) const>(&Matrix::subset);
}
static_assert(DeclaresMatrix<VRELMatrixOfdouble, double>());
static_assert(DeclaresMatrix<VRELMatrixOfVRELPoint3D, VRELPoint3D>());
static_assert(DeclaresMatrix<VRELMatrixOfVRELWeightPoint3D, VRELWeightPoint3D>());

static_assert(IsDeclared<void (VRELAffine::*)(double)>(&VRELAffine::Initialize));
static_assert(IsDeclared<void (VRELAffine::*)()>(&VRELAffine::MakeIdentity));
static_assert(IsDeclared<double (VRELAffine::*)(int, int) const>(&VRELAffine::GetElement));
static_assert(IsDeclared<void (VRELAffine::*)(int, int, double)>(&VRELAffine::SetElement));
static_assert(IsDeclared<void (VRELAffine::*)(int, double*) const>(&VRELAffine::GetRow));
static_assert(IsDeclared<void (VRELAffine::*)(int, double*) const>(&VRELAffine::GetColumn));
static_assert(std::is_invocable_v<decltype(&VRELAffine::SetRow), VRELAffine&, int, double*>);
static_assert(IsDeclared<VRELAffine& (VRELAffine::*)(VRELAffine const&)>(&VRELAffine::SetTo));
static_assert(IsDeclared<VRELAffine& (VRELAffine::*)(double)>(&VRELAffine::Multiply));
static_assert(IsDeclared<VRELAffine& (VRELAffine::*)(double)>(&VRELAffine::Divide));
static_assert(IsDeclared<void (VRELAffine::*)(VRELAffine const&, VRELAffine&) const>(&VRELAffine::Multiply));
static_assert(IsDeclared<VRELAffine& (VRELAffine::*)()>(&VRELAffine::Transpose));
static_assert(IsDeclared<void (VRELAffine::*)(VRELAffine&) const>(&VRELAffine::GetTranspose));
static_assert(IsDeclared<double (VRELAffine::*)() const>(&VRELAffine::Determinant));
static_assert(IsDeclared<double (VRELAffine::*)(int, int) const>(&VRELAffine::DeterminantOfCofactor));
static_assert(IsDeclared<void (VRELAffine::*)(VRELAffine&) const>(&VRELAffine::GetInverse));
static_assert(IsDeclared<bool (VRELAffine::*)(VRELAffine const&) const>(&VRELAffine::operator==));
static_assert(IsDeclared<bool (VRELAffine::*)() const>(&VRELAffine::IsIdentity));
static_assert(IsDeclared<void (VRELAffine2D::*)(int, VRELPoint2D const&)>(&VRELAffine2D::SetColumn));
static_assert(IsDeclared<void (VRELAffine3D::*)(int, VRELPoint3D const&)>(&VRELAffine3D::SetColumn));

// Declarations that VRELMorph2D and VRELMorph3D share.
template <class Morph, class Affine, class Point>
constexpr bool DeclaresMorph() {
  return std::is_constructible_v<Morph, double> && std::is_constructible_v<Morph, Point const&> &&
         std::is_constructible_v<Morph, Affine const&, Point const&, double> &&
         std::is_constructible_v<Morph, Point const&, double> &&
         IsDeclared<void (Morph::*)(double)>(&Morph::setScale) &&
         IsDeclared<void (Morph::*)(VRELMorph&) const>(&Morph::Inverse) &&
         IsDeclared<void (Morph::*)(VRELMorph const&, VRELMorph&) const>(&Morph::Multiply) &&
         IsDeclared<bool (Morph::*)(VRELMorph const&) const>(&Morph::isEqual) &&
         IsDeclared<double (Morph::*)() const>(&Morph::scaleFactor) &&
         IsDeclared<bool (Morph::*)() const>(&Morph::isScale) &&
         IsDeclared<bool (Morph::*)() const>(&Morph::isAffine) &&
         IsDeclared<bool (Morph::*)() const>(&Morph::isTranslation) &&
         IsDeclared<bool (Morph::*)() const>(&Morph::isIdentity) &&
         IsDeclared<bool (Morph::*)() const>(&Morph::isMirror) &&
         IsDeclared<void (Morph::*)()>(&Morph::fixMorphFlags) && IsDeclared<void (Morph::*)()>(&Morph::SetToIdentity) &&
         IsDeclared<Morph (Morph::*)(VRELMorph const&) const>(&Morph::multiply) &&
         IsDeclared<Morph (Morph::*)() const>(&Morph::inverse) &&
         IsDeclared<Affine const& (Morph::*)() const>(&Morph::affine) &&
         IsDeclared<Point const& (Morph::*)() const>(&Morph::translation);
}
static_assert(DeclaresMorph<VRELMorph2D, VRELAffine2D, VRELPoint2D>());
static_assert(DeclaresMorph<VRELMorph3D, VRELAffine3D, VRELPoint3D>());
static_assert(IsDeclared<void (VRELMorph3D::*)()>(&VRELMorph3D::FixScaleFactor));
static_assert(std::is_constructible_v<VRELMorph3D, VRELAssemblyComponentTransform const&>);

using Domain = Gk_Domain;
static_assert(std::is_same_v<std::underlying_type_t<Domain::EndCondn>, int>);
static_assert(std::is_constructible_v<Domain, Domain::EndCondn, double, double, double>);
static_assert(std::is_constructible_v<Domain, double, double, double>);
static_assert(!std::is_constructible_v<Domain, Domain::EndCondn, double, double>);
static_assert(IsDeclared<double (Domain::*)() const>(&Domain::low));
static_assert(IsDeclared<double (Domain::*)() const>(&Domain::high));
static_assert(IsDeclared<double (Domain::*)() const>(&Domain::length));
static_assert(IsDeclared<bool (Domain::*)() const>(&Domain::isFinite));
static_assert(IsDeclared<bool (Domain::*)() const>(&Domain::isDegenerate));
static_assert(IsDeclared<Domain (Domain::*)() const>(&Domain::operator-));
static_assert(IsDeclared<bool (Domain::*)(double)>(&Domain::expand));
static_assert(IsDeclared<double (Domain::*)(double) const>(&Domain::locate));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isLow));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isHigh));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isBoundary));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isAbove));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isBelow));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isContained));
static_assert(IsDeclared<bool (Domain::*)(Domain const&) const>(&Domain::isContained));
static_assert(IsDeclared<bool (Domain::*)(double) const>(&Domain::isInside));
static_assert(IsDeclared<bool (Domain::*)(Domain const&) const>(&Domain::isInside));
static_assert(IsDeclared<bool (Domain::*)(Domain const&, double) const>(&Domain::isSame));
static_assert(IsDeclared<double (Domain::*)(double) const>(&Domain::stick));
static_assert(IsDeclared<double (Domain::*)(double) const>(&Domain::principalParam));
static_assert(IsDeclared<Domain (Domain::*)(Domain const&) const>(&Domain::intersection));
static_assert(IsDeclared<bool (Domain::*)(double)>(&Domain::extend));
static_assert(IsDeclared<bool (Domain::*)(Domain const&)>(&Domain::extend));
static_assert(IsDeclared<void (Domain::*)(Gk_LinMap const&)>(&Domain::apply));
static_assert(IsDeclared<Gk_LinMap (Domain::*)(Domain const&) const>(&Domain::mapTo));
static_assert(IsDeclared<void (Domain::*)(VRELStreamFormatter&) const>(&Domain::dump));

// Declarations and slots of VRELBox2D and VRELBox3D. The first three slots are those of VRELBox; two destructors
// follow.
template <class Box, class Point, class Morph>
void ExpectBoxSlots() {
  EXPECT_EQ(SlotOf(static_cast<void (Box::*)()>(&Box::Reset)), 0U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(double)>(&Box::expand)), 1U);
  EXPECT_EQ(SlotOf(static_cast<int (Box::*)() const>(&Box::GetDimension)), 2U);
  EXPECT_EQ(SlotOf(static_cast<VRINResult (Box::*)(Point const&, Point const&)>(&Box::Set)), 5U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Point const&)>(&Box::ExtendTo)), 6U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Box const&)>(&Box::ExtendTo)), 7U);
  EXPECT_EQ(SlotOf(static_cast<Point (Box::*)() const>(&Box::low)), 8U);
  EXPECT_EQ(SlotOf(static_cast<Point (Box::*)() const>(&Box::high)), 9U);
  EXPECT_EQ(SlotOf(static_cast<double (Box::*)() const>(&Box::diagonal)), 10U);
  EXPECT_EQ(SlotOf(static_cast<void (Box::*)(Morph const&)>(&Box::apply)), 11U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Box const&) const>(&Box::isContained)), 12U);
  EXPECT_EQ(SlotOf(static_cast<bool (Box::*)(Box const&) const>(&Box::isEqual)), 13U);
}

TEST(GeometryInterfaceTest, BoxSlots) {
  EXPECT_EQ(SlotOf(&VRELBox::Reset), 0U);
  EXPECT_EQ(SlotOf(&VRELBox::expand), 1U);
  EXPECT_EQ(SlotOf(&VRELBox::GetDimension), 2U);
  ExpectBoxSlots<VRELBox2D, VRELPoint2D, VRELMorph2D>();
  ExpectBoxSlots<VRELBox3D, VRELPoint3D, VRELMorph3D>();
}

TEST(GeometryInterfaceTest, PointFields) {
  VRELPoint3DHandle const handle(new VRELPoint3D(1.0, 2.0, 3.0));
  VRELPoint3D const& point = *handle;
  EXPECT_EQ(FieldAt<std::uint32_t>(point, 8), 1U);
  EXPECT_EQ(FieldAt<double>(point, 16), 1.0);
  EXPECT_EQ(FieldAt<double>(point, 24), 2.0);
  EXPECT_EQ(FieldAt<double>(point, 32), 3.0);
  EXPECT_EQ(FieldAt<std::int32_t>(point, 40), 3);
  EXPECT_EQ(sizeof(VRELPoint2D), 48U);
  EXPECT_EQ(sizeof(VRELPoint3D), 48U);
  EXPECT_EQ(FieldAt<double>(VRELWeightPoint2D(7.0), 48), 7.0);
  EXPECT_EQ(FieldAt<double>(VRELWeightPoint3D(7.0), 48), 7.0);
  EXPECT_EQ(sizeof(VRELWeightPoint3D), 56U);
}

TEST(GeometryInterfaceTest, SinglePrecisionFields) {
  EXPECT_EQ(FieldAt<float>(VRELPointf(1, 2, 3), 4), 2.0F);
  EXPECT_EQ(FieldAt<float>(VRELVectorf(1, 2, 3), 8), 3.0F);
  EXPECT_EQ(FieldAt<float>(VRELDirectionf(0, 0, 2), 8), 1.0F);
}

TEST(GeometryInterfaceTest, MatrixFields) {
  VREL4x4Matrix const scaled(VRELVectorf(5, 6, 7), 2.0F);
  EXPECT_EQ(FieldAt<float>(scaled, 8), 2.0F);
  EXPECT_EQ(FieldAt<float>(scaled, 8 + 12 * 4), 5.0F);
  EXPECT_EQ(FieldAt<float>(scaled, 72), 8.0F);
  EXPECT_EQ(FieldAt<float>(scaled, 76), 2.0F);
  VRELMath3x3Matrixf const diagonal(3.0F, 4.0F, 5.0F);
  EXPECT_EQ(FieldAt<float>(diagonal, 16), 4.0F);
  EXPECT_EQ(FieldAt<std::int32_t>(VRELMath3x3Matrixf(-1.0F), 36), -1);
}

TEST(GeometryInterfaceTest, GridFields) {
  VRELMatrixOfdouble const grid(2, 3, 1.5);
  EXPECT_EQ(FieldAt<VRELArrayHeader*>(grid, 0)->count, 6);
  EXPECT_EQ(FieldAt<std::int32_t>(grid, 8), 2);
  EXPECT_EQ(FieldAt<std::int32_t>(grid, 12), 3);
  EXPECT_EQ(sizeof(VRELMatrixOfVRELPoint3D), 16U);
  EXPECT_EQ(sizeof(VRELMatrixOfVRELWeightPoint3D), 16U);
}

TEST(GeometryInterfaceTest, MorphFields) {
  VRELAffine3D affine;
  affine.SetElement(1, 2, 9.0);
  EXPECT_EQ(FieldAt<std::int32_t>(affine, 8), 3);
  EXPECT_EQ(FieldAt<double>(affine, 16 + 5 * 8), 9.0);
  VRELMorph3D const morph(affine, VRELPoint3D(4.0, 0.0, 0.0), 2.0);
  EXPECT_EQ(FieldAt<double>(morph, 8), 2.0);
  EXPECT_EQ(FieldAt<bool>(morph, 16), false);
  EXPECT_EQ(FieldAt<bool>(morph, 17), false);
  EXPECT_EQ(FieldAt<bool>(morph, 18), false);
  EXPECT_EQ(reinterpret_cast<char const*>(&morph.affine()) - reinterpret_cast<char const*>(&morph), 24);
  EXPECT_EQ(reinterpret_cast<char const*>(&morph.translation()) - reinterpret_cast<char const*>(&morph), 112);
  EXPECT_EQ(sizeof(VRELMorph3D), 160U);
  EXPECT_EQ(sizeof(VRELMorph2D), 160U);
}

TEST(GeometryInterfaceTest, DomainAndBoxFields) {
  Gk_Domain const domain(Gk_Domain::LowBounded, 1.0, 2.0, 0.5);
  EXPECT_EQ(FieldAt<double>(domain, 0), 1.0);
  EXPECT_EQ(FieldAt<double>(domain, 8), 2.0);
  EXPECT_EQ(FieldAt<double>(domain, 16), 0.5);
  EXPECT_EQ(FieldAt<std::int32_t>(domain, 24), 1);
  VRELBox3D const box(VRELPoint3D(1, 2, 3), VRELPoint3D(4, 5, 6));
  EXPECT_EQ(FieldAt<double>(box, 8), 1.0);
  EXPECT_EQ(FieldAt<double>(box, 16), 4.0);
  EXPECT_EQ(FieldAt<double>(box, 8 + 2 * 32), 3.0);
  EXPECT_EQ(sizeof(VRELBox2D), 72U);
  EXPECT_EQ(sizeof(VRELBox3D), 104U);
}

}  // namespace

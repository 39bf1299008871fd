// Points, placements and curves of a STEP file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Curve.h"
#include "ModelBox.h"
#include "Placement.h"
#include "StepModelContext.h"

// Reads geometry in the units of its context: lengths in the length unit, angles as they are. An item that is damaged
// or of an unknown type is skipped with a warning.
class StepGeometry {
 public:
  explicit StepGeometry(StepModelContext& modelContext) : context(modelContext) {}

  // Reads a CARTESIAN_POINT; missing coordinates are 0. Returns false if it is none, or a coordinate is not finite.
  bool ReadPoint(std::uint32_t point, double* coordinates);
  // Reads a DIRECTION and normalizes it. Returns false if it is none or has no length.
  bool ReadDirection(std::uint32_t direction, double* components);
  // Reads an AXIS2_PLACEMENT_3D, an AXIS2_PLACEMENT_2D in the plane z = 0, or a CARTESIAN_TRANSFORMATION_OPERATOR as
  // the mapping from its local coordinates.
  bool ReadPlacement(std::uint32_t placement, Placement& result);

  // Curve and the range of its parameter, in the direction of travel.
  struct Piece {
    std::unique_ptr<Curve> curve;
    double first = 0.0;
    double last = 0.0;
    ModelBox hull;  // contains the curve if it is a B-spline: the box of its control points; otherwise empty
  };

  // Returns the pieces of a curve between two points, or of the whole curve if they are null; none if it is damaged.
  // `forward` is false if the edge runs against the curve. `radians` converts the parameters of trimmed conics. Pieces
  // whose hull is in the box `covered` are left out; it may be null.
  std::vector<Piece> Pieces(std::uint32_t curve, double const* from, double const* to, bool forward, double radians,
                            double chordError, ModelBox const* covered = nullptr);

 private:
  // What a placement refers to.
  struct Axes {
    std::uint32_t location = 0;
    std::uint32_t z = 0;
    std::uint32_t x = 0;
  };
  bool FindAxes(std::uint32_t placement, Axes& axes) const;
  bool ReadFrame(std::uint32_t position, Curve::Frame& frame);
  std::unique_ptr<Curve> ReadBasis(std::uint32_t curve, int depth);
  std::unique_ptr<Curve> ReadBSpline(std::uint32_t curve);
  struct Spline {
    double degree = 0.0;
    std::vector<std::uint32_t> poles;
    std::vector<double> values;  // of the knots, each once
    std::vector<double> multiplicities;
    std::vector<double> points;  // of the poles
    std::vector<double> knots;   // each as often as its multiplicity
  };
  bool ReadSimpleSpline(std::uint32_t curve, Spline& spline);
  // Sets the knots of a curve whose poles are known.
  bool ReadKnots(std::uint32_t curve, bool isRead, int degree, Spline& spline);
  // Reads a CIRCLE or an ELLIPSE.
  std::unique_ptr<Curve> ReadEllipse(std::uint32_t curve);
  // Appends the pieces of a curve.
  bool ReadPieces(std::uint32_t curve, double const* from, double const* to, bool forward, double radians, int depth,
                  std::vector<Piece>& pieces);
  // One end of a trimmed curve.
  struct Trim {
    bool hasPoint = false;
    double point[3] = {0.0, 0.0, 0.0};
    std::optional<double> parameter;
  };
  Trim ReadTrim(std::uint32_t curve, StepAttribute const& attribute);
  // Sets the range of a trimmed piece. Returns false, after a warning, if it has none.
  bool ReadTrims(std::uint32_t curve, double radians, Piece& piece);
  // Counts steps. Returns false, at first with a warning, if the document takes too many.
  bool Spend(std::size_t steps);

  StepModelContext& context;
  long effort = 0;
  double tolerance = 0.0;
  ModelBox const* leftOut = nullptr;
  bool mayLeaveOut = false;  // the basis curve that is read next can be left out
  bool isLeftOut = false;    // it was: its hull is in the box
  ModelBox hull;             // of the B-spline that was read last
  Spline lastSpline;         // a member so that its memory is reused
};

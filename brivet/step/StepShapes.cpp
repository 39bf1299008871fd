#include "StepShapes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

// The items of a shape form a graph: solids have shells, shells faces, faces bounds, bounds loops, loops edges. It is
// traversed with an explicit stack, since damaged files nest without bounds, and each item is counted once. A mapped
// item enters its representation again with another placement, in which items extend the box but are not counted again;
// the number of visits is bounded, since mapped items that contain each other twice would double at each level.
//
// The extent is exact: each placed point, and for each arc the extremes of its coordinates, which are
// center + cos(t) x + sin(t) y and so have them at tan(t) = y / x. Other curves are sampled. A shape that is not placed
// needs only the box itself: then a curve is skipped if a bound of it is inside of the box of the items before, for a
// B-spline the box of its control points, which contain it in their convex hull because all weights are positive. The
// bounds of a shape that is placed are placed with it.

namespace {

constexpr int kDepthLimit = 64;
constexpr long kVisitLimit = 2000000;  // plus kVisitsPerInstance for each instance of the document
constexpr long kVisitsPerInstance = 8;
// Items that have no edges of their own: surfaces and placements.
constexpr std::string_view kUnevaluated[] = {"AXIS1_PLACEMENT",
                                             "BEZIER_SURFACE",
                                             "BLOCK",
                                             "BOOLEAN_RESULT",
                                             "BOUNDED_SURFACE",
                                             "B_SPLINE_SURFACE",
                                             "B_SPLINE_SURFACE_WITH_KNOTS",
                                             "CONICAL_SURFACE",
                                             "CYLINDRICAL_SURFACE",
                                             "DEGENERATE_TOROIDAL_SURFACE",
                                             "FEA_AXIS2_PLACEMENT_3D",
                                             "NODE_SET",
                                             "OFFSET_SURFACE",
                                             "QUASI_UNIFORM_SURFACE",
                                             "RATIONAL_B_SPLINE_SURFACE",
                                             "RECTANGULAR_COMPOSITE_SURFACE",
                                             "RECTANGULAR_TRIMMED_SURFACE",
                                             "RIGHT_CIRCULAR_CONE",
                                             "RIGHT_CIRCULAR_CYLINDER",
                                             "SPHERE",
                                             "SPHERICAL_SURFACE",
                                             "SURFACE_OF_LINEAR_EXTRUSION",
                                             "SURFACE_OF_REVOLUTION",
                                             "TOROIDAL_SURFACE",
                                             "TORUS",
                                             "UNIFORM_SURFACE"};

bool IsUnevaluated(std::string_view type) {
  return std::find(std::begin(kUnevaluated), std::end(kUnevaluated), type) != std::end(kUnevaluated);
}

// Of an extent that cannot be placed: how many curves wait until the box is larger, in which most of them are.
constexpr std::size_t kWaitingArcs = 4096;
constexpr std::size_t kWaitingPieces = 64;
constexpr std::size_t kStepsPerSpline = 16;
constexpr double kRounding = 16.0 * std::numeric_limits<double>::epsilon();

// Returns a box that contains each placed point of a box, as Placement::Apply computes it: rounding does not change the
// order of products and sums, which are formed in the same way.
ModelBox ImageOf(ModelBox const& box, Placement const& placement) noexcept {
  ModelBox image = box;
  auto const& n = placement.Numbers();
  for (std::size_t row = 0; row < 3; ++row) {
    double low[3];
    double high[3];
    for (std::size_t i = 0; i < 3; ++i) {
      double const factor = n[4 * row + i];
      low[i] = factor * (factor < 0.0 ? box.high[i] : box.low[i]);
      high[i] = factor * (factor < 0.0 ? box.low[i] : box.high[i]);
    }
    image.low[row] = low[0] + low[1] + low[2] + n[4 * row + 3];
    image.high[row] = high[0] + high[1] + high[2] + n[4 * row + 3];
  }
  return image;
}

constexpr int kSizeSamples = 6;  // estimate the size of a curve
// First coordinate of a point that cannot be used.
constexpr double kUnusable = std::numeric_limits<double>::infinity();
constexpr double kPi = 3.14159265358979323846264338327950288;

}  // namespace

void StepExtent::AddPiece(StepGeometry::Piece piece, double chordShare) {
  Curve::Frame scaled{};
  if (piece.curve->AsArc(scaled)) {
    Arc arc{};
    std::copy_n(scaled.origin, 3, arc.center);
    std::copy_n(scaled.x, 3, arc.x);
    std::copy_n(scaled.y, 3, arc.y);
    arc.first = std::min(piece.first, piece.last);
    arc.last = std::max(piece.first, piece.last);
    arcs.push_back(arc);
    if (isBox && arcs.size() >= kWaitingArcs) SettleArcs();
  } else if (piece.curve->IsStraight()) {
    double point[3];
    for (double const t : {piece.first, piece.last}) {
      piece.curve->Evaluate(t, point);
      AddPoint(point);
    }
  } else if (!piece.hull.isEmpty) {
    if (isBox) steps += kStepsPerSpline;
    if (isBox && box.Contains(piece.hull)) return;
    waiting.push_back({std::move(piece), chordShare});
    if (isBox && waiting.size() >= kWaitingPieces) SettlePieces();
  } else {
    AddSamples(piece, chordShare);
    if (isBox) MovePointsToBox();
  }
}

void StepExtent::AddSamples(StepGeometry::Piece const& piece, double chordShare) {
  ModelBox size;
  for (int i = 0; i <= kSizeSamples; ++i) {
    double point[3];
    piece.curve->Evaluate(piece.first + (piece.last - piece.first) * i / kSizeSamples, point);
    size.Extend(point);
  }
  std::size_t const old = points.size();
  piece.curve->Sample(piece.first, piece.last, chordShare * size.Diagonal(), points);
  if (piece.hull.isEmpty) return;
  // Only rounding takes a point out of the hull. Without it a curve has the same extent, evaluated or not.
  for (std::size_t i = old; i < points.size(); ++i) {
    std::size_t const axis = (i - old) % 3;
    if (std::isfinite(points[i])) points[i] = std::clamp(points[i], piece.hull.low[axis], piece.hull.high[axis]);
  }
}

void StepExtent::AddPlacedPiece(StepGeometry::Piece const& piece, Placement const& placement, double chordShare) {
  Curve::Frame scaled{};
  std::size_t const firstPoint = points.size();
  std::size_t const firstArc = arcs.size();
  if (piece.curve->AsArc(scaled)) {
    arcs.emplace_back();
    Arc& arc = arcs.back();
    std::copy_n(scaled.origin, 3, arc.center);
    std::copy_n(scaled.x, 3, arc.x);
    std::copy_n(scaled.y, 3, arc.y);
    arc.first = std::min(piece.first, piece.last);
    arc.last = std::max(piece.first, piece.last);
  } else if (piece.curve->IsStraight()) {
    points.resize(firstPoint + 6);
    piece.curve->Evaluate(piece.first, &points[firstPoint]);
    piece.curve->Evaluate(piece.last, &points[firstPoint + 3]);
  } else {
    AddSamples(piece, chordShare);
  }
  for (std::size_t i = firstPoint; i + 3 <= points.size(); i += 3) placement.Apply(&points[i]);
  for (std::size_t i = firstArc; i < arcs.size(); ++i) Place(placement, arcs[i]);
  if (!isBox) return;
  MovePointsToBox();
  if (arcs.size() >= kWaitingArcs) SettleArcs();
}

void StepExtent::MovePointsToBox() {
  for (std::size_t i = 0; i + 3 <= points.size(); i += 3) ExtendBox(&points[i]);
  points.clear();
}

void StepExtent::SettleArcs() {
  for (Arc& arc : arcs) {
    steps += 4;
    if (IsWithin(arc, box)) continue;
    Place(Placement(), arc);
    Extend(arc, box);
  }
  arcs.clear();
}

void StepExtent::SettlePieces() {
  for (Waiting const& each : waiting) {
    if (box.Contains(each.piece.hull)) continue;
    AddSamples(each.piece, each.chordShare);
    MovePointsToBox();
  }
  waiting.clear();
}

void StepExtent::Finish() {
  if (isBox) {
    SettleArcs();
    SettlePieces();
  } else {
    ModelBox own;
    ExtendByAll(Placement(), own);
    box = own;
  }
  arcs.shrink_to_fit();
  waiting.shrink_to_fit();
  points.shrink_to_fit();
}

// Returns whether no computed point of the arc can be outside: the whole ellipse is inside, with a margin for rounding.
bool StepExtent::IsWithin(Arc const& arc, ModelBox const& outer) noexcept {
  if (outer.isEmpty) return false;
  for (int i = 0; i < 3; ++i) {
    double reach = std::sqrt(arc.x[i] * arc.x[i] + arc.y[i] * arc.y[i]);
    if (arc.x[i] != 0.0 || arc.y[i] != 0.0) reach += kRounding * (std::abs(arc.center[i]) + reach);
    if (!(arc.center[i] - reach >= outer.low[i] && arc.center[i] + reach <= outer.high[i])) return false;
  }
  return true;
}

void StepExtent::Place(Placement const& placement, Arc& arc) {
  placement.Apply(arc.center);
  auto const& n = placement.Numbers();
  for (double* const axis : {arc.x, arc.y}) {
    double const old[3] = {axis[0], axis[1], axis[2]};
    for (std::size_t row = 0; row < 3; ++row) {
      axis[row] = n[4 * row] * old[0] + n[4 * row + 1] * old[1] + n[4 * row + 2] * old[2];
    }
  }
}

void StepExtent::Extend(Arc const& arc, ModelBox& target) {
  auto const extendAt = [&](double t) {
    double const cosine = std::cos(t);
    double const sine = std::sin(t);
    double const point[3] = {arc.center[0] + cosine * arc.x[0] + sine * arc.y[0],
                             arc.center[1] + cosine * arc.x[1] + sine * arc.y[1],
                             arc.center[2] + cosine * arc.x[2] + sine * arc.y[2]};
    target.Extend(point);
  };
  extendAt(arc.first);
  extendAt(arc.last);
  for (int i = 0; i < 3; ++i) {
    double const extreme = std::atan2(arc.y[i], arc.x[i]);
    double t = extreme + std::ceil((arc.first - extreme) / kPi) * kPi;
    for (int count = 0; count < 3 && t <= arc.last; ++count, t += kPi) extendAt(t);
  }
}

void StepExtent::Extend(Placement const& placement, ModelBox& target) {
  if (isBox || placement.IsIdentity()) {
    target.Extend(box);
  } else if (!target.Contains(ImageOf(box, placement))) {
    ExtendByAll(placement, target);
  }
}

void StepExtent::ExtendByAll(Placement const& placement, ModelBox& target) {
  auto const extendByPoints = [&](std::size_t first) {
    for (std::size_t i = first; i + 3 <= points.size(); i += 3) {
      double point[3] = {points[i], points[i + 1], points[i + 2]};
      placement.Apply(point);
      target.Extend(point);
    }
  };
  extendByPoints(0);
  for (Arc const& each : arcs) {
    Arc arc = each;
    Place(placement, arc);
    if (!IsWithin(arc, target)) Extend(arc, target);
  }
  // A curve is sampled for the first placement in which it can extend the box.
  auto const sample = [&](Waiting const& each) {
    if (target.Contains(ImageOf(each.piece.hull, placement))) return false;
    std::size_t const first = points.size();
    AddSamples(each.piece, each.chordShare);
    extendByPoints(first);
    return true;
  };
  waiting.erase(std::remove_if(waiting.begin(), waiting.end(), sample), waiting.end());
}

void StepShapes::Read(ModelProduct& product, std::vector<std::uint32_t> const& representations, bool isPlaced) {
  extent = isPlaced ? StepExtent() : StepExtent::OfBox();
  chordError = 0.0;
  sink = nullptr;
  ReadItems(product, representations);
  extent.Finish();
  extent.Extend(Placement(), product.extent);
  if (!settings.withGeometry) return;
  // The chord error depends on the extent, so that polylines take a second traversal.
  ModelProduct counted;
  counted.extent = product.extent;
  chordError = settings.chordShare * product.extent.Diagonal();
  sink = &product.polylines;
  ReadItems(counted, representations);
  product.meshes = std::move(counted.meshes);
  product.visibleFaces = std::move(counted.visibleFaces);
}

long StepShapes::VisitLimit() const {
  return kVisitLimit + kVisitsPerInstance * static_cast<long>(context.store.InstanceCount());
}

void StepShapes::Begin(Placement const& placement) {
  lastColour = -1;
  pending.clear();
  placements.clear();
  placements.push_back({placement, placement.IsIdentity(), 0});
}

StepShapes::Entry StepShapes::Pop() {
  while (placements.size() > 1 && pending.size() <= placements.back().pending) placements.pop_back();
  Entry const entry = pending.back();
  pending.pop_back();
  return entry;
}

// The entry is the one that was popped last.
void StepShapes::SetPlacement(Entry& entry, Placement const& placement) {
  entry.placement = static_cast<std::uint32_t>(placements.size());
  placements.push_back({placement, placement.IsIdentity(), pending.size()});
}

void StepShapes::ReadItems(ModelProduct& product, std::vector<std::uint32_t> const& representations) {
  seen.Clear();
  unplaced.Clear();
  colours.Clear();
  Begin(Placement());
  long const limit = VisitLimit();
  for (std::uint32_t const representation : representations) {
    if (visits > limit) return;
    radians = units.Radians(units.ContextOf(representation));
    std::vector<std::uint32_t> const items =
        context.AnyInstances(representation, STEP_ATTRIBUTE(Representation, "items"));
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
      pending.push_back({*item, styles.ColourOf(representation), 0, 0, !styles.IsInvisible(representation)});
    }
    while (!pending.empty()) {
      Entry const entry = Pop();
      if (++visits > limit) {
        context.Warn(representation, "the shape has too many items; the rest is skipped");
        return;
      }
      ReadItem(product, entry);
    }
  }
}

void StepShapes::PushAll(std::vector<std::uint32_t> const& items, Entry const& parent) {
  if (parent.depth > kDepthLimit) return;
  auto const depth = static_cast<std::uint16_t>(parent.depth + 1);
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    pending.push_back({*item, parent.colour, parent.placement, depth, parent.isVisible});
  }
}

void StepShapes::PushOne(StepAttribute const& attribute, StepEntity expected, Entry const& parent) {
  std::uint32_t const one = context.Instance(parent.item, attribute, expected);
  if (one == 0 || parent.depth > kDepthLimit) return;
  auto const depth = static_cast<std::uint16_t>(parent.depth + 1);
  pending.push_back({one, parent.colour, parent.placement, depth, parent.isVisible});
}

void StepShapes::PushList(StepAttribute const& attribute, StepEntity expected, Entry const& parent) {
  found.clear();
  context.AddInstances(parent.item, attribute, expected, found);
  PushAll(found, parent);
}

void StepShapes::UseColour(ModelProduct& product, int colour) {
  // Most items have the colour of the one before.
  if (colour < 0 || colour == lastColour) return;
  lastColour = colour;
  if (colours.Insert(static_cast<std::uint32_t>(colour))) product.colours.push_back(colour);
}

void StepShapes::UseStyle(Entry& entry) const {
  if (int const own = OwnColour(entry.item); own >= 0) entry.colour = own;
  if (styles.IsInvisible(entry.item)) entry.isVisible = false;
}

// Begins to read an item of an entity that has no colour by other ways than a style. Returns false if it is skipped.
bool StepShapes::BeginUsualItem(ModelProduct& product, Entry& entry) {
  if (skipped.Contains(entry.item)) return false;
  if (styles.HasStyle(entry.item)) UseStyle(entry);
  UseColour(product, entry.colour);
  return true;
}

void StepShapes::ReadItem(ModelProduct& product, Entry const& given) {
  Entry entry = given;
  if (ReadUsualItem(product, entry, context.store.SimpleEntityOf(entry.item))) return;
  if (skipped.Contains(entry.item)) return;
  UseStyle(entry);
  UseColour(product, entry.colour);
  ReadOtherItem(product, entry);
}

// Reads the topology of boundary representations, which is most of a document. Returns false for other items.
bool StepShapes::ReadUsualItem(ModelProduct& product, Entry& entry, StepEntity type) {
  switch (type) {
    case StepEntity::AdvancedFace:
    case StepEntity::FaceSurface:
      if (BeginUsualItem(product, entry)) ReadFace(product, entry);
      return true;
    case StepEntity::FaceBound:
    case StepEntity::FaceOuterBound:
      if (BeginUsualItem(product, entry)) PushOne(STEP_ATTRIBUTE(FaceBound, "bound"), StepEntity::Loop, entry);
      return true;
    case StepEntity::EdgeLoop:
      if (BeginUsualItem(product, entry)) ReadLoop(product, entry);
      return true;
    case StepEntity::OrientedEdge:
      if (BeginUsualItem(product, entry))
        PushOne(STEP_ATTRIBUTE(OrientedEdge, "edge_element"), StepEntity::Edge, entry);
      return true;
    case StepEntity::EdgeCurve:
      if (BeginUsualItem(product, entry)) ReadEdge(product, entry);
      return true;
    default:
      return false;
  }
}

// Reads the edges of a loop at once, and pushes only the rest from the first one on that is unusual. The order is that
// of the stack.
void StepShapes::ReadLoop(ModelProduct& product, Entry const& entry) {
  found.clear();
  context.AddInstances(entry.item, STEP_ATTRIBUTE(EdgeLoop, "edge_list"), StepEntity::Edge, found);
  if (entry.depth > kDepthLimit) return;
  auto const depth = static_cast<std::uint16_t>(entry.depth + 1);
  std::size_t count = 0;
  while (count < found.size() &&
         ReadUsualEdge(product, {found[count], entry.colour, entry.placement, depth, entry.isVisible})) {
    ++count;
  }
  found.erase(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(count));
  PushAll(found, entry);
}

// Reads an oriented edge and its edge. Returns false, and does nothing, if they are of other types.
bool StepShapes::ReadUsualEdge(ModelProduct& product, Entry entry) {
  auto const& store = context.store;
  std::uint32_t edge = 0;
  if (store.SimpleEntityOf(entry.item) != StepEntity::OrientedEdge || entry.depth > kDepthLimit ||
      !store.ReadReference(entry.item, STEP_ATTRIBUTE(OrientedEdge, "edge_element"), edge) ||
      store.SimpleEntityOf(edge) != StepEntity::EdgeCurve) {
    return false;
  }
  visits += 2;
  if (!BeginUsualItem(product, entry)) return true;
  entry.item = edge;
  ++entry.depth;
  if (BeginUsualItem(product, entry)) ReadEdge(product, entry);
  return true;
}

void StepShapes::ReadFace(ModelProduct& product, Entry const& entry) {
  if (IsFirst(entry.item)) {
    ++product.faces;
    if (sink != nullptr && entry.isVisible) product.visibleFaces.push_back({context.IdOf(entry.item), entry.colour});
  }
  PushList(STEP_ATTRIBUTE(Face, "bounds"), StepEntity::FaceBound, entry);
}

void StepShapes::ReadOtherItem(ModelProduct& product, Entry entry) {
  auto const& store = context.store;
  std::uint32_t const item = entry.item;
  auto const pushOne = [&](StepAttribute const& attribute, StepEntity expected) {
    PushOne(attribute, expected, entry);
  };
  auto const pushAll = [&](StepAttribute const& attribute, StepEntity expected) {
    PushList(attribute, expected, entry);
  };

  if (store.Is(item, StepEntity::ManifoldSolidBrep)) {
    if (IsFirst(item)) ++product.solids;
    pushOne(STEP_ATTRIBUTE(ManifoldSolidBrep, "outer"), StepEntity::ConnectedFaceSet);
    if (store.Is(item, StepEntity::BrepWithVoids)) {
      pushAll(STEP_ATTRIBUTE(BrepWithVoids, "voids"), StepEntity::ConnectedFaceSet);
    }
  } else if (store.Is(item, StepEntity::OrientedClosedShell)) {
    pushOne(STEP_ATTRIBUTE(OrientedClosedShell, "closed_shell_element"), StepEntity::ConnectedFaceSet);
  } else if (store.Is(item, StepEntity::OrientedOpenShell)) {
    pushOne(STEP_ATTRIBUTE(OrientedOpenShell, "open_shell_element"), StepEntity::ConnectedFaceSet);
  } else if (store.Is(item, StepEntity::ConnectedFaceSet)) {
    bool const isShell = store.Is(item, StepEntity::ClosedShell) || store.Is(item, StepEntity::OpenShell);
    if (IsFirst(item) && isShell) ++product.shells;
    pushAll(STEP_ATTRIBUTE(ConnectedFaceSet, "cfs_faces"), StepEntity::Face);
  } else if (store.Is(item, StepEntity::OrientedFace)) {
    pushOne(STEP_ATTRIBUTE(OrientedFace, "face_element"), StepEntity::Face);
  } else if (store.Is(item, StepEntity::Face)) {
    ReadFace(product, entry);
  } else if (store.Is(item, StepEntity::FaceBound)) {
    pushOne(STEP_ATTRIBUTE(FaceBound, "bound"), StepEntity::Loop);
  } else if (store.Is(item, StepEntity::EdgeLoop)) {
    ReadLoop(product, entry);
  } else if (store.Is(item, StepEntity::VertexLoop)) {
    pushOne(STEP_ATTRIBUTE(VertexLoop, "loop_vertex"), StepEntity::Vertex);
  } else if (store.Is(item, StepEntity::PolyLoop)) {
    ReadPolyLoop(product, entry);
  } else if (store.Is(item, StepEntity::OrientedEdge)) {
    pushOne(STEP_ATTRIBUTE(OrientedEdge, "edge_element"), StepEntity::Edge);
  } else if (store.Is(item, StepEntity::EdgeCurve)) {
    ReadEdge(product, entry);
  } else if (store.Is(item, StepEntity::Edge)) {
    pushOne(STEP_ATTRIBUTE(Edge, "edge_start"), StepEntity::Vertex);
    pushOne(STEP_ATTRIBUTE(Edge, "edge_end"), StepEntity::Vertex);
  } else if (store.Is(item, StepEntity::VertexPoint)) {
    double point[3];
    std::uint32_t const geometryItem =
        context.Instance(item, STEP_ATTRIBUTE(VertexPoint, "vertex_geometry"), StepEntity::Point);
    if (geometryItem != 0 && geometry.ReadPoint(geometryItem, point)) AddPoint(entry, point);
  } else if (store.Is(item, StepEntity::ShellBasedSurfaceModel)) {
    pushAll(STEP_ATTRIBUTE(ShellBasedSurfaceModel, "sbsm_boundary"), StepEntity::ConnectedFaceSet);
  } else if (store.Is(item, StepEntity::FaceBasedSurfaceModel)) {
    pushAll(STEP_ATTRIBUTE(FaceBasedSurfaceModel, "fbsm_faces"), StepEntity::ConnectedFaceSet);
  } else if (store.Is(item, StepEntity::EdgeBasedWireframeModel)) {
    pushAll(STEP_ATTRIBUTE(EdgeBasedWireframeModel, "ebwm_boundary"), StepEntity::ConnectedEdgeSet);
  } else if (store.Is(item, StepEntity::ConnectedEdgeSet)) {
    pushAll(STEP_ATTRIBUTE(ConnectedEdgeSet, "ces_edges"), StepEntity::Edge);
  } else if (store.Is(item, StepEntity::ShellBasedWireframeModel)) {
    PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(ShellBasedWireframeModel, "sbwm_boundary")), entry);
  } else if (store.Is(item, StepEntity::WireShell)) {
    pushAll(STEP_ATTRIBUTE(WireShell, "wire_shell_extent"), StepEntity::Loop);
  } else if (store.Is(item, StepEntity::VertexShell)) {
    pushOne(STEP_ATTRIBUTE(VertexShell, "vertex_shell_extent"), StepEntity::Loop);
  } else if (store.Is(item, StepEntity::GeometricSet)) {
    PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(GeometricSet, "elements")), entry);
  } else if (store.Is(item, StepEntity::Curve)) {
    ReadFreeCurve(product, entry);
  } else if (store.Is(item, StepEntity::CartesianPoint)) {
    double point[3];
    if (entry.depth > 0 && geometry.ReadPoint(item, point)) AddPoint(entry, point);
  } else if (store.Is(item, StepEntity::MappedItem)) {
    PushMapped(entry);
  } else if (store.Is(item, StepEntity::TessellatedItem)) {
    Reposition(entry);
    if (store.Is(item, StepEntity::TessellatedSolid)) {
      if (IsFirst(item)) ++product.solids;
      PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(TessellatedSolid, "items")), entry);
    } else if (store.Is(item, StepEntity::TessellatedShell)) {
      if (IsFirst(item)) ++product.shells;
      PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(TessellatedShell, "items")), entry);
    } else if (store.Is(item, StepEntity::TessellatedWire)) {
      PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(TessellatedWire, "items")), entry);
    } else if (store.Is(item, StepEntity::TessellatedGeometricSet)) {
      PushAll(context.AnyInstances(item, STEP_ATTRIBUTE(TessellatedGeometricSet, "children")), entry);
    } else {
      ReadTessellated(product, entry);
    }
  } else if (store.Is(item, StepEntity::SolidModel)) {
    if (IsFirst(item)) ++product.solids;
  } else if (store.Is(item, StepEntity::CurveBoundedSurface)) {
    pushAll(STEP_ATTRIBUTE(CurveBoundedSurface, "boundaries"), StepEntity::Curve);
  } else if (store.Is(item, StepEntity::Path)) {
    pushAll(STEP_ATTRIBUTE(Path, "edge_list"), StepEntity::Edge);
  } else if (store.EntityOf(item) == StepEntity::None && !IsUnevaluated(store.TypeNameOf(item))) {
    std::string const type(store.TypeNameOf(item));
    context.Warn(item, "an item of the unknown type " + type + " is skipped");
  }
}

// A tessellated item without a colour has that of the face, shell or solid to which it is linked.
int StepShapes::OwnColour(std::uint32_t item) const {
  int const own = styles.ColourOf(item);
  if (own >= 0 || !context.store.Is(item, StepEntity::TessellatedItem)) return own;
  std::uint32_t linked = context.AnyInstance(item, STEP_ATTRIBUTE(TessellatedFace, "geometric_link"));
  if (linked == 0) linked = context.AnyInstance(item, STEP_ATTRIBUTE(TessellatedSolid, "geometric_link"));
  if (linked == 0) linked = context.AnyInstance(item, STEP_ATTRIBUTE(TessellatedShell, "topological_link"));
  return linked == 0 ? -1 : styles.ColourOf(linked);
}

void StepShapes::Reposition(Entry& entry) {
  std::uint32_t location = context.AnyInstance(entry.item, STEP_ATTRIBUTE(RepositionedTessellatedItem, "location"));
  if (location == 0) {
    location = context.AnyInstance(entry.item, STEP_ATTRIBUTE(RepositionedTessellatedGeometricSet, "location"));
  }
  Placement local;
  if (location != 0 && geometry.ReadPlacement(location, local)) SetPlacement(entry, PlacementOf(entry) * local);
}

void StepShapes::PushMapped(Entry const& entry) {
  if (entry.depth > kDepthLimit) {
    context.Warn(entry.item, "mapped items contain each other, or are nested too deeply");
    return;
  }
  std::uint32_t const source =
      context.Instance(entry.item, STEP_ATTRIBUTE(MappedItem, "mapping_source"), StepEntity::RepresentationMap);
  if (source == 0 || context.store.Is(source, StepEntity::CameraUsage)) return;
  std::uint32_t const target = context.AnyInstance(entry.item, STEP_ATTRIBUTE(MappedItem, "mapping_target"));
  std::uint32_t const origin = context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin"));
  std::uint32_t const mapped =
      context.Instance(source, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation"), StepEntity::Representation);
  Placement to;
  Placement from;
  Placement inverse;
  if (mapped == 0 || !geometry.ReadPlacement(target, to) || !geometry.ReadPlacement(origin, from) ||
      !from.Invert(inverse)) {
    return;
  }
  Entry inner = entry;
  SetPlacement(inner, PlacementOf(entry) * to * inverse);
  PushAll(context.AnyInstances(mapped, STEP_ATTRIBUTE(Representation, "items")), inner);
}

void StepShapes::AddPoint(Entry const& entry, double const* point) {
  if (sink != nullptr) return;
  // A negative zero becomes positive, as by a placement.
  double placed[3] = {point[0] + 0.0, point[1] + 0.0, point[2] + 0.0};
  if (IsPlaced(entry)) PlacementOf(entry).Apply(placed);
  extent.AddPoint(placed);
}

// Three edges meet at most vertices.
void StepShapes::AddVertex(Entry const& entry, std::uint32_t vertex, double const* point) {
  if (sink == nullptr && (IsPlaced(entry) || unplaced.Insert(vertex))) AddPoint(entry, point);
}

void StepShapes::AddPolyline(ModelProduct& /*product*/, Entry const& entry, std::vector<double> points) {
  if (sink == nullptr || !entry.isVisible || points.size() < 6) return;
  ModelPolyline polyline;
  polyline.instance = context.IdOf(entry.item);
  polyline.coordinates = std::move(points);
  polyline.colour = entry.colour;
  sink->push_back(std::move(polyline));
}

void StepShapes::AddPieces(ModelProduct& product, Entry const& entry, std::vector<StepGeometry::Piece> pieces) {
  bool const isPlaced = IsPlaced(entry);
  std::vector<double> points;
  for (StepGeometry::Piece& piece : pieces) {
    if (sink != nullptr) {
      piece.curve->Sample(piece.first, piece.last, chordError, points);
      continue;
    }
    // A placed arc stays exact only as an arc, so that the extent of the piece itself is placed.
    if (!isPlaced) {
      extent.AddPiece(std::move(piece), settings.chordShare);
    } else {
      extent.AddPlacedPiece(piece, PlacementOf(entry), settings.chordShare);
    }
  }
  if (sink == nullptr) return;
  if (isPlaced) {
    for (std::size_t i = 0; i + 3 <= points.size(); i += 3) PlacementOf(entry).Apply(&points[i]);
  }
  AddPolyline(product, entry, std::move(points));
}

// Finds what an edge refers to in one pass over its bytes. Returns false if that is not all there, or of other types.
bool StepShapes::FindEdge(std::uint32_t item, Edge& edge) const {
  auto const& store = context.store;
  if (store.SimpleEntityOf(item) != StepEntity::EdgeCurve) return false;
  std::int64_t start = 0;
  std::int64_t end = 0;
  std::int64_t curve = 0;
  std::string_view sense;
  StepRecordText record = store.RecordOf(item);
  bool const isRead = record.Skip() && record.Reference(start) && record.Reference(end) && record.Reference(curve) &&
                      record.Enumeration(sense);
  if (!isRead) return false;
  edge = {store.Find(start), store.Find(end), store.Find(curve), sense == "T"};
  return store.Is(edge.start, StepEntity::VertexPoint) && store.Is(edge.end, StepEntity::VertexPoint) &&
         store.Is(edge.curve, StepEntity::Curve);
}

bool StepShapes::ReadVertex(std::uint32_t vertex, Point& point) {
  Vertex& known = vertices[vertex % kVertices];
  if (known.item != vertex) {
    std::uint32_t const location =
        context.Instance(vertex, STEP_ATTRIBUTE(VertexPoint, "vertex_geometry"), StepEntity::Point);
    known.item = 0;
    if (location == 0 || !geometry.ReadPoint(location, known.point.data())) return false;
    known.item = vertex;
  }
  point = known.point;
  return true;
}

void StepShapes::ReadEdge(ModelProduct& product, Entry const& entry) {
  // A second use with the same placement adds nothing.
  if (!IsPlaced(entry) && !unplaced.Insert(entry.item)) return;
  if (IsFirst(entry.item)) ++product.edges;
  Edge edge;
  bool const isFound = FindEdge(entry.item, edge);
  auto const readEnd = [&](StepAttribute const& attribute, std::uint32_t& vertex, Point& point) {
    if (!isFound) vertex = context.Instance(entry.item, attribute, StepEntity::VertexPoint);
    return vertex != 0 && ReadVertex(vertex, point);
  };
  Point from;
  Point to;
  bool const hasEnds = readEnd(STEP_ATTRIBUTE(Edge, "edge_start"), edge.start, from) &&
                       readEnd(STEP_ATTRIBUTE(Edge, "edge_end"), edge.end, to);
  if (hasEnds) {
    AddVertex(entry, edge.start, from.data());
    AddVertex(entry, edge.end, to.data());
  }
  if (!isFound) {
    edge.curve = context.Instance(entry.item, STEP_ATTRIBUTE(EdgeCurve, "edge_geometry"), StepEntity::Curve);
  }
  if (edge.curve == 0) return;
  if (hasEnds && context.store.Is(edge.curve, StepEntity::Line)) {
    if (sink == nullptr) return;
    PlacementOf(entry).Apply(from.data());
    PlacementOf(entry).Apply(to.data());
    AddPolyline(product, entry, {from[0], from[1], from[2], to[0], to[1], to[2]});
    return;
  }
  if (!isFound) edge.isForward = context.Flag(entry.item, STEP_ATTRIBUTE(EdgeCurve, "same_sense"));
  AddPieces(product, entry,
            geometry.Pieces(edge.curve, hasEnds ? from.data() : nullptr, hasEnds ? to.data() : nullptr, edge.isForward,
                            radians, chordError, Covered(entry)));
}

void StepShapes::ReadFreeCurve(ModelProduct& product, Entry const& entry) {
  // Lines and open conics have no range of their own.
  AddPieces(product, entry, geometry.Pieces(entry.item, nullptr, nullptr, true, radians, chordError, Covered(entry)));
}

void StepShapes::ReadPolyLoop(ModelProduct& product, Entry const& entry) {
  std::vector<double> corners;
  for (std::uint32_t const corner :
       context.Instances(entry.item, STEP_ATTRIBUTE(PolyLoop, "polygon"), StepEntity::CartesianPoint)) {
    double point[3];
    if (!geometry.ReadPoint(corner, point)) continue;
    AddPoint(entry, point);
    if (sink == nullptr) continue;
    PlacementOf(entry).Apply(point);
    corners.insert(corners.end(), point, point + 3);
  }
  if (corners.size() >= 6) corners.insert(corners.end(), corners.begin(), corners.begin() + 3);
  AddPolyline(product, entry, std::move(corners));
}

std::vector<double> StepShapes::Coordinates(std::uint32_t list) {
  std::vector<double> coordinates;
  StepValue const rows = context.store.Get(list, STEP_ATTRIBUTE(CoordinatesList, "position_coords"));
  if (rows.kind != StepValue::List) return coordinates;
  for (StepValues row(rows); row.Next();) {
    double point[3] = {0.0, 0.0, 0.0};
    bool isUsable = row.Current().kind == StepValue::List;
    if (isUsable) {
      int count = 0;
      for (StepValues values(row.Current()); count < 3 && values.Next(); ++count) {
        point[count] = NumberOf(values.Current()).value_or(kUnusable);
        if (!(std::abs(point[count]) <= kLargestCoordinate)) isUsable = false;
      }
    }
    if (!isUsable) point[0] = kUnusable;
    coordinates.insert(coordinates.end(), point, point + 3);
  }
  return coordinates;
}

namespace {

// Numbers of a list, or of a list of lists, as indices from 1; 0 for anything else.
std::vector<std::size_t> IndicesOf(StepValue const& list) {
  std::vector<std::size_t> indices;
  if (list.kind != StepValue::List) return indices;
  for (StepValues values(list); values.Next();) {
    double const number = values.Current().number;
    bool const isIndex = values.Current().kind == StepValue::Number && number >= 1.0 && number < 4e9;
    indices.push_back(isIndex ? static_cast<std::size_t>(number) : 0);
  }
  return indices;
}

// Vectors of a list of lists; what is no number is 0.
std::vector<double> Normals(StepValue const& list) {
  std::vector<double> normals;
  if (list.kind != StepValue::List) return normals;
  for (StepValues rows(list); rows.Next();) {
    double normal[3] = {0.0, 0.0, 0.0};
    int size = 0;
    if (rows.Current().kind == StepValue::List) {
      for (StepValues values(rows.Current()); size < 3 && values.Next(); ++size) {
        normal[size] = NumberOf(values.Current()).value_or(0.0);
      }
    }
    normals.insert(normals.end(), normal, normal + 3);
  }
  return normals;
}

// Appends a normal in the coordinates of the product. Placements are similarities, so that normals map like vectors.
void AddNormal(Placement const& placement, double const* normal, std::vector<double>& normals) {
  auto const& n = placement.Numbers();
  double placed[3];
  for (std::size_t row = 0; row < 3; ++row) {
    placed[row] = n[4 * row] * normal[0] + n[4 * row + 1] * normal[1] + n[4 * row + 2] * normal[2];
  }
  double const length = std::hypot(placed[0], placed[1], placed[2]);
  bool const isUsable = std::isfinite(length) && length > 0.0;
  for (double const component : placed) normals.push_back(isUsable ? component / length : 0.0);
}

std::size_t LargestIndex(StepValue const& lists) {
  std::size_t largest = 0;
  if (lists.kind != StepValue::List) return largest;
  for (StepValues each(lists); each.Next();) {
    for (std::size_t const index : IndicesOf(each.Current())) largest = std::max(largest, index);
  }
  return largest;
}

}  // namespace

void StepShapes::ReadLineStrips(ModelProduct& product, Entry const& entry, std::vector<double> const& coordinates,
                                StepValue const& strips) {
  auto const addStrip = [&](StepValue const& strip) {
    std::vector<double> points;
    for (std::size_t const index : IndicesOf(strip)) {
      if (index == 0 || 3 * index > coordinates.size() || coordinates[3 * index - 3] == kUnusable) continue;
      double point[3] = {coordinates[3 * index - 3], coordinates[3 * index - 2], coordinates[3 * index - 1]};
      AddPoint(entry, point);
      PlacementOf(entry).Apply(point);
      if (sink != nullptr) points.insert(points.end(), point, point + 3);
    }
    AddPolyline(product, entry, std::move(points));
  };
  if (strips.kind != StepValue::List) return;
  StepValues first(strips);
  if (first.Next() && first.Current().kind != StepValue::List) {
    addStrip(strips);
    return;
  }
  for (StepValues each(strips); each.Next();) addStrip(each.Current());
}

// Triangles, strips and fans (ISO 10303-42, triangulated_face and complex_triangulated_face) index the coordinates,
// directly or through pnindex.
void StepShapes::ReadTessellated(ModelProduct& product, Entry const& entry) {
  auto const& store = context.store;
  std::uint32_t const item = entry.item;
  bool const isFace = store.Is(item, StepEntity::TessellatedFace);
  if (isFace && IsFirst(item)) ++product.faces;
  auto const coordinatesOf = [&](StepAttribute const& attribute) {
    std::uint32_t const list = context.Instance(item, attribute, StepEntity::CoordinatesList);
    return list == 0 ? std::vector<double>() : Coordinates(list);
  };
  if (store.Is(item, StepEntity::TessellatedCurveSet)) {
    ReadLineStrips(product, entry, coordinatesOf(STEP_ATTRIBUTE(TessellatedCurveSet, "coordinates")),
                   store.Get(item, STEP_ATTRIBUTE(TessellatedCurveSet, "line_strips")));
    return;
  }
  if (store.Is(item, StepEntity::TessellatedEdge)) {
    ReadLineStrips(product, entry, coordinatesOf(STEP_ATTRIBUTE(TessellatedEdge, "coordinates")),
                   store.Get(item, STEP_ATTRIBUTE(TessellatedEdge, "line_strip")));
    return;
  }
  if (store.Is(item, StepEntity::TessellatedPointSet)) {
    std::vector<double> const points = coordinatesOf(STEP_ATTRIBUTE(TessellatedPointSet, "coordinates"));
    for (std::size_t const index : IndicesOf(store.Get(item, STEP_ATTRIBUTE(TessellatedPointSet, "point_list")))) {
      if (index > 0 && 3 * index <= points.size()) AddPoint(entry, &points[3 * index - 3]);
    }
    return;
  }
  if (!isFace && !store.Is(item, StepEntity::TessellatedSurfaceSet)) return;

  std::vector<double> const coordinates = coordinatesOf(isFace ? STEP_ATTRIBUTE(TessellatedFace, "coordinates")
                                                               : STEP_ATTRIBUTE(TessellatedSurfaceSet, "coordinates"));
  std::size_t const count = coordinates.size() / 3;
  bool const isComplex =
      store.Is(item, StepEntity::ComplexTriangulatedFace) || store.Is(item, StepEntity::ComplexTriangulatedSurfaceSet);
  StepAttribute indexAttribute = STEP_ATTRIBUTE(TriangulatedFace, "pnindex");
  StepAttribute firstAttribute = STEP_ATTRIBUTE(TriangulatedFace, "triangles");
  StepAttribute fanAttribute = STEP_ATTRIBUTE(ComplexTriangulatedFace, "triangle_fans");
  if (isFace && isComplex) {
    indexAttribute = STEP_ATTRIBUTE(ComplexTriangulatedFace, "pnindex");
    firstAttribute = STEP_ATTRIBUTE(ComplexTriangulatedFace, "triangle_strips");
  } else if (!isFace) {
    indexAttribute = isComplex ? STEP_ATTRIBUTE(ComplexTriangulatedSurfaceSet, "pnindex")
                               : STEP_ATTRIBUTE(TriangulatedSurfaceSet, "pnindex");
    firstAttribute = isComplex ? STEP_ATTRIBUTE(ComplexTriangulatedSurfaceSet, "triangle_strips")
                               : STEP_ATTRIBUTE(TriangulatedSurfaceSet, "triangles");
    fanAttribute = STEP_ATTRIBUTE(ComplexTriangulatedSurfaceSet, "triangle_fans");
  }
  std::vector<std::size_t> const pointIndices = IndicesOf(store.Get(item, indexAttribute));
  StepValue const lists = store.Get(item, firstAttribute);
  StepValue const fans = isComplex ? store.Get(item, fanAttribute) : StepValue();
  // Some exporters write indices of the coordinates themselves, which exceed the length of pnindex.
  bool const isDirect = pointIndices.empty() || std::max(LargestIndex(lists), LargestIndex(fans)) > pointIndices.size();
  auto const pointOf = [&](std::size_t index) -> std::size_t {
    if (index == 0) return 0;
    if (!isDirect) index = index <= pointIndices.size() ? pointIndices[index - 1] : 0;
    return index == 0 || index > count || coordinates[3 * index - 3] == kUnusable ? 0 : index;
  };

  std::vector<std::uint32_t> triangles;
  bool isDamaged = false;
  auto const addTriangle = [&](std::size_t a, std::size_t b, std::size_t c) {
    if (pointOf(a) == 0 || pointOf(b) == 0 || pointOf(c) == 0) {
      isDamaged = true;
      return;
    }
    for (std::size_t const corner : {a, b, c}) triangles.push_back(static_cast<std::uint32_t>(corner));
  };
  if (lists.kind == StepValue::List) {
    for (StepValues each(lists); each.Next();) {
      std::vector<std::size_t> const strip = IndicesOf(each.Current());
      if (!isComplex && strip.size() != 3) isDamaged = true;
      for (std::size_t i = 0; i + 2 < strip.size(); ++i) {
        bool const isOdd = i % 2 == 1;
        addTriangle(strip[i], strip[isOdd ? i + 2 : i + 1], strip[isOdd ? i + 1 : i + 2]);
      }
    }
  }
  if (fans.kind == StepValue::List) {
    for (StepValues each(fans); each.Next();) {
      std::vector<std::size_t> const fan = IndicesOf(each.Current());
      for (std::size_t i = 1; i + 1 < fan.size(); ++i) addTriangle(fan[0], fan[i], fan[i + 1]);
    }
  }
  if (isDamaged) context.Warn(item, "triangles with invalid points are skipped");

  // Only the points that are used belong to the shape. A point that pnindex lists twice can have two normals.
  StepValue const normalList = store.Get(
      item, isFace ? STEP_ATTRIBUTE(TessellatedFace, "normals") : STEP_ATTRIBUTE(TessellatedSurfaceSet, "normals"));
  std::vector<double> const normals = sink == nullptr ? std::vector<double>() : Normals(normalList);
  // Without pnindex, normals may end after the last point that is used.
  std::uint32_t const last = triangles.empty() ? 0 : *std::max_element(triangles.begin(), triangles.end());
  bool const hasNormals =
      normals.size() == 3 ||
      (!normals.empty() && (isDirect ? normals.size() >= 3 * std::size_t{last} && normals.size() <= 3 * count
                                     : normals.size() == 3 * pointIndices.size()));
  std::unordered_map<std::uint32_t, std::uint32_t> used;
  ModelMesh mesh;
  for (std::uint32_t& corner : triangles) {
    auto const [place, isNew] = used.try_emplace(corner, static_cast<std::uint32_t>(used.size()));
    if (isNew) {
      double const* const coordinate = &coordinates[3 * (pointOf(corner) - 1)];
      double point[3] = {coordinate[0], coordinate[1], coordinate[2]};
      AddPoint(entry, point);
      PlacementOf(entry).Apply(point);
      if (sink != nullptr) mesh.points.insert(mesh.points.end(), point, point + 3);
      if (hasNormals)
        AddNormal(PlacementOf(entry), &normals[normals.size() == 3 ? 0 : 3 * (std::size_t{corner} - 1)], mesh.normals);
    }
    corner = place->second;
  }
  if (sink == nullptr || !entry.isVisible || triangles.empty()) return;
  if (PlacementOf(entry).Determinant() < 0.0) {
    // A mirror reverses the orientation of triangles.
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3) std::swap(triangles[i + 1], triangles[i + 2]);
  }
  mesh.instance = context.IdOf(item);
  mesh.triangles = std::move(triangles);
  mesh.colour = entry.colour;
  product.meshes.push_back(std::move(mesh));
}

void StepShapes::ReadPlaced(ModelProduct& product, std::vector<PlacedItem> const& items) {
  seen.Clear();
  unplaced.Clear();
  colours.Clear();
  long const limit = VisitLimit();
  for (PlacedItem const& each : items) {
    Begin(each.placement);
    // Points of annotations count, as those in sets do.
    pending.push_back({each.item, each.colour, 0, 1, true});
    while (!pending.empty() && ++visits <= limit) ReadItem(product, Pop());
  }
}

void StepShapes::ReadAnnotation(std::vector<PlacedItem> const& items, double angleFactor, ModelAnnotation& annotation) {
  radians = angleFactor;
  extent = StepExtent::OfBox();
  chordError = 0.0;
  sink = nullptr;
  ModelProduct measured;
  ReadPlaced(measured, items);
  ModelBox box;
  extent.Finish();
  extent.Extend(Placement(), box);
  chordError = settings.chordShare * box.Diagonal();
  sink = &annotation.polylines;
  ModelProduct sampled;
  ReadPlaced(sampled, items);
  annotation.meshes = std::move(sampled.meshes);
  sink = nullptr;
}

// Shapes of products: counts, extents, polylines and meshes.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "StepGeometry.h"
#include "StepMarks.h"
#include "StepModelContext.h"
#include "StepStyles.h"
#include "StepUnits.h"

// What determines the extent of a shape, in its own coordinates, to place it exactly; or the extent alone, of a shape
// that is not placed.
class StepExtent {
 public:
  StepExtent() = default;
  // Returns an empty extent that cannot be placed. It takes constant memory, and curves that lie within the box of
  // other items are not evaluated.
  static StepExtent OfBox() {
    StepExtent extent;
    extent.isBox = true;
    return extent;
  }

  void AddPoint(double const* point) {
    if (isBox) {
      ExtendBox(point);
    } else {
      points.insert(points.end(), point, point + 3);
    }
  }
  // Adds a curve. One that is neither straight nor an arc is sampled with a chord error of this share of its size.
  void AddPiece(StepGeometry::Piece piece, double chordShare);
  void AddPlacedPiece(StepGeometry::Piece const& piece, Placement const& placement, double chordShare);
  // Returns the box in which curves need not be added, or null.
  ModelBox const* Covered() const noexcept { return isBox ? &box : nullptr; }
  // Ends the additions.
  void Finish();
  // Extends a box by the placed shape. Requires: Finish; the identity if it cannot be placed.
  void Extend(Placement const& placement, ModelBox& target);
  // Returns about the number of steps that Extend takes.
  std::size_t Size() const { return steps + points.size() / 3 + 4 * arcs.size() + 4 * waiting.size(); }

 private:
  // center + cos(t) x + sin(t) y
  struct Arc {
    double center[3];
    double x[3];
    double y[3];
    double first;
    double last;
  };
  struct Waiting {
    StepGeometry::Piece piece;
    double chordShare;
  };

  void ExtendBox(double const* point) noexcept {
    // A negative zero becomes positive, as a placed one does.
    double const placed[3] = {point[0] + 0.0, point[1] + 0.0, point[2] + 0.0};
    box.Extend(placed);
    ++steps;
  }
  void AddSamples(StepGeometry::Piece const& piece, double chordShare);
  void SettleArcs();
  void SettlePieces();
  void MovePointsToBox();
  void ExtendByAll(Placement const& placement, ModelBox& target);
  static bool IsWithin(Arc const& arc, ModelBox const& outer) noexcept;
  static void Place(Placement const& placement, Arc& arc);
  static void Extend(Arc const& arc, ModelBox& target);

  std::vector<double> points;
  std::vector<Arc> arcs;
  std::vector<Waiting> waiting;  // curves that are still to be evaluated
  ModelBox box;                  // without a placement
  std::size_t steps = 0;         // taken for an extent that cannot be placed
  bool isBox = false;
};

class StepShapes {
 public:
  struct Settings {
    bool withGeometry = false;  // also make polylines and meshes
    double chordShare = 0.001;  // chord error as a share of the diagonal of the shape
  };

  StepShapes(StepModelContext& modelContext, StepUnits& stepUnits, StepStyles& stepStyles, Settings shapeSettings)
      : context(modelContext), units(stepUnits), styles(stepStyles), geometry(modelContext), settings(shapeSettings) {}

  // Reads the shapes of a product from its representations. The extent can be placed if the product `isPlaced`.
  void Read(ModelProduct& product, std::vector<std::uint32_t> const& representations, bool isPlaced);
  // Excludes an item, for example a mapped item that places a child.
  void Skip(std::uint32_t item) { skipped.Insert(item); }
  // Returns the extent of the product that was read last.
  StepExtent TakeExtent() { return std::exchange(extent, StepExtent()); }

  StepGeometry& Geometry() { return geometry; }
  Settings const& GetSettings() const { return settings; }

  // Item of an annotation with its placement and colour.
  struct PlacedItem {
    std::uint32_t item;
    Placement placement;
    int colour;
  };
  // Sets the polylines and meshes of an annotation. The chord error is a share of the annotation's own diagonal, since
  // letters are small compared with the part. `radians` converts the parameters of trimmed conics.
  void ReadAnnotation(std::vector<PlacedItem> const& items, double radians, ModelAnnotation& annotation);

 private:
  struct Entry {
    std::uint32_t item;
    int colour;
    std::uint32_t placement;  // index into `placements`
    std::uint16_t depth;
    bool isVisible;
  };
  // Placement of a mapped or repositioned item for those below it.
  struct Level {
    Placement placement;
    bool isIdentity;
    std::size_t pending;  // the number of pending entries that are older
  };

  // Returns how many items may be visited, so that damaged files do not take unbounded time.
  long VisitLimit() const;
  void ReadItems(ModelProduct& product, std::vector<std::uint32_t> const& representations);
  // Empties the stack of items, and begins with this placement.
  void Begin(Placement const& placement);
  Entry Pop();
  Placement const& PlacementOf(Entry const& entry) const { return placements[entry.placement].placement; }
  bool IsPlaced(Entry const& entry) const { return !placements[entry.placement].isIdentity; }
  void SetPlacement(Entry& entry, Placement const& placement);
  void ReadItem(ModelProduct& product, Entry const& given);
  bool BeginUsualItem(ModelProduct& product, Entry& entry);
  bool ReadUsualItem(ModelProduct& product, Entry& entry, StepEntity type);
  void ReadFace(ModelProduct& product, Entry const& entry);
  void ReadLoop(ModelProduct& product, Entry const& entry);
  bool ReadUsualEdge(ModelProduct& product, Entry entry);
  void ReadOtherItem(ModelProduct& product, Entry entry);
  void UseStyle(Entry& entry) const;
  void UseColour(ModelProduct& product, int colour);
  void PushAll(std::vector<std::uint32_t> const& items, Entry const& parent);
  void PushOne(StepAttribute const& attribute, StepEntity expected, Entry const& parent);
  void PushList(StepAttribute const& attribute, StepEntity expected, Entry const& parent);
  void ReadPlaced(ModelProduct& product, std::vector<PlacedItem> const& items);
  int OwnColour(std::uint32_t item) const;
  // Applies the location of a repositioned tessellated item.
  void Reposition(Entry& entry);
  void PushMapped(Entry const& entry);
  // What an edge refers to; 0 for what it lacks.
  struct Edge {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    std::uint32_t curve = 0;
    bool isForward = false;
  };
  // Returns the box in which curves of the item need not be evaluated, or null.
  ModelBox const* Covered(Entry const& entry) const {
    return sink == nullptr && !IsPlaced(entry) ? extent.Covered() : nullptr;
  }
  // Reads the point of a vertex. Returns false if it has none.
  using Point = std::array<double, 3>;
  bool ReadVertex(std::uint32_t vertex, Point& point);
  bool FindEdge(std::uint32_t item, Edge& edge) const;
  void ReadEdge(ModelProduct& product, Entry const& entry);
  void ReadFreeCurve(ModelProduct& product, Entry const& entry);
  void ReadPolyLoop(ModelProduct& product, Entry const& entry);
  void ReadTessellated(ModelProduct& product, Entry const& entry);
  void ReadLineStrips(ModelProduct& product, Entry const& entry, std::vector<double> const& coordinates,
                      StepValue const& strips);
  std::vector<double> Coordinates(std::uint32_t list);
  void AddPoint(Entry const& entry, double const* point);
  void AddVertex(Entry const& entry, std::uint32_t vertex, double const* point);
  void AddPieces(ModelProduct& product, Entry const& entry, std::vector<StepGeometry::Piece> pieces);
  void AddPolyline(ModelProduct& product, Entry const& entry, std::vector<double> points);
  // Returns true at the first call for the item in this product.
  bool IsFirst(std::uint32_t item) { return seen.Insert(item); }

  StepModelContext& context;
  StepUnits& units;
  StepStyles& styles;
  StepGeometry geometry;
  Settings settings;
  StepExtent extent;
  StepMarks seen;      // items that were counted
  StepMarks unplaced;  // edges and vertices that were read in the coordinates of the product
  // The points of vertices that were read last, since three edges meet at most of them.
  struct Vertex {
    std::uint32_t item = 0;
    Point point = {0.0, 0.0, 0.0};
  };
  static constexpr std::size_t kVertices = 2048;
  std::vector<Vertex> vertices = std::vector<Vertex>(kVertices);
  std::vector<Entry> pending;
  std::vector<Level> placements;
  std::vector<std::uint32_t> found;  // a member so that its memory is reused
  StepMarks colours;                 // of the present product, by their indices
  int lastColour = -1;               // that was inserted last
  StepMarks skipped;
  std::vector<ModelPolyline>* sink = nullptr;
  double radians = 1.0;
  double chordError = 0.0;
  long visits = 0;
};

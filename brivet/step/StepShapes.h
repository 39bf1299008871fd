// Shapes of products: counts, extents, polylines and meshes.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "StepGeometry.h"
#include "StepModelContext.h"
#include "StepStyles.h"
#include "StepUnits.h"

// What determines the extent of a shape, in its own coordinates, to place it exactly.
class StepExtent {
 public:
  void AddPoint(double const* point) { points.insert(points.end(), point, point + 3); }
  // Adds a curve. One that is neither straight nor an arc is sampled with a chord error of this share of its size.
  void AddPiece(StepGeometry::Piece const& piece, double chordShare);
  void AddPlacedPiece(StepGeometry::Piece const& piece, Placement const& placement, double chordShare);
  // Extends a box by the placed shape.
  void Extend(Placement const& placement, ModelBox& box) const;
  // Returns the number of steps that Extend takes.
  std::size_t Size() const { return points.size() / 3 + 4 * arcs.size(); }

 private:
  // center + cos(t) x + sin(t) y
  struct Arc {
    double center[3];
    double x[3];
    double y[3];
    double first;
    double last;
  };
  std::vector<double> points;
  std::vector<Arc> arcs;
};

class StepShapes {
 public:
  struct Settings {
    bool withGeometry = false;  // also make polylines and meshes
    double chordShare = 0.001;  // chord error as a share of the diagonal of the shape
  };

  StepShapes(StepModelContext& modelContext, StepUnits& stepUnits, StepStyles& stepStyles, Settings shapeSettings)
      : context(modelContext), units(stepUnits), styles(stepStyles), geometry(modelContext), settings(shapeSettings) {}

  // Reads the shapes of a product from its representations.
  void Read(ModelProduct& product, std::vector<std::uint32_t> const& representations);
  // Excludes an item, for example a mapped item that places a child.
  void Skip(std::uint32_t item) { skipped.insert(item); }
  // Returns the extent of the product that was read last.
  StepExtent const& Extent() const { return extent; }

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
    Placement placement;
    int colour;
    int depth;
    bool isVisible;
  };

  // Returns how many items may be visited, so that damaged files do not take unbounded time.
  long VisitLimit() const;
  void ReadItems(ModelProduct& product, std::vector<std::uint32_t> const& representations);
  void ReadItem(ModelProduct& product, Entry const& entry, std::vector<Entry>& pending);
  void PushAll(std::vector<std::uint32_t> const& items, Entry const& parent, std::vector<Entry>& pending) const;
  void ReadPlaced(ModelProduct& product, std::vector<PlacedItem> const& items);
  int OwnColour(std::uint32_t item) const;
  // Applies the location of a repositioned tessellated item.
  void Reposition(Entry& entry);
  void PushMapped(Entry const& entry, std::vector<Entry>& pending);
  void ReadEdge(ModelProduct& product, Entry const& entry);
  void ReadFreeCurve(ModelProduct& product, Entry const& entry);
  void ReadPolyLoop(ModelProduct& product, Entry const& entry);
  void ReadTessellated(ModelProduct& product, Entry const& entry);
  void ReadLineStrips(ModelProduct& product, Entry const& entry, std::vector<double> const& coordinates,
                      StepValue const& strips);
  std::vector<double> Coordinates(std::uint32_t list);
  void AddPoint(Entry const& entry, double const* point);
  void AddPieces(ModelProduct& product, Entry const& entry, std::vector<StepGeometry::Piece> const& pieces);
  void AddPolyline(ModelProduct& product, Entry const& entry, std::vector<double> points);
  // Returns true at the first call for the item in this product.
  bool IsFirst(std::uint32_t item) { return seen.insert(item).second; }

  StepModelContext& context;
  StepUnits& units;
  StepStyles& styles;
  StepGeometry geometry;
  Settings settings;
  StepExtent extent;
  std::unordered_set<std::uint32_t> seen;
  std::unordered_set<std::uint32_t> skipped;
  std::vector<ModelPolyline>* sink = nullptr;
  double radians = 1.0;
  double chordError = 0.0;
  long visits = 0;
};

// Product data of a document: structure, placements, units, shapes, styles, layers, properties, annotations and views.
//
// A reading module fills one ProductModel; writing modules read it through Document::GetModel. It is independent of the
// format of the document. Names of instances are strings such as "#12"; they are unique within the document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ModelBox.h"
#include "Placement.h"

// Units of one or more representation contexts. Lengths of the model are in the unit of their context.
struct ModelUnits {
  std::string lengthName;      // "millimetre", or the name in the file of a conversion-based unit; empty if unset
  double metres = 1.0;         // factor to metres
  std::string angleName;       // "radian", ...
  double radians = 1.0;        // factor to radians
  std::string solidAngleName;  // "steradian", ...
  double steradians = 1.0;     // factor to steradians
  std::optional<double> uncertainty;  // in the length unit
  std::vector<std::string> contexts;  // the contexts with these units
};

// Surface or curve colour with components from 0 to 1; transparency from 0, opaque, to 1.
struct ModelColour {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
  double transparency = 0.0;

  // Returns "#rrggbb".
  std::string Hexadecimal() const;
  bool operator==(ModelColour const& other) const noexcept {
    return red == other.red && green == other.green && blue == other.blue && transparency == other.transparency;
  }
};

struct ModelColourUse {
  ModelColour colour;
  long items = 0;  // styled items with this colour
};

// Edge, curve or boundary as a polyline in the coordinates of its product.
struct ModelPolyline {
  std::string instance;
  std::vector<double> coordinates;  // x, y, z of each point
  int colour = -1;                  // index into ProductModel::colours, or -1
};

// Triangles of one tessellated item in the coordinates of its product, counterclockwise seen from outside.
struct ModelMesh {
  std::string instance;
  std::vector<double> points;            // x, y, z of each
  std::vector<std::uint32_t> triangles;  // three indices into points each, from 0
  std::vector<double> normals;           // x, y, z for each point, of length 1 or 0, or empty
  int colour = -1;
};

// Visible face of an exact shape, for a module that meshes it.
struct ModelFace {
  std::string instance;
  int colour = -1;  // index into ProductModel::colours, or -1
};

// Volume, area, centre of gravity and exact extent that a shape module computed, in the length unit of the product.
struct ModelComputed {
  double volume = 0.0;  // of closed shells; 0 if there are none
  double area = 0.0;
  double centroid[3] = {0.0, 0.0, 0.0};  // of the volume; of the area if there is no volume
  ModelBox extent;
};

// One product definition.
struct ModelProduct {
  std::string instance;    // of the product
  std::string definition;  // of the product definition
  std::optional<std::string> id;
  std::optional<std::string> name;
  std::optional<std::string> description;
  std::optional<std::string> version;
  bool isRootCandidate = true;      // false for documents and raw material
  std::vector<std::string> shapes;  // representations
  long solids = 0;
  long shells = 0;
  long faces = 0;
  long edges = 0;
  int units = -1;                        // index into ProductModel::units, or -1
  ModelBox extent;                       // of its own shapes; empty without geometry
  std::vector<int> colours;              // indices into ProductModel::colours, in the order of their first use
  std::vector<int> occurrences;          // indices into ProductModel::occurrences: the children
  std::vector<ModelPolyline> polylines;  // empty unless they were asked for
  std::vector<ModelMesh> meshes;         // the same
  std::vector<ModelFace> visibleFaces;   // the same
  std::optional<ModelComputed> computed;

  // Returns the name, else the id, else an empty string. A blank name does not count.
  std::string DisplayName() const;
};

// Use of one product in another.
struct ModelOccurrence {
  std::string instance;
  int parent = -1;  // indices into ProductModel::products
  int child = -1;
  std::optional<std::string> id;
  std::optional<std::string> name;
  std::optional<std::string> designator;
  double quantity = 1.0;
  Placement placement;
};

struct ModelLayer {
  std::string instance;
  std::optional<std::string> name;
  std::optional<std::string> description;
  std::vector<std::string> items;  // instances
};

// Value of a property: a number, a string, or the coordinates of a point.
struct ModelPropertyValue {
  std::optional<std::string> name;
  std::optional<double> number;
  std::optional<std::string> text;
  std::vector<double> point;
  std::optional<std::string> unit;
  std::optional<double> siFactor;  // of the unit, or of the coordinates of a point, to the SI unit; unset if unknown
};

struct ModelProperty {
  enum Kind { Validation, Material, Attribute, Other };

  std::string instance;
  std::string product;  // the product definition or occurrence; empty if neither
  std::optional<std::string> name;
  std::optional<std::string> description;
  Kind kind = Other;
  std::vector<ModelPropertyValue> values;

  // Returns the name of the kind, such as "validation".
  char const* KindName() const noexcept;
};

// Annotation, graphic or semantic. Its polylines, meshes and plane are in the coordinates and the unit of a product.
struct ModelAnnotation {
  enum Kind { Dimension, Tolerance, Datum, Note, Placeholder, Other };
  enum Form { Polyline, Tessellated, Semantic };

  std::string instance;
  std::optional<std::string> name;
  Kind kind = Other;
  Form form = Semantic;
  std::optional<std::string> value;
  std::optional<std::string> view;       // names of the views that show it, separated by ", "
  int product = -1;                      // index into ProductModel::products; -1 if there are no products
  std::optional<Placement> plane;        // maps the x-y plane to the plane of the annotation
  std::vector<ModelPolyline> polylines;  // empty unless they were asked for
  std::vector<ModelMesh> meshes;         // the same: filled areas and triangles

  // Returns the name of a kind, such as "dimension".
  static char const* NameOf(Kind kind) noexcept;
  char const* KindName() const noexcept { return NameOf(kind); }
  // Returns the name of the form, such as "polyline".
  char const* FormName() const noexcept;
};

// Position and direction of a view, in the coordinates and the unit of a product.
struct ModelCamera {
  double eye[3] = {0.0, 0.0, 1.0};
  double target[3] = {0.0, 0.0, 0.0};  // the centre of the window
  double up[3] = {0.0, 1.0, 0.0};      // of length 1
  bool isPerspective = false;
  double width = 0.0;  // of the window; 0 if it is unknown
  double height = 0.0;
};

struct ModelView {
  enum Kind { Camera, Saved };

  std::string instance;
  std::optional<std::string> name;
  Kind kind = Camera;
  int product = -1;  // index into ProductModel::products; -1 if there are no products
  std::optional<ModelCamera> camera;
};

// The whole model. Indices refer to its vectors; -1 means none.
//
// The structure is stored once for each product, not for each node, so that a million uses of one child cost a
// million ModelOccurrence records and no copies of its shape. It contains no cycle.
struct ProductModel {
  // Writing modules expand the structure to fewer nodes than this: a short file can describe an exponential number.
  static constexpr long kNodeLimit = 4000000;

  std::vector<ModelUnits> units;
  std::vector<ModelProduct> products;
  std::vector<ModelOccurrence> occurrences;
  std::vector<int> roots;  // indices of products
  std::vector<ModelColourUse> colours;
  std::vector<ModelLayer> layers;
  std::vector<ModelProperty> properties;
  std::vector<ModelAnnotation> annotations;
  std::vector<ModelView> views;
  ModelBox extent;       // of all roots with their children, in extentUnits
  int extentUnits = -1;  // index into units
  std::vector<std::string> warnings;
  int evaluatedParts = 0;         // of ShapeEvaluator::Parts: those that a shape module was asked for
  std::string evaluationFailure;  // why the evaluation of exact shapes did not complete; empty if it did

  bool IsEmpty() const noexcept {
    return products.empty() && layers.empty() && properties.empty() && annotations.empty() && colours.empty();
  }

  // Returns the name of an occurrence, else that of its product; for a root, the name of the product.
  std::string NodeName(int product, int occurrence) const;
  // Returns the number of nodes below and including a product, at most kNodeLimit + 1.
  long CountNodes(int product) const;
};

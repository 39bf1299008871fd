// How a drawing is made:
//
// 1. The structure is traversed to a list of nodes with edges, each with its placement in the unit of the extent, and a
//    list of their polylines. If they have more points than the limit allows, the polylines are sorted by their length.
// 2. For each view, the points are projected, and the box of all of them is computed.
// 3. Each segment is assigned to the straight line that it is part of. Lines are found in a hash table by the direction
//    and the distance from the origin, both rounded, with a search in the adjacent cells. A line stores which intervals
//    are drawn already; only the rest of the segment is drawn.
// 4. All segments of one colour are one path. Coordinates are whole multiples of a power of ten, so that no number has
//    more digits than the drawing can show.
#include "Drawing.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Gk_ErrMgr.h"
#include "MeshEdges.h"
#include "ProductModel.h"
#include "XmlText.h"

namespace {

constexpr std::size_t kNodeLimit = 250'000;
constexpr std::size_t kPolylineLimit = 4'000'000;
constexpr std::size_t kPointLimit = 10'000'000;  // that are looked at, for each view
constexpr std::size_t kBytesOfPoint = 8;         // at least
constexpr std::size_t kTitleLimit = 1000;
constexpr double kTolerance = 1.0 / 20000.0;  // of the size
constexpr double kMargin = 0.04;              // of the size, on each side
constexpr double kGap = 0.1;                  // of the size, between views

struct Point {
  double x;
  double y;
};

// The directions to the right and up of a view, in the coordinates of the model.
struct Projection {
  char const* name;
  double right[3];
  double up[3];

  Point operator()(double const* point) const noexcept {
    return {right[0] * point[0] + right[1] * point[1] + right[2] * point[2],
            up[0] * point[0] + up[1] * point[1] + up[2] * point[2]};
  }
};

constexpr double kHalfRoot = 0.7071067811865476;
constexpr double kSixthRoot = 0.4082482904638631;
constexpr Projection kProjections[] = {
    {"isometric", {kHalfRoot, kHalfRoot, 0.0}, {-kSixthRoot, kSixthRoot, 2.0 * kSixthRoot}},
    {"front", {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}},
    {"top", {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
    {"right", {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}},
};

struct FlatBox {
  bool isEmpty = true;
  Point low{0.0, 0.0};
  Point high{0.0, 0.0};

  void Extend(Point const& point) noexcept {
    low = isEmpty ? point : Point{std::min(low.x, point.x), std::min(low.y, point.y)};
    high = isEmpty ? point : Point{std::max(high.x, point.x), std::max(high.y, point.y)};
    isEmpty = false;
  }
  double Width() const noexcept { return high.x - low.x; }
  double Height() const noexcept { return high.y - low.y; }
};

bool IsDrawable(double const* point) noexcept {
  return std::abs(point[0]) <= kLargestCoordinate && std::abs(point[1]) <= kLargestCoordinate &&
         std::abs(point[2]) <= kLargestCoordinate;
}

// What is drawn of a product: its polylines, or the sharp edges of its meshes.
class ProductLines {
 public:
  explicit ProductLines(ModelProduct const& product) : polylines(&product.polylines) {
    if (!product.polylines.empty() || product.meshes.empty()) return;
    for (ModelMesh const& mesh : product.meshes) {
      std::vector<double> const ends = SharpEdges(mesh);
      for (std::size_t i = 0; i + 5 < ends.size(); i += 6) {
        ModelPolyline segment;
        segment.coordinates.assign(ends.begin() + static_cast<std::ptrdiff_t>(i),
                                   ends.begin() + static_cast<std::ptrdiff_t>(i + 6));
        segment.colour = mesh.colour;
        sharpEdges.push_back(std::move(segment));
      }
    }
    polylines = &sharpEdges;
  }
  ProductLines(ProductLines const&) = delete;
  ProductLines& operator=(ProductLines const&) = delete;

  std::vector<ModelPolyline> const& Polylines() const noexcept { return *polylines; }

 private:
  std::vector<ModelPolyline> const* polylines;
  std::vector<ModelPolyline> sharpEdges;
};

// The polylines of a model, placed.
class PlacedLines {
 public:
  struct Node {
    ProductLines const* lines;
    Placement placement;
  };
  struct Item {
    std::uint32_t node;
    std::uint32_t polyline;
    float size;
  };

  PlacedLines(ProductModel const& productModel, std::size_t pointLimit) : model(productModel) {
    for (ModelProduct const& product : model.products) lines.push_back(std::make_unique<ProductLines>(product));
    Count();
    for (int const root : model.roots) {
      if (IsProduct(root)) AddNodes(root, RootPlacement(root));
    }
    AddItems(pointLimit);
  }

  // Polylines that are not among the items, by the reason. The numbers can be too large for an integer.
  struct LeftOut {
    double byNodes = 0.0;
    double byPlacement = 0.0;
    double byPolylines = 0.0;
    double bySize = 0.0;
  };

  std::vector<Item> const& Items() const noexcept { return items; }
  LeftOut const& GetLeftOut() const noexcept { return leftOut; }
  double Total() const noexcept { return total; }

  ModelPolyline const& Polyline(Item const& item) const { return nodes[item.node].lines->Polylines()[item.polyline]; }
  Placement const& PlacementOf(Item const& item) const { return nodes[item.node].placement; }

 private:
  bool IsProduct(int index) const noexcept {
    return index >= 0 && static_cast<std::size_t>(index) < model.products.size();
  }
  ModelOccurrence const* Occurrence(int index) const noexcept {
    bool const isValid = index >= 0 && static_cast<std::size_t>(index) < model.occurrences.size();
    return isValid ? &model.occurrences[static_cast<std::size_t>(index)] : nullptr;
  }

  // Counts the polylines below each product, each product once.
  void Count() {
    below.assign(model.products.size(), -1.0);
    std::vector<std::pair<int, bool>> pending;
    for (int const root : model.roots) pending.emplace_back(root, false);
    while (!pending.empty()) {
      auto const [product, isDone] = pending.back();
      pending.pop_back();
      if (!IsProduct(product)) continue;
      auto const index = static_cast<std::size_t>(product);
      if (!isDone) {
        if (below[index] >= 0.0) continue;
        below[index] = 0.0;
        pending.emplace_back(product, true);
        for (int const each : model.products[index].occurrences) {
          ModelOccurrence const* const occurrence = Occurrence(each);
          if (occurrence != nullptr) pending.emplace_back(occurrence->child, false);
        }
        continue;
      }
      double sum = static_cast<double>(lines[index]->Polylines().size());
      for (int const each : model.products[index].occurrences) {
        ModelOccurrence const* const occurrence = Occurrence(each);
        if (occurrence != nullptr && IsProduct(occurrence->child)) {
          sum += below[static_cast<std::size_t>(occurrence->child)];
        }
      }
      below[index] = sum;
    }
    for (int const root : model.roots) {
      if (IsProduct(root)) total += below[static_cast<std::size_t>(root)];
    }
  }

  Placement RootPlacement(int root) const {
    int const units = model.products[static_cast<std::size_t>(root)].units;
    int const target = model.extentUnits;
    auto const count = static_cast<int>(model.units.size());
    if (units < 0 || target < 0 || units >= count || target >= count || units == target) return Placement();
    double const factor =
        model.units[static_cast<std::size_t>(units)].metres / model.units[static_cast<std::size_t>(target)].metres;
    return std::isfinite(factor) && factor > 0.0 ? Placement::Scaling(factor) : Placement();
  }

  // Adds a product and those below it, in the order of the file. Products without lines below them are skipped, so that
  // the time depends on what is drawn.
  void AddNodes(int root, Placement const& placement) {
    std::vector<std::pair<int, Placement>> pending{{root, placement}};
    while (!pending.empty()) {
      if (nodes.size() >= kNodeLimit) {
        hasMoreNodes = true;
        return;
      }
      auto const [product, place] = pending.back();
      pending.pop_back();
      auto const index = static_cast<std::size_t>(product);
      if (below[index] <= 0.0 || !place.IsFinite()) continue;
      Gk_ErrMgr::checkAbort();
      if (!lines[index]->Polylines().empty()) nodes.push_back({lines[index].get(), place});
      std::vector<int> const& children = model.products[index].occurrences;
      // The list is bounded as that of the nodes is.
      for (auto each = children.rbegin(); each != children.rend(); ++each) {
        if (pending.size() >= kNodeLimit) {
          hasMoreNodes = true;
          break;
        }
        ModelOccurrence const* const occurrence = Occurrence(*each);
        if (occurrence == nullptr || !IsProduct(occurrence->child)) continue;
        pending.emplace_back(occurrence->child, place * occurrence->placement);
      }
    }
  }

  static float SizeOf(ModelPolyline const& polyline, double scale) {
    ModelBox box;
    for (std::size_t i = 0; i + 2 < polyline.coordinates.size(); i += 3) box.Extend(&polyline.coordinates[i]);
    return static_cast<float>(box.Diagonal() * scale);
  }

  void AddItems(std::size_t pointLimit) {
    double placed = 0.0;
    for (Node const& node : nodes) placed += static_cast<double>(node.lines->Polylines().size());
    (hasMoreNodes ? leftOut.byNodes : leftOut.byPlacement) = std::max(0.0, total - placed);
    std::size_t points = 0;
    for (std::size_t node = 0; node < nodes.size() && items.size() < kPolylineLimit; ++node) {
      double const scale = std::cbrt(std::abs(nodes[node].placement.Determinant()));
      std::vector<ModelPolyline> const& polylines = nodes[node].lines->Polylines();
      for (std::size_t i = 0; i < polylines.size() && items.size() < kPolylineLimit; ++i) {
        points += polylines[i].coordinates.size() / 3;
        items.push_back({static_cast<std::uint32_t>(node), static_cast<std::uint32_t>(i), SizeOf(polylines[i], scale)});
      }
    }
    leftOut.byPolylines = placed - static_cast<double>(items.size());
    if (points <= pointLimit) return;
    std::stable_sort(items.begin(), items.end(), [](Item const& a, Item const& b) { return a.size > b.size; });
    std::size_t kept = 0;
    for (points = 0; kept < items.size(); ++kept) {
      points += Polyline(items[kept]).coordinates.size() / 3;
      if (points > pointLimit) break;
    }
    leftOut.bySize = static_cast<double>(items.size() - kept);
    items.resize(kept);
  }

  ProductModel const& model;
  std::vector<std::unique_ptr<ProductLines>> lines;  // of each product
  std::vector<double> below;                         // polylines of each product and those below it
  std::vector<Node> nodes;
  std::vector<Item> items;
  double total = 0.0;
  LeftOut leftOut;
  bool hasMoreNodes = false;  // than the limit
};

// The lines that are drawn already. Coordinates are divided by the size of the drawing.
class DrawnLines {
 public:
  // Passes the parts of a segment that are not drawn yet to `draw`, and records them.
  template <class Draw>
  void Add(Point const& a, Point const& b, Draw draw) {
    double const length = std::hypot(b.x - a.x, b.y - a.y);
    if (!(length > 0.0)) return;
    Point direction = {(b.x - a.x) / length, (b.y - a.y) / length};
    double angle = std::atan2(direction.y, direction.x);
    // Directions end where drawings hardly have lines, not at the axes.
    bool const isReversed = angle < kFirstAngle || angle >= kFirstAngle + kPi;
    if (isReversed) {
      direction = {-direction.x, -direction.y};
      angle += angle < kFirstAngle ? kPi : -kPi;
    }
    Line& line = Find(a, b, direction, angle);
    double const from = line.Parameter(isReversed ? b : a);
    double const to = line.Parameter(isReversed ? a : b);

    std::map<double, double>& drawn = line.drawn;
    double at = from;
    auto first = drawn.upper_bound(from);
    if (first != drawn.begin() && std::prev(first)->second > from + kTolerance) --first;
    if (first != drawn.end() && first->second <= from + kTolerance) ++first;
    auto last = first;
    double low = from;
    double high = to;
    for (; last != drawn.end() && last->first < to - kTolerance; ++last) {
      if (last->first - at > kTolerance) draw(line.At(at), line.At(last->first), false);
      at = std::max(at, last->second);
      low = std::min(low, last->first);
      high = std::max(high, last->second);
    }
    if (first == last) {
      // Intervals that only touch this one remain of their own.
      draw(a, b, true);
    } else if (to - at > kTolerance) {
      draw(line.At(at), line.At(to), false);
    }
    drawn.erase(first, last);
    double& end = drawn.try_emplace(low, high).first->second;
    end = std::max(end, high);
  }

 private:
  static constexpr double kPi = 3.141592653589793;
  static constexpr double kFirstAngle = -0.1;
  static constexpr double kAngleCell = 1e-5;
  static constexpr double kDistanceCell = 2.0 * kTolerance;

  struct Line {
    Point origin;
    Point direction;
    std::map<double, double> drawn;  // ends of intervals of the parameter by their beginnings; disjoint
    int next = -1;                   // in the same cell

    double Parameter(Point const& point) const noexcept {
      return (point.x - origin.x) * direction.x + (point.y - origin.y) * direction.y;
    }
    double Distance(Point const& point) const noexcept {
      return std::abs((point.x - origin.x) * direction.y - (point.y - origin.y) * direction.x);
    }
    Point At(double parameter) const noexcept {
      return {origin.x + parameter * direction.x, origin.y + parameter * direction.y};
    }
  };

  static std::uint64_t Key(std::int64_t angle, std::int64_t distance) noexcept {
    return (static_cast<std::uint64_t>(angle) << 32U) ^ (static_cast<std::uint64_t>(distance) & 0xFFFFFFFFU);
  }

  Line& Find(Point const& a, Point const& b, Point const& direction, double angle) {
    double const angleCell = angle / kAngleCell;
    double const distanceCell = (a.x * direction.y - a.y * direction.x) / kDistanceCell;
    auto const row = static_cast<std::int64_t>(std::floor(angleCell));
    auto const column = static_cast<std::int64_t>(std::floor(distanceCell));
    std::int64_t const nextRow = row + (angleCell - std::floor(angleCell) < 0.5 ? -1 : 1);
    std::int64_t const nextColumn = column + (distanceCell - std::floor(distanceCell) < 0.5 ? -1 : 1);
    for (std::int64_t const r : {row, nextRow}) {
      for (std::int64_t const c : {column, nextColumn}) {
        auto const found = cells.find(Key(r, c));
        int index = found == cells.end() ? -1 : found->second;
        for (; index >= 0; index = lines[static_cast<std::size_t>(index)].next) {
          Line& line = lines[static_cast<std::size_t>(index)];
          if (line.Distance(a) <= kTolerance && line.Distance(b) <= kTolerance) return line;
        }
      }
    }
    int& first = cells.try_emplace(Key(row, column), -1).first->second;
    lines.push_back({a, direction, {}, first});
    first = static_cast<int>(lines.size()) - 1;
    return lines.back();
  }

  std::unordered_map<std::uint64_t, int> cells;  // the first line of each
  std::vector<Line> lines;
};

// Writes numbers as multiples of a power of ten.
class NumberFormat {
 public:
  explicit NumberFormat(double size) {
    decimals = static_cast<int>(std::ceil(-std::log10(size * kTolerance)));
    step = std::pow(10.0, -decimals);
  }

  std::int64_t Round(double number) const noexcept { return std::llround(number / step); }

  void Append(std::string& text, std::int64_t multiple) const {
    char buffer[32];
    bool const isFixed = decimals >= 0 && decimals <= 9;
    if (multiple < 0) text += '-';
    auto const magnitude = static_cast<std::uint64_t>(multiple < 0 ? -multiple : multiple);
    if (!isFixed) {
      text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, magnitude).ptr);
      if (magnitude != 0) text += "e" + std::to_string(-decimals);
      return;
    }
    std::uint64_t divisor = 1;
    for (int i = 0; i < decimals; ++i) divisor *= 10;
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, magnitude / divisor).ptr);
    std::uint64_t rest = magnitude % divisor;
    if (rest == 0) return;
    text += '.';
    while (rest != 0) {
      divisor /= 10;
      text += static_cast<char>('0' + rest / divisor);
      rest %= divisor;
    }
  }
  void Append(std::string& text, double number) const { Append(text, Round(number)); }

 private:
  int decimals = 0;
  double step = 1.0;
};

// One view: the paths of its colours.
class ViewWriter {
 public:
  ViewWriter(Projection const& viewProjection, PlacedLines const& placedLines)
      : projection(viewProjection), placed(placedLines) {
    for (PlacedLines::Item const& item : placed.Items()) {
      Project(item, [this](Point const& a, Point const& b) {
        box.Extend(a);
        box.Extend(b);
      });
    }
  }

  FlatBox const& Box() const noexcept { return box; }
  char const* Name() const noexcept { return projection.name; }

  // Writes the paths, with at most `limit` bytes. Returns the number of polylines that were left out.
  double WritePaths(ProductModel const& model, double size, NumberFormat const& numbers, std::size_t limit,
                    std::string& svg) {
    DrawnLines drawn;
    std::vector<Path> paths;
    std::map<std::string, std::size_t> pathOfColour;
    std::size_t bytes = 0;
    std::size_t written = 0;
    for (PlacedLines::Item const& item : placed.Items()) {
      if (bytes >= limit) break;
      Gk_ErrMgr::checkAbort();
      std::string const colour = ColourOf(model, placed.Polyline(item).colour);
      auto const [found, isNew] = pathOfColour.try_emplace(colour, paths.size());
      if (isNew) {
        paths.push_back({colour, {}, 0, 0});
        bytes += kBytesOfPath;
      }
      Path& path = paths[found->second];
      std::size_t const before = path.data.size();
      Project(item, [&](Point const& a, Point const& b) {
        Point const from = {(a.x - box.low.x) / size, (box.high.y - a.y) / size};
        Point const to = {(b.x - box.low.x) / size, (box.high.y - b.y) / size};
        if (bytes + path.data.size() - before >= limit) return;
        drawn.Add(from, to, [&](Point const& begin, Point const& end, bool isWhole) {
          if (isWhole) {
            // Without the error of the division.
            path.Append(numbers, a.x - box.low.x, box.high.y - a.y, b.x - box.low.x, box.high.y - b.y);
          } else {
            path.Append(numbers, begin.x * size, begin.y * size, end.x * size, end.y * size);
          }
        });
      });
      bytes += path.data.size() - before;
      ++written;
    }
    for (Path const& path : paths) {
      if (path.data.empty()) continue;
      svg += "<path";
      if (!path.colour.empty()) svg += " stroke=\"" + path.colour + "\"";
      svg += " vector-effect=\"non-scaling-stroke\" d=\"" + path.data + "\"/>\n";
    }
    return static_cast<double>(placed.Items().size() - written);
  }

 private:
  static constexpr std::size_t kBytesOfPath = 64;

  struct Path {
    std::string colour;  // empty for that of the text
    std::string data;
    std::int64_t endX;
    std::int64_t endY;

    void Append(NumberFormat const& numbers, double fromX, double fromY, double toX, double toY) {
      std::int64_t const from[2] = {numbers.Round(fromX), numbers.Round(fromY)};
      std::int64_t const to[2] = {numbers.Round(toX), numbers.Round(toY)};
      if (from[0] == to[0] && from[1] == to[1]) return;
      bool const continues = !data.empty() && from[0] == endX && from[1] == endY;
      if (!continues) {
        data += 'M';
        numbers.Append(data, from[0]);
        data += ' ';
        numbers.Append(data, from[1]);
      }
      data += continues ? ' ' : 'L';
      numbers.Append(data, to[0]);
      data += ' ';
      numbers.Append(data, to[1]);
      endX = to[0];
      endY = to[1];
    }
  };

  static std::string ColourOf(ProductModel const& model, int colour) {
    bool const isValid = colour >= 0 && static_cast<std::size_t>(colour) < model.colours.size();
    return isValid ? model.colours[static_cast<std::size_t>(colour)].colour.Hexadecimal() : std::string();
  }

  // Passes the projected segments of a polyline; those of one straight line are one.
  template <class Segment>
  void Project(PlacedLines::Item const& item, Segment segment) const {
    std::vector<double> const& coordinates = placed.Polyline(item).coordinates;
    Placement const& placement = placed.PlacementOf(item);
    bool hasPrevious = false;
    bool hasSegment = false;
    Point begin{0.0, 0.0};
    Point end{0.0, 0.0};
    for (std::size_t i = 0; i + 2 < coordinates.size(); i += 3) {
      double point[3] = {coordinates[i], coordinates[i + 1], coordinates[i + 2]};
      placement.Apply(point);
      bool const isValid = IsDrawable(point);
      Point const next = isValid ? projection(point) : end;
      bool const continues = isValid && hasSegment && IsStraight(begin, end, next);
      if (hasSegment && !continues) segment(begin, end);
      if (!continues) begin = end;
      hasSegment = isValid && hasPrevious;
      hasPrevious = isValid;
      end = next;
    }
    if (hasSegment) segment(begin, end);
  }

  // Returns whether `b` is on the way from `a` to `c`.
  static bool IsStraight(Point const& a, Point const& b, Point const& c) noexcept {
    Point const u = {b.x - a.x, b.y - a.y};
    Point const v = {c.x - b.x, c.y - b.y};
    double const along = u.x * v.x + u.y * v.y;
    return along > 0.0 && std::abs(u.x * v.y - u.y * v.x) <= 1e-9 * along;
  }

  Projection const& projection;
  PlacedLines const& placed;
  FlatBox box;
};

std::string FormatCount(double count) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, count < 1e15 ? "%.0f" : "%.0e", count);
  return buffer;
}

std::string Capitalized(std::string text) {
  text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

// Returns how many edges are not drawn, for each reason. `cut` edges do not fit into the drawing.
std::string DescribeLeftOut(PlacedLines const& placed, double cut) {
  PlacedLines::LeftOut const& leftOut = placed.GetLeftOut();
  std::string text;
  auto const append = [&](double count, std::string const& reason) {
    if (count <= 0.0) return;
    text += "; " + FormatCount(count) + " of " + FormatCount(placed.Total()) + " edges are left out because " + reason;
  };
  append(leftOut.byNodes, "of the limit of " + std::to_string(kNodeLimit) + " nodes of the structure");
  append(leftOut.byPlacement, "their placement is not finite");
  append(leftOut.byPolylines, "of the limit of " + std::to_string(kPolylineLimit) + " polylines");
  append(leftOut.bySize + cut, "of the limit of the drawing's size");
  return text;
}

}  // namespace

bool WriteDrawing(ProductModel const& model, DrawingOptions const& options, std::string const& title,
                  std::string& svg) {
  std::size_t const viewCount = options.view == DrawingOptions::All ? 4 : 1;
  std::size_t const viewLimit = options.limit / viewCount;
  PlacedLines const placed(model, std::min(kPointLimit, viewLimit / kBytesOfPoint + 1000));

  std::vector<ViewWriter> views;
  double size = 0.0;
  for (std::size_t i = 0; i < std::size(kProjections); ++i) {
    if (viewCount == 1 && i != static_cast<std::size_t>(options.view)) continue;
    views.emplace_back(kProjections[i], placed);
    size = std::max({size, views.back().Box().Width(), views.back().Box().Height()});
  }
  // Coordinates so close that their difference has no digits are one point.
  if (!(size > 0.0) || !std::isfinite(size) || size < 1e-300) return false;

  // The corner of each view on the sheet.
  double const gap = kGap * size;
  double width = views[0].Box().Width();
  double height = views[0].Box().Height();
  std::vector<Point> corners(views.size(), Point{0.0, 0.0});
  if (viewCount == 4) {
    FlatBox const& isometric = views[0].Box();
    FlatBox const& front = views[1].Box();
    FlatBox const& top = views[2].Box();
    FlatBox const& right = views[3].Box();
    double const leftWidth = std::max(front.Width(), top.Width());
    double const upperHeight = std::max(isometric.Height(), top.Height());
    corners[0] = {leftWidth + gap, upperHeight - isometric.Height()};
    corners[1] = {0.0, upperHeight + gap};
    corners[2] = {0.0, upperHeight - top.Height()};
    corners[3] = {leftWidth + gap, upperHeight + gap};
    width = leftWidth + gap + std::max(isometric.Width(), right.Width());
    height = upperHeight + gap + std::max(front.Height(), right.Height());
  }

  NumberFormat const numbers(size);
  std::string paths;
  double cut = 0.0;
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (viewCount > 1) {
      paths += "<g aria-label=\"" + std::string(views[i].Name()) + "\" transform=\"translate(";
      numbers.Append(paths, corners[i].x);
      paths += ' ';
      numbers.Append(paths, corners[i].y);
      paths += ")\">\n";
    }
    cut = std::max(cut, views[i].WritePaths(model, size, numbers, viewLimit, paths));
    if (viewCount > 1) paths += "</g>\n";
  }

  double const margin = kMargin * std::max(width, height);
  svg += "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"";
  numbers.Append(svg, -margin);
  svg += ' ';
  numbers.Append(svg, -margin);
  svg += ' ';
  numbers.Append(svg, width + 2.0 * margin);
  svg += ' ';
  numbers.Append(svg, height + 2.0 * margin);
  svg +=
      "\" role=\"img\" fill=\"none\" stroke=\"currentColor\" stroke-width=\"1.2\" stroke-linecap=\"round\" "
      "stroke-linejoin=\"round\">\n";
  svg += "<title>" + EscapeXml(title, kTitleLimit) + "</title>\n<desc>";
  svg += viewCount == 4 ? "Isometric, front, top and right views" : Capitalized(views[0].Name()) + " view";
  if (model.extentUnits >= 0 && static_cast<std::size_t>(model.extentUnits) < model.units.size()) {
    std::string const& unit = model.units[static_cast<std::size_t>(model.extentUnits)].lengthName;
    if (!unit.empty()) svg += "; unit: " + EscapeXml(unit, kTitleLimit);
  }
  svg += DescribeLeftOut(placed, cut);
  svg += "</desc>\n" + paths + "</svg>\n";
  return true;
}

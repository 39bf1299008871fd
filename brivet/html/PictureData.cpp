#include "PictureData.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include "MeshEdges.h"
#include "ProductModel.h"

namespace {

constexpr std::size_t kLongestPolyline = 65535;
constexpr int kDigits = 20;  // binary digits of a coordinate

bool IsDrawable(double const* point) noexcept {
  return std::abs(point[0]) <= kLargestCoordinate && std::abs(point[1]) <= kLargestCoordinate &&
         std::abs(point[2]) <= kLargestCoordinate;
}

template <class Number>
void Append(std::string& bytes, Number number) {
  static_assert(std::is_trivially_copyable<Number>::value, "numbers only");
  std::array<char, sizeof number> copy{};
  std::memcpy(copy.data(), &number, sizeof number);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  std::reverse(copy.begin(), copy.end());
#endif
  bytes.append(copy.data(), copy.size());
}

void AppendCount(std::string& bytes, std::size_t count) {
  Append(bytes, static_cast<std::uint32_t>(count));
}

double SizeOf(ModelPolyline const& polyline) {
  ModelBox box;
  for (std::size_t i = 0; i + 2 < polyline.coordinates.size(); i += 3) box.Extend(&polyline.coordinates[i]);
  return box.Diagonal();
}

std::vector<ModelPolyline> SharpPolylines(ModelProduct const& product) {
  std::vector<ModelPolyline> polylines;
  for (ModelMesh const& mesh : product.meshes) {
    std::vector<double> const ends = SharpEdges(mesh);
    for (std::size_t i = 0; i + 5 < ends.size(); i += 6) {
      ModelPolyline edge;
      auto const begin = ends.begin() + static_cast<std::ptrdiff_t>(i);
      edge.coordinates.assign(begin, begin + 6);
      polylines.push_back(std::move(edge));
    }
  }
  return polylines;
}

// The smallest size of the polylines that are kept, so that they have at most `points` points.
struct Threshold {
  double size = 0.0;
  std::size_t leftOut = 0;
  std::size_t total = 0;

  Threshold(ProductModel const& model, std::size_t points) {
    std::size_t sum = 0;
    std::vector<std::pair<float, std::uint32_t>> sizes;
    for (ModelProduct const& product : model.products) {
      for (ModelPolyline const& each : product.polylines) sum += each.coordinates.size() / 3;
      total += product.polylines.size();
    }
    if (sum <= points) return;
    for (ModelProduct const& product : model.products) {
      for (ModelPolyline const& each : product.polylines) {
        sizes.emplace_back(static_cast<float>(SizeOf(each)), static_cast<std::uint32_t>(each.coordinates.size() / 3));
      }
    }
    std::sort(sizes.begin(), sizes.end());
    std::size_t dropped = 0;
    while (dropped < sizes.size() && sum > points) sum -= sizes[dropped++].second;
    // Those of equal size are dropped together.
    while (dropped > 0 && dropped < sizes.size() && sizes[dropped].first == sizes[dropped - 1].first) ++dropped;
    leftOut = dropped;
    size = dropped < sizes.size() ? static_cast<double>(sizes[dropped].first) : HUGE_VAL;
  }

  bool Keeps(ModelPolyline const& polyline) const {
    return leftOut == 0 || static_cast<double>(static_cast<float>(SizeOf(polyline))) >= size;
  }
};

class Encoder {
 public:
  Encoder(ProductModel const& productModel, PictureData::Limits const& theLimits)
      : model(productModel), limits(theLimits), threshold(productModel, theLimits.points) {}

  std::string Encode(std::string& leftOut) {
    for (std::size_t i = 0; i < model.products.size(); ++i) {
      ModelProduct const& product = model.products[i];
      std::vector<ModelPolyline> sharp;
      if (product.polylines.empty()) sharp = SharpPolylines(product);
      AddRecord(0, i, product.polylines.empty() ? sharp : product.polylines, product.meshes);
    }
    for (std::size_t i = 0; i < model.annotations.size(); ++i) {
      AddRecord(1, i, model.annotations[i].polylines, model.annotations[i].meshes);
    }

    leftOut.clear();
    if (threshold.leftOut > 0) {
      leftOut = "The picture leaves out the " + std::to_string(threshold.leftOut) + " shortest of " +
                std::to_string(threshold.total) + " edges.";
    }
    if (trianglesLeftOut > 0) {
      leftOut += leftOut.empty() ? "" : " ";
      leftOut += "The picture leaves out " + std::to_string(trianglesLeftOut) + " of " +
                 std::to_string(trianglesLeftOut + all.triangles) + " triangles.";
    }
    if (recordCount == 0) return "";
    std::string bytes;
    AppendCount(bytes, PictureData::kMagic);
    AppendCount(bytes, PictureData::kVersion);
    AppendCount(bytes, recordCount);
    AppendCounts(bytes, all);
    AppendCount(bytes, 0);
    if (all.polylines % 2 == 1) lengths.append(2, '\0');
    for (std::string const* const part :
         {&records, &points, &lengths, &runs, &meshPoints, &normals, &triangles, &meshRuns}) {
      bytes += *part;
    }
    return bytes;
  }

 private:
  struct Counts {
    std::size_t points = 0;
    std::size_t polylines = 0;
    std::size_t runs = 0;
    std::size_t meshPoints = 0;
    std::size_t triangles = 0;
    std::size_t meshRuns = 0;
  };

  static void AppendCounts(std::string& bytes, Counts const& counts) {
    for (std::size_t const each :
         {counts.points, counts.polylines, counts.runs, counts.meshPoints, counts.triangles, counts.meshRuns}) {
      AppendCount(bytes, each);
    }
  }

  void AddRecord(std::uint32_t kind, std::size_t index, std::vector<ModelPolyline> const& polylines,
                 std::vector<ModelMesh> const& meshes) {
    ModelBox box;
    for (ModelPolyline const& each : polylines) {
      for (std::size_t i = 0; i + 2 < each.coordinates.size(); i += 3) box.Extend(&each.coordinates[i]);
    }
    for (ModelMesh const& each : meshes) {
      for (std::size_t i = 0; i + 2 < each.points.size(); i += 3) box.Extend(&each.points[i]);
    }
    if (box.isEmpty) return;
    double halfSize = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
      origin[i] = box.low[i] + (box.high[i] - box.low[i]) / 2.0;
      halfSize = std::max(halfSize, (box.high[i] - box.low[i]) / 2.0);
    }
    step = halfSize > 0.0 ? std::ldexp(1.0, std::ilogb(halfSize) - kDigits) : 1.0;

    Counts const before = all;
    AddPolylines(polylines, kind == 0 && !model.products[index].polylines.empty());
    for (ModelMesh const& each : meshes) AddMesh(each, before.meshPoints);
    if (all.points == before.points && all.triangles == before.triangles) return;
    for (double const each : origin) Append(records, each);
    Append(records, kind);
    AppendCount(records, index);
    AppendCounts(records, {all.points - before.points, all.polylines - before.polylines, all.runs - before.runs,
                           all.meshPoints - before.meshPoints, all.triangles - before.triangles,
                           all.meshRuns - before.meshRuns});
    Append(records, static_cast<std::int32_t>(kind == 1 ? model.annotations[index].product : -1));
    AppendCount(records, 0);
    ++recordCount;
  }

  // Appends the polylines, those of one colour next to each other.
  void AddPolylines(std::vector<ModelPolyline> const& polylines, bool isFiltered) {
    std::vector<std::uint32_t> order;
    for (std::size_t i = 0; i < polylines.size(); ++i) {
      if (!isFiltered || threshold.Keeps(polylines[i])) order.push_back(static_cast<std::uint32_t>(i));
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return polylines[a].colour < polylines[b].colour; });
    for (std::size_t i = 0; i < order.size();) {
      int const colour = polylines[order[i]].colour;
      std::size_t const before = all.polylines;
      for (; i < order.size() && polylines[order[i]].colour == colour; ++i)
        AddPolyline(polylines[order[i]].coordinates);
      if (all.polylines > before) AddRun(runs, all.runs, all.polylines - before, colour);
    }
  }

  void AddPolyline(std::vector<double> const& coordinates) {
    std::size_t begin = 0;
    auto const end = [&](std::size_t i) {
      if (i - begin >= 6) {
        for (std::size_t k = begin; k < i; k += 3) AppendPoint(points, &coordinates[k]);
        Append(lengths, static_cast<std::uint16_t>((i - begin) / 3));
        all.points += (i - begin) / 3;
        ++all.polylines;
      }
    };
    std::size_t i = 0;
    for (; i + 2 < coordinates.size(); i += 3) {
      if (!IsDrawable(&coordinates[i])) {
        end(i);
        begin = i + 3;
      } else if ((i - begin) / 3 + 1 >= kLongestPolyline) {
        end(i + 3);
        begin = i;
      }
    }
    end(i);
  }

  void AddMesh(ModelMesh const& mesh, std::size_t firstPoint) {
    std::size_t const count = mesh.points.size() / 3;
    std::size_t const offset = all.meshPoints - firstPoint;
    std::size_t const before = all.triangles;
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
      bool isValid = true;
      for (std::size_t k = i; k < i + 3; ++k) {
        isValid = isValid && mesh.triangles[k] < count && IsDrawable(&mesh.points[3 * std::size_t{mesh.triangles[k]}]);
      }
      if (!isValid) continue;
      if (all.triangles >= limits.triangles) {
        ++trianglesLeftOut;
        continue;
      }
      for (std::size_t k = i; k < i + 3; ++k) AppendCount(triangles, mesh.triangles[k] + offset);
      ++all.triangles;
    }
    if (all.triangles == before) return;
    AddRun(meshRuns, all.meshRuns, all.triangles - before, mesh.colour);
    bool const hasNormals = mesh.normals.size() == mesh.points.size();
    for (std::size_t i = 0; i < count; ++i) {
      double const* const point = &mesh.points[3 * i];
      AppendPoint(meshPoints, IsDrawable(point) ? point : origin);
      for (std::size_t axis = 0; axis < 3; ++axis) {
        double const normal = hasNormals ? mesh.normals[3 * i + axis] : 0.0;
        Append(normals, static_cast<std::int8_t>(std::abs(normal) <= 1.0 ? std::lround(normal * 127.0) : 0));
      }
      normals += '\0';
    }
    all.meshPoints += count;
  }

  static void AddRun(std::string& bytes, std::size_t& count, std::size_t length, int colour) {
    AppendCount(bytes, length);
    Append(bytes, static_cast<std::int32_t>(colour));
    ++count;
  }

  void AppendPoint(std::string& bytes, double const* point) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      Append(bytes, static_cast<float>(std::nearbyint((point[axis] - origin[axis]) / step) * step));
    }
  }

  ProductModel const& model;
  PictureData::Limits const limits;
  Threshold const threshold;
  double origin[3] = {0.0, 0.0, 0.0};  // of the present record
  double step = 1.0;
  std::size_t recordCount = 0;
  std::size_t trianglesLeftOut = 0;
  Counts all;
  std::string records;
  std::string points;
  std::string lengths;
  std::string runs;
  std::string meshPoints;
  std::string normals;
  std::string triangles;
  std::string meshRuns;
};

}  // namespace

std::string PictureData::Encode(ProductModel const& model, std::string& leftOut, Limits const& limits) {
  return Encoder(model, limits).Encode(leftOut);
}

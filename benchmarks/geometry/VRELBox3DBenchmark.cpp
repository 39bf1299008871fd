// VRELBox3D::ExtendTo, point by point and for an array, compared with Eigen::AlignedBox3d::extend.
#include "VRELBox3D.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>
#ifdef VREL_BENCHMARK_EIGEN
#include <Eigen/Geometry>
#endif

namespace {

// Returns points with the same coordinates for each type of point.
template <class Point>
std::vector<Point> Points(std::int64_t count) {
  std::mt19937 random(84);
  std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0);
  std::vector<Point> points;
  points.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    double const x = coordinate(random);
    double const y = coordinate(random);
    points.emplace_back(x, y, coordinate(random));
  }
  return points;
}

void BoxExtendToEachPoint(benchmark::State& state) {
  std::vector<VRELPoint3D> const points = Points<VRELPoint3D>(state.range(0));
  for (auto _ : state) {
    VRELBox3D box;
    for (VRELPoint3D const& point : points) box.ExtendTo(point);
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BoxExtendToEachPoint)->Arg(1000)->Arg(1000000);

void BoxExtendTo(benchmark::State& state) {
  std::vector<VRELPoint3D> const points = Points<VRELPoint3D>(state.range(0));
  for (auto _ : state) {
    VRELBox3D box;
    box.ExtendTo(points.data(), points.size());
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BoxExtendTo)->Arg(1000)->Arg(1000000);

#ifdef VREL_BENCHMARK_EIGEN
void EigenExtend(benchmark::State& state) {
  std::vector<Eigen::Vector3d> const points = Points<Eigen::Vector3d>(state.range(0));
  for (auto _ : state) {
    Eigen::AlignedBox3d box;
    for (Eigen::Vector3d const& point : points) box.extend(point);
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(EigenExtend)->Arg(1000)->Arg(1000000);
#endif

}  // namespace

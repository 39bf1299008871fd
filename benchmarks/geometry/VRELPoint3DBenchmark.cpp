#include "VRELPoint3D.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include "VRELMorph3D.h"

#ifdef VREL_BENCHMARK_EIGEN
#include <Eigen/Geometry>
#endif
#ifdef VREL_BENCHMARK_OCCT
#include <gp_Ax1.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>
#endif

// Points in an array are transformed in place. A thousand points stay in the cache; a million are read from memory and
// written back. A point of the peers is three doubles; a VRELPoint3D also has a virtual table, a reference count and a
// dimension. Rotation, translation and scale all have an effect, and are chosen so that the coordinates stay small.
namespace {

constexpr double angle = 0.5;
constexpr double scale = 0.9999;

void Sizes(benchmark::internal::Benchmark* run) {
  run->Arg(1000)->Arg(1000000);
}

void Count(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_TransformPoints(benchmark::State& state) {
  std::vector<VRELPoint3D> points(static_cast<std::size_t>(state.range(0)), VRELPoint3D(1.0, 2.0, 3.0));
  VRELAffine3D const rotation = VRELMorph3D(VRELPoint3D(1.0, 2.0, 3.0), angle).affine();
  VRELMorph3D const morph(rotation, VRELPoint3D(0.1, 0.2, 0.3), scale);
  for (auto _ : state) {
    VRELPoint3D::TransformAll(points.data(), points.size(), morph, false);
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_TransformPoints)->Apply(Sizes);

// One call of the virtual operation for each point, as generic code calls it.
void BM_TransformPointsByVirtualCalls(benchmark::State& state) {
  std::vector<VRELPoint3D> points(static_cast<std::size_t>(state.range(0)), VRELPoint3D(1.0, 2.0, 3.0));
  VRELAffine3D const rotation = VRELMorph3D(VRELPoint3D(1.0, 2.0, 3.0), angle).affine();
  VRELMorph3D const morph(rotation, VRELPoint3D(0.1, 0.2, 0.3), scale);
  for (auto _ : state) {
    for (VRELPoint3D& point : points) point.Transform(morph, false);
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_TransformPointsByVirtualCalls)->Apply(Sizes);

#ifdef VREL_BENCHMARK_EIGEN
Eigen::Affine3d EigenTransform() {
  return Eigen::Translation3d(0.1, 0.2, 0.3) * Eigen::AngleAxisd(angle, Eigen::Vector3d(1.0, 2.0, 3.0).normalized()) *
         Eigen::Scaling(scale);
}

void BM_TransformPointsByEigen(benchmark::State& state) {
  std::vector<Eigen::Vector3d> points(static_cast<std::size_t>(state.range(0)), Eigen::Vector3d(1.0, 2.0, 3.0));
  Eigen::Affine3d const transform = EigenTransform();
  for (auto _ : state) {
    for (Eigen::Vector3d& point : points) point = transform * point;
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_TransformPointsByEigen)->Apply(Sizes);

// Eigen's three doubles at the offset that they have in a VRELPoint3D: measures the cost of the additional bytes.
void BM_TransformPointsByEigenInObjectsAsLarge(benchmark::State& state) {
  struct Object {
    double before[2] = {};
    Eigen::Vector3d point = Eigen::Vector3d(1.0, 2.0, 3.0);
    double after = 0.0;
  };
  static_assert(sizeof(Object) == sizeof(VRELPoint3D));
  std::vector<Object> objects(static_cast<std::size_t>(state.range(0)));
  Eigen::Affine3d const transform = EigenTransform();
  for (auto _ : state) {
    for (Object& object : objects) object.point = transform * object.point;
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_TransformPointsByEigenInObjectsAsLarge)->Apply(Sizes);
#endif

#ifdef VREL_BENCHMARK_OCCT
void BM_TransformPointsByOcct(benchmark::State& state) {
  std::vector<gp_Pnt> points(static_cast<std::size_t>(state.range(0)), gp_Pnt(1.0, 2.0, 3.0));
  gp_Trsf rotation;
  rotation.SetRotation(gp_Ax1(gp_Pnt(0.0, 0.0, 0.0), gp_Dir(1.0, 2.0, 3.0)), angle);
  gp_Trsf transform;
  transform.SetScale(gp_Pnt(0.0, 0.0, 0.0), scale);
  transform.PreMultiply(rotation);
  transform.SetTranslationPart(gp_Vec(0.1, 0.2, 0.3));
  for (auto _ : state) {
    for (gp_Pnt& point : points) point.Transform(transform);
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_TransformPointsByOcct)->Apply(Sizes);
#endif

}  // namespace

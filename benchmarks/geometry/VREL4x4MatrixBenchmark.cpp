#include "VREL4x4Matrix.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#ifdef VREL_BENCHMARK_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr std::size_t count = 1000;

void Count(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<benchmark::IterationCount>(count));
}

VREL4x4Matrix SomeMatrix() {
  VREL4x4Matrix matrix;
  matrix.SetRotation(VRELDirectionf(1.0F, 2.0F, 3.0F), VRELPointf(0.1F, 0.2F, 0.3F), 0.5F);
  return matrix;
}

// Multiplies each of a thousand matrices by the same one and stores the products.
void BM_MatrixProduct(benchmark::State& state) {
  std::vector<VREL4x4Matrix> const factors(count, SomeMatrix());
  std::vector<VREL4x4Matrix> products(count);
  VREL4x4Matrix const other = SomeMatrix();
  for (auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) products[i] = factors[i] * other;
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_MatrixProduct);

// A point of four floats, the last one 1, as Eigen multiplies it by a matrix of the same size.
void BM_MatrixPointProduct(benchmark::State& state) {
  std::vector<VRELPointf> const points(count, VRELPointf(1.0F, 2.0F, 3.0F));
  std::vector<VRELPointf> images(count);
  VREL4x4Matrix const matrix = SomeMatrix();
  for (auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) images[i] = matrix * points[i];
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_MatrixPointProduct);

#ifdef VREL_BENCHMARK_EIGEN
Eigen::Matrix4f SomeEigenMatrix() {
  VREL4x4Matrix const matrix = SomeMatrix();
  return Eigen::Map<Eigen::Matrix4f const>(matrix.GetElements());
}

void BM_MatrixProductByEigen(benchmark::State& state) {
  std::vector<Eigen::Matrix4f> const factors(count, SomeEigenMatrix());
  std::vector<Eigen::Matrix4f> products(count, SomeEigenMatrix());
  Eigen::Matrix4f const other = SomeEigenMatrix();
  for (auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) products[i].noalias() = other * factors[i];
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_MatrixProductByEigen);

void BM_MatrixPointProductByEigen(benchmark::State& state) {
  std::vector<Eigen::Vector4f> const points(count, Eigen::Vector4f(1.0F, 2.0F, 3.0F, 1.0F));
  std::vector<Eigen::Vector4f> images(count, Eigen::Vector4f(0.0F, 0.0F, 0.0F, 0.0F));
  Eigen::Matrix4f const matrix = SomeEigenMatrix();
  for (auto _ : state) {
    for (std::size_t i = 0; i < count; ++i) images[i].noalias() = matrix * points[i];
    benchmark::ClobberMemory();
  }
  Count(state);
}
BENCHMARK(BM_MatrixPointProductByEigen);
#endif

}  // namespace

#include "ShapeAnswer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "ModelBox.h"
#include "ShapeProtocol.h"

namespace {

constexpr std::size_t kRecordHeaderSize = 8;
constexpr double kNormalTolerance = 1e-3;

template <class Number>
Number NumberAt(std::string_view bytes, std::size_t at) {
  Number number{};
  std::memcpy(&number, bytes.data() + at, sizeof number);
  return number;
}

bool IsCoordinate(double number) {
  return std::abs(number) <= kLargestCoordinate;
}

}  // namespace

bool ShapeAnswer::Refuse(char const* reason) {
  problem = reason;
  pending.clear();
  return false;
}

bool ShapeAnswer::Add(std::string_view bytes) {
  if (!problem.empty()) return false;
  if (bytes.empty()) return true;
  if (bytes.size() > remaining) return Refuse("it sends too much");
  remaining -= bytes.size();
  if (isComplete) return Refuse("it sends more than it announces");
  pending.append(bytes);
  return ParsePending();
}

bool ShapeAnswer::ParsePending() {
  std::size_t at = 0;
  if (!hasHeader) {
    std::size_t const size = std::min(pending.size(), kShapeHeader.size());
    if (pending.compare(0, size, kShapeHeader, 0, size) != 0) return Refuse("it is of another version");
    if (size < kShapeHeader.size()) return true;
    hasHeader = true;
    at = size;
  }
  std::string_view const all = pending;
  while (all.size() - at >= kRecordHeaderSize) {
    auto const kind = NumberAt<std::uint32_t>(all, at);
    auto const size = NumberAt<std::uint32_t>(all, at + 4);
    if (isComplete) return Refuse("it sends more than it announces");
    if (kind < 1 || kind > static_cast<std::uint32_t>(ShapeRecord::End)) return Refuse("it sends an unknown record");
    std::uint64_t const arrived = all.size() - at - kRecordHeaderSize;
    if (size > arrived && size - arrived > remaining) return Refuse("it announces too much");
    if (size > arrived) break;
    if (!Parse(kind, all.substr(at + kRecordHeaderSize, size))) return Refuse("it sends a damaged record");
    at += kRecordHeaderSize + size;
    ++records;
  }
  if (isComplete && at != all.size()) return Refuse("it sends more than it announces");
  pending.erase(0, at);
  return true;
}

bool ShapeAnswer::Parse(std::uint32_t kind, std::string_view content) {
  switch (static_cast<ShapeRecord>(kind)) {
    case ShapeRecord::Mesh:
      return ParseMesh(content);
    case ShapeRecord::Properties:
      return ParseProperties(content);
    case ShapeRecord::Problem:
      return ParseProblem(content);
    case ShapeRecord::Done: {
      if (content.size() != 4) return false;
      auto const product = NumberAt<std::uint32_t>(content, 0);
      if (product >= products.size() || products[product].isDone) return false;
      products[product].isDone = true;
      return true;
    }
    case ShapeRecord::End:
      isComplete = true;
      return content.size() == 4 && NumberAt<std::uint32_t>(content, 0) == records;
  }
  return false;
}

bool ShapeAnswer::ParseMesh(std::string_view content) {
  if (content.size() < kMeshHeaderSize) return false;
  auto const product = NumberAt<std::uint32_t>(content, 0);
  Face face;
  face.instance = NumberAt<std::uint32_t>(content, 4);
  face.item = NumberAt<std::uint32_t>(content, 8);
  std::uint64_t const points = NumberAt<std::uint32_t>(content, 12);
  std::uint64_t const triangles = NumberAt<std::uint32_t>(content, 16);
  if (content.size() != kMeshHeaderSize + points * (kPointSize + kNormalSize) + triangles * kTriangleSize) return false;
  if (product >= products.size() || products[product].isDone) return false;
  std::size_t at = kMeshHeaderSize;
  ModelMesh& mesh = face.mesh;
  mesh.points.resize(3 * points);
  std::memcpy(mesh.points.data(), content.data() + at, points * kPointSize);
  at += points * kPointSize;
  for (std::size_t i = 0; i < 3 * points; ++i) mesh.normals.push_back(NumberAt<float>(content, at + i * sizeof(float)));
  at += points * kNormalSize;
  mesh.triangles.resize(3 * triangles);
  std::memcpy(mesh.triangles.data(), content.data() + at, triangles * kTriangleSize);
  if (!std::all_of(mesh.points.begin(), mesh.points.end(), IsCoordinate)) return false;
  for (std::size_t i = 0; i + 3 <= mesh.normals.size(); i += 3) {
    double const square = mesh.normals[i] * mesh.normals[i] + mesh.normals[i + 1] * mesh.normals[i + 1] +
                          mesh.normals[i + 2] * mesh.normals[i + 2];
    if (!(std::abs(square - 1.0) <= kNormalTolerance)) return false;
  }
  if (!std::all_of(mesh.triangles.begin(), mesh.triangles.end(),
                   [points](std::uint32_t each) { return each < points; })) {
    return false;
  }
  products[product].faces.push_back(std::move(face));
  return true;
}

bool ShapeAnswer::ParseProperties(std::string_view content) {
  if (content.size() != 8 + kPropertyCount * sizeof(double)) return false;
  auto const product = NumberAt<std::uint32_t>(content, 0);
  auto const flags = NumberAt<std::uint32_t>(content, 4);
  if (product >= products.size() || products[product].isDone || flags > (kHasMass | kHasBox)) return false;
  double numbers[kPropertyCount];
  std::memcpy(numbers, content.data() + 8, sizeof numbers);
  if (!std::all_of(std::begin(numbers), std::end(numbers), [](double each) { return std::isfinite(each); }))
    return false;
  if ((flags & kHasMass) == 0) return true;
  ModelComputed computed;
  computed.volume = numbers[0];
  computed.area = numbers[1];
  std::copy_n(numbers + 2, 3, computed.centroid);
  if ((flags & kHasBox) != 0) {
    computed.extent.Extend(numbers + 5);
    computed.extent.Extend(numbers + 8);
  }
  products[product].computed = computed;
  return true;
}

bool ShapeAnswer::ParseProblem(std::string_view content) {
  if (content.size() < 4 || content.size() > 4 + kProblemSize) return false;
  if (problems.size() < kProblemLimit) {
    problems.push_back({NumberAt<std::uint32_t>(content, 0), std::string(content.substr(4))});
  }
  return true;
}

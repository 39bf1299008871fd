// Documents with product models that tests fill.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Document.h"
#include "ProductModel.h"
#include "Progress.h"
#include "ShapeEvaluator.h"
#include "VRELFile.h"
#include "VRELFileHandle.h"
#include "VRELOutputStream.h"

class ModelDocument final : public Document {
 public:
  explicit ModelDocument(ProductModel filled)
      : Document(VRELFileHandle(new VRELFile("part.stp"))), model(std::move(filled)) {}

  VRINResult Open() override { return VREL_S_OK; }
  VRELFileHeader& GetFileHeader() override { return header; }
  VRINResult GetState() const override { return VREL_S_OK; }
  long GetFailedCount() const override { return 0; }
  long GetSectionCount() const override { return 1; }
  long GetInstanceCount() const override { return 1; }
  long GetComplexCount() const override { return 0; }
  std::size_t GetTypeCount() const override { return 0; }
  std::string GetTypeName(std::size_t /*type*/) const override { return ""; }
  long GetTypeInstanceCount(std::size_t /*type*/) const override { return 0; }
  VRINResult DescribeHeader(DocumentVisitor& /*visitor*/) override { return VREL_S_OK; }
  VRINResult Describe(DocumentVisitor& /*visitor*/, Progress& /*receiver*/, bool /*referrers*/) override {
    return VREL_S_OK;
  }
  ProductModel const* GetModel(bool geometry, Progress& /*receiver*/) override {
    hasGeometry = geometry;
    return &model;
  }

  ProductModel model;
  bool hasGeometry = false;

 private:
  VRELFileHeader header;
};

inline ModelMesh Mesh(std::vector<double> points, std::vector<std::uint32_t> triangles, int colour = -1) {
  ModelMesh mesh;
  mesh.instance = "#9";
  mesh.points = std::move(points);
  mesh.triangles = std::move(triangles);
  mesh.colour = colour;
  return mesh;
}

// A root "plate" with the definition #3 in a unit of half a metre: a red triangle of 2 by 1 with its normal along z.
inline ProductModel PlateModel() {
  ProductModel model;
  ModelUnits half;
  half.lengthName = "half";
  half.metres = 0.5;
  model.units = {half};
  model.extentUnits = 0;
  model.colours = {{{1.0, 0.0, 0.0, 0.0}, 1}};
  ModelProduct plate;
  plate.name = "plate";
  plate.definition = "#3";
  plate.units = 0;
  plate.meshes = {Mesh({0, 0, 0, 2, 0, 0, 0, 1, 0}, {0, 1, 2}, 0)};
  model.products = {plate};
  model.roots = {0};
  return model;
}

// A root "top" in metres that contains the plate twice: moved by (3, 0, 0), and mirrored at x = 0.
inline ProductModel AssemblyModel() {
  ProductModel model = PlateModel();
  ModelUnits metre;
  metre.lengthName = "metre";
  model.units.push_back(metre);
  model.extentUnits = 1;
  ModelProduct top;
  top.name = "top";
  top.definition = "#1";
  top.units = 1;
  top.occurrences = {0, 1};
  model.products.push_back(top);
  model.roots = {1};
  ModelOccurrence moved;
  moved.instance = "#11";
  moved.parent = 1;
  moved.child = 0;
  moved.name = "moved";
  moved.placement = Placement({0.5, 0, 0, 3, 0, 0.5, 0, 0, 0, 0, 0.5, 0});
  ModelOccurrence mirrored = moved;
  mirrored.instance = "#12";
  mirrored.name = "mirrored";
  mirrored.placement = Placement({-0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0.5, 0});
  model.occurrences = {moved, mirrored};
  return model;
}

// Keeps all bytes, zeros included.
class ByteStream final : public VRELOutputStream {
 public:
  int write(char const* buffer, int count) override {
    bytes.append(buffer, static_cast<std::size_t>(count));
    return count;
  }
  void flush() override {}
  void close() override {}

  std::string bytes;
};

// Returns what a writer writes of the model. The result of writing is `expected`.
template <class Writer>
std::string Written(ProductModel const& model, VRINResult const& expected = VREL_S_OK) {
  ModelDocument document(model);
  Progress progress;
  BrivetWriteRequest request;
  request.document = &document;
  request.progress = &progress;
  request.title = "part.stp";
  request.shownName = "folder/part.stp";
  request.format = "glb";
  ByteStream stream;
  request.stream = &stream;
  Writer writer;
  EXPECT_EQ(writer.Write(request), expected);
  return stream.bytes;
}

// The bytes of 32-bit numbers, the least significant first.
inline std::string Words(std::vector<std::uint32_t> const& words) {
  std::string bytes;
  for (std::uint32_t const word : words) {
    for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift & 0xFFU);
  }
  return bytes;
}

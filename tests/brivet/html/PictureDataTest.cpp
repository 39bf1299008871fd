#include "PictureData.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "ProductModel.h"

namespace {

// Reads the numbers of the encoding in their order.
class Numbers {
 public:
  explicit Numbers(std::string encoded) : bytes(std::move(encoded)) {}

  template <class Number>
  Number Next() {
    Number number{};
    EXPECT_LE(at + sizeof number, bytes.size());
    if (at + sizeof number <= bytes.size()) std::memcpy(&number, bytes.data() + at, sizeof number);
    at += sizeof number;
    return number;
  }
  template <class Number>
  std::vector<Number> Next(std::size_t count) {
    std::vector<Number> numbers;
    for (std::size_t i = 0; i < count; ++i) numbers.push_back(Next<Number>());
    return numbers;
  }
  bool IsAtEnd() const { return at == bytes.size(); }

 private:
  std::string bytes;
  std::size_t at = 0;
};

using Ids = std::vector<std::uint32_t>;
using Floats = std::vector<float>;
constexpr std::uint32_t kNone = 0xFFFFFFFF;
using Doubles = std::vector<double>;

ModelPolyline Line(std::vector<double> coordinates, int colour = -1) {
  ModelPolyline line;
  line.coordinates = std::move(coordinates);
  line.colour = colour;
  return line;
}

ProductModel Model(std::vector<ModelPolyline> polylines) {
  ProductModel model;
  model.products.emplace_back();
  model.products[0].polylines = std::move(polylines);
  model.roots = {0};
  return model;
}

std::string Encode(ProductModel const& model) {
  std::string leftOut = "before";
  std::string bytes = PictureData::Encode(model, leftOut);
  EXPECT_EQ(leftOut, "");
  return bytes;
}

}  // namespace

TEST(PictureDataTest, EncodesPolylines) {
  Numbers numbers(
      Encode(Model({Line({8, 0, 0, 16, 4, 2}, 1), Line({0, 0, 0, 8, 0, 0, 8, 4, 0}, 0), Line({0, 0, 0, 0, 0, 2}, 1)})));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 7, 3, 2, 0, 0, 0, 0}));
  EXPECT_EQ(numbers.Next<double>(3), (Doubles{8, 2, 1}));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0, 0, 7, 3, 2, 0, 0, 0, kNone, 0}));
  EXPECT_EQ(numbers.Next<float>(21), (Floats{-8, -2, -1, 0, -2, -1, 0,  2,  -1,  // colour 0
                                             0,  -2, -1, 8, 2,  1,  -8, -2, -1, -8, -2, 1}));
  EXPECT_EQ(numbers.Next<std::uint16_t>(4), (std::vector<std::uint16_t>{3, 2, 2, 0}));
  EXPECT_EQ(numbers.Next<std::int32_t>(4), (std::vector<std::int32_t>{1, 0, 2, 1}));
  EXPECT_TRUE(numbers.IsAtEnd());
}

TEST(PictureDataTest, EncodesMeshesAndTheirEdges) {
  ProductModel model = Model({});
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 4, 0, 0, 0, 2, 0};
  mesh.triangles = {0, 1, 2};
  mesh.colour = 3;
  ModelMesh second = mesh;
  second.normals = {0, 0, 1, 0, 0, -1, 0.6, 0, 0.8};
  second.triangles = {2, 1, 0, 0, 1, 7};
  second.colour = -1;
  model.products[0].meshes = {mesh, second};
  Numbers numbers(Encode(model));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 12, 6, 1, 6, 2, 2, 0}));
  EXPECT_EQ(numbers.Next<double>(3), (Doubles{2, 1, 0}));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0, 0, 12, 6, 1, 6, 2, 2, kNone, 0}));
  numbers.Next<float>(36);
  EXPECT_EQ(numbers.Next<std::uint16_t>(6), (std::vector<std::uint16_t>{2, 2, 2, 2, 2, 2}));
  EXPECT_EQ(numbers.Next<std::int32_t>(2), (std::vector<std::int32_t>{6, -1}));
  EXPECT_EQ(numbers.Next<float>(18), (Floats{-2, -1, 0, 2, -1, 0, -2, 1, 0, -2, -1, 0, 2, -1, 0, -2, 1, 0}));
  std::vector<std::int8_t> const normals = {0, 0, 0,   0, 0, 0, 0,    0, 0,  0, 0,   0,  //
                                            0, 0, 127, 0, 0, 0, -127, 0, 76, 0, 102, 0};
  EXPECT_EQ(numbers.Next<std::int8_t>(24), normals);
  EXPECT_EQ(numbers.Next<std::uint32_t>(6), (Ids{0, 1, 2, 5, 4, 3}));
  EXPECT_EQ(numbers.Next<std::int32_t>(4), (std::vector<std::int32_t>{1, 3, 1, -1}));
  EXPECT_TRUE(numbers.IsAtEnd());
}

TEST(PictureDataTest, EncodesAnnotations) {
  ProductModel model = Model({});
  model.annotations.resize(3);
  model.annotations[2].product = 7;
  model.annotations[2].polylines = {Line({0, 0, 0, 2, 0, 0})};
  Numbers numbers(Encode(model));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 2, 1, 1, 0, 0, 0, 0}));
  EXPECT_EQ(numbers.Next<double>(3), (Doubles{1, 0, 0}));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{1, 2, 2, 1, 1, 0, 0, 0, 7, 0}));
}

TEST(PictureDataTest, KeepsDetailsFarFromOrigin) {
  Numbers numbers(Encode(Model({Line({1e9, 0, 0, 1e9 + 0.5, 0, 0, 1e9 + 1, 0, 0})})));
  numbers.Next<std::uint32_t>(10);
  EXPECT_EQ(numbers.Next<double>(3), (Doubles{1000000000.5, 0, 0}));
  numbers.Next<std::uint32_t>(10);
  EXPECT_EQ(numbers.Next<float>(9), (Floats{-0.5, 0, 0, 0, 0, 0, 0.5, 0, 0}));
}

TEST(PictureDataTest, KeepsTinyShapes) {
  Numbers numbers(Encode(Model({Line({0, 0, 0, 1e-9, 0, 0})})));
  numbers.Next<std::uint32_t>(10);
  numbers.Next<double>(3);
  numbers.Next<std::uint32_t>(10);
  EXPECT_NEAR(static_cast<double>(numbers.Next<float>()), -5e-10, 1e-15);
}

TEST(PictureDataTest, SkipsInvalidNumbers) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  Numbers numbers(Encode(Model({Line({0, 0, 0, 1, 0, 0, nan, 0, 0, 2, 0, 0, 1e300, 0, 0, 3, 0, 0, 4, 0, 0})})));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 4, 2, 1, 0, 0, 0, 0}));

  ProductModel model = Model({Line({0, 0, 0, 1, 0, 0})});
  ModelMesh mesh;
  mesh.points = {nan, 0, 0, 4, 0, 0, 0, 2, 0};
  mesh.triangles = {0, 1, 2};
  model.products[0].meshes = {mesh};
  EXPECT_EQ(Numbers(Encode(model)).Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 2, 1, 1, 0, 0, 0, 0}));
  for (ProductModel const& empty :
       {ProductModel(), Model({}), Model({Line({nan, nan, nan, 0, 0, 0})}), Model({Line({1, 2})})}) {
    EXPECT_EQ(Encode(empty), "");
  }
}

TEST(PictureDataTest, SplitsLongPolylines) {
  std::vector<double> coordinates;
  for (int i = 0; i < 65537; ++i) coordinates.insert(coordinates.end(), {i * 1.0, 0.0, 0.0});
  Numbers numbers(Encode(Model({Line(coordinates)})));
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 65538, 2, 1, 0, 0, 0, 0}));
  numbers.Next<double>(3);
  numbers.Next<std::uint32_t>(10);
  numbers.Next<float>(3 * 65538);
  EXPECT_EQ(numbers.Next<std::uint16_t>(2), (std::vector<std::uint16_t>{65535, 3}));
}

TEST(PictureDataTest, LeavesOutShortestEdges) {
  std::vector<ModelPolyline> lines;
  for (int i = 1; i <= 100; ++i) lines.push_back(Line({0, 0, 0, i * 1.0, 0, 0}));
  PictureData::Limits limits;
  limits.points = 60;
  std::string leftOut;
  Numbers numbers(PictureData::Encode(Model(lines), leftOut, limits));
  EXPECT_EQ(leftOut, "The picture leaves out the 70 shortest of 100 edges.");
  EXPECT_EQ(numbers.Next<std::uint32_t>(10), (Ids{0x43495042, 1, 1, 60, 30, 1, 0, 0, 0, 0}));
  numbers.Next<double>(3);
  numbers.Next<std::uint32_t>(10);
  EXPECT_EQ(numbers.Next<float>(6), (Floats{-50, 0, 0, 21, 0, 0}));

  ProductModel model = Model({Line({0, 0, 0, 1, 0, 0})});
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 4, 0, 0, 0, 2, 0};
  mesh.triangles = {0, 1, 2, 2, 1, 0, 1, 2, 0};
  model.products[0].meshes = {mesh};
  limits.triangles = 1;
  PictureData::Encode(model, leftOut, limits);
  EXPECT_EQ(leftOut, "The picture leaves out 2 of 3 triangles.");
}

// 4,000,002 points of two edges, and 2,000,001 triangles.
TEST(PictureDataTest, LimitsPicture) {
  std::vector<double> points;
  for (int i = 0; i <= 2'000'000; ++i) points.insert(points.end(), {i * 1.0, 0, 0});
  ModelPolyline longer = Line(points);
  for (double& coordinate : points) coordinate /= 2;
  ProductModel model = Model({Line(points), longer});
  std::string leftOut;
  EXPECT_FALSE(PictureData::Encode(model, leftOut).empty());
  EXPECT_EQ(leftOut, "The picture leaves out the 1 shortest of 2 edges.");
  ModelMesh mesh;
  mesh.points = {0, 0, 0, 4, 0, 0, 0, 2, 0};
  for (int i = 0; i <= 2'000'000; ++i) mesh.triangles.insert(mesh.triangles.end(), {0, 1, 2});
  model = Model({Line({0, 0, 0, 1, 0, 0})});
  model.products[0].meshes = {mesh};
  EXPECT_FALSE(PictureData::Encode(model, leftOut).empty());
  EXPECT_EQ(leftOut, "The picture leaves out 1 of 2000001 triangles.");
}

#ifdef BRIVET_HAS_SHAPE

#include "ShapeAnswer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "ShapeProtocol.h"

namespace {

template <class Number>
std::string Bytes(std::vector<Number> const& numbers) {
  std::string bytes(numbers.size() * sizeof(Number), '\0');
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return bytes;
}

std::string Record(std::uint32_t kind, std::string const& content) {
  return Bytes<std::uint32_t>({kind, static_cast<std::uint32_t>(content.size())}) + content;
}

std::string MeshContent(double coordinate = 2, std::uint32_t index = 2, float normal = 1) {
  return Bytes<std::uint32_t>({1, 20, 10, 3, 1}) + Bytes<double>({0, 0, 0, coordinate, 0, 0, 0, 1, 0}) +
         Bytes<float>({0, 0, 1, 0, 0, 1, 0, 0, normal}) + Bytes<std::uint32_t>({0, 1, index});
}

std::string Properties(std::uint32_t product, std::uint32_t flags, double volume) {
  return Record(2, Bytes<std::uint32_t>({product, flags}) + Bytes<double>({volume, 6, 1, 2, 3, -1, -2, -3, 4, 5, 6}));
}

std::string Done(std::uint32_t product) {
  return Record(4, Bytes<std::uint32_t>({product}));
}

std::string End(std::uint32_t count) {
  return Record(5, Bytes<std::uint32_t>({count}));
}

std::string const kHeader(kShapeHeader);

std::string Whole() {
  return kHeader + Record(1, MeshContent()) + Properties(1, 3, 8) + Done(1) +
         Record(3, Bytes<std::uint32_t>({7}) + "no shape") + End(4);
}

std::string InvalidReason(std::string const& bytes) {
  ShapeAnswer answer(2, 1'000'000);
  answer.Add(bytes);
  EXPECT_FALSE(answer.IsComplete());
  return answer.InvalidReason();
}

}  // namespace

TEST(ShapeAnswerTest, ParsesWhole) {
  ShapeAnswer answer(2, 1'000'000);
  EXPECT_TRUE(answer.Add(Whole()));
  EXPECT_TRUE(answer.IsComplete());
  EXPECT_FALSE(answer.Products()[0].isDone);
  ShapeAnswer::Product const& product = answer.Products()[1];
  EXPECT_TRUE(product.isDone);
  ASSERT_EQ(product.faces.size(), 1U);
  EXPECT_EQ(product.faces[0].instance, 20U);
  EXPECT_EQ(product.faces[0].item, 10U);
  EXPECT_EQ(product.faces[0].mesh.points, (std::vector<double>{0, 0, 0, 2, 0, 0, 0, 1, 0}));
  EXPECT_EQ(product.faces[0].mesh.normals, (std::vector<double>{0, 0, 1, 0, 0, 1, 0, 0, 1}));
  EXPECT_EQ(product.faces[0].mesh.triangles, (std::vector<std::uint32_t>{0, 1, 2}));
  ASSERT_TRUE(product.computed.has_value());
  EXPECT_EQ(product.computed->volume, 8);
  EXPECT_EQ(product.computed->area, 6);
  EXPECT_EQ(product.computed->centroid[2], 3);
  EXPECT_EQ(product.computed->extent.low[1], -2);
  EXPECT_EQ(product.computed->extent.high[2], 6);
  ASSERT_EQ(answer.Problems().size(), 1U);
  EXPECT_EQ(answer.Problems()[0].instance, 7U);
  EXPECT_EQ(answer.Problems()[0].text, "no shape");
}

TEST(ShapeAnswerTest, ParsesPieces) {
  std::string const whole = Whole();
  ShapeAnswer answer(2, whole.size());
  for (std::size_t i = 0; i < whole.size(); ++i) {
    EXPECT_FALSE(answer.IsComplete());
    ASSERT_TRUE(answer.Add(whole.substr(i, 1))) << i;
  }
  EXPECT_TRUE(answer.IsComplete());
  EXPECT_EQ(answer.Products()[1].faces.size(), 1U);
}

TEST(ShapeAnswerTest, IsIncompleteBeforeEnd) {
  std::string const whole = Whole();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    ShapeAnswer answer(2, 1'000'000);
    EXPECT_TRUE(answer.Add(whole.substr(0, size))) << size;
    EXPECT_FALSE(answer.IsComplete()) << size;
  }
}

TEST(ShapeAnswerTest, KeepsPropertiesWithoutMass) {
  ShapeAnswer answer(1, 1'000'000);
  EXPECT_TRUE(answer.Add(kHeader + Properties(0, kHasBox, 0) + Done(0) + End(2)));
  EXPECT_FALSE(answer.Products()[0].computed.has_value());
}

TEST(ShapeAnswerTest, RefusesInvalidBytes) {
  constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  std::string const damaged = "it sends a damaged record";
  EXPECT_EQ(InvalidReason("BRVSHP02"), "it is of another version");
  EXPECT_EQ(InvalidReason("x"), "it is of another version");
  EXPECT_EQ(InvalidReason(kHeader + Record(6, "")), "it sends an unknown record");
  EXPECT_EQ(InvalidReason(kHeader + Record(0, "")), "it sends an unknown record");
  EXPECT_EQ(InvalidReason(kHeader + Bytes<std::uint32_t>({1, 0xFFFFFFFFU})), "it announces too much");
  EXPECT_EQ(InvalidReason(std::string(1'000'001, 'x')), "it sends too much");
  EXPECT_EQ(InvalidReason(kHeader + End(0) + "x"), "it sends more than it announces");
  EXPECT_EQ(InvalidReason(kHeader + End(0) + End(1)), "it sends more than it announces");
  EXPECT_EQ(InvalidReason(kHeader + End(1)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(5, "")), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Done(2)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Done(1) + Done(1)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Done(1) + Record(1, MeshContent())), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Done(1) + Properties(1, 3, 8)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Properties(2, 3, 8)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Properties(0, 4, 8)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Properties(0, 3, kNotANumber)), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(2, "")), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(3, "abc")), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(3, std::string(505, 'x'))), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, "")), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent() + "x")), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent(kNotANumber))), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent(-kInfinite))), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent(2e15))), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent(2, 3))), damaged);
  EXPECT_EQ(InvalidReason(kHeader + Record(1, MeshContent(2, 2, 0.5F))), damaged);
  // Counts whose product exceeds 32 bits.
  EXPECT_EQ(InvalidReason(kHeader + Record(1, Bytes<std::uint32_t>({1, 20, 10, 0xFFFFFFFFU, 0xFFFFFFFFU}))), damaged);
}

TEST(ShapeAnswerTest, StaysInvalid) {
  ShapeAnswer answer(2, 1'000'000);
  EXPECT_FALSE(answer.Add("x"));
  EXPECT_FALSE(answer.Add(Whole()));
  EXPECT_FALSE(answer.IsComplete());
}

#endif

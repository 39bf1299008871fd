#include "BinaryStlWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "MeshFixture.h"

namespace {

// IEEE 754 single precision.
constexpr std::uint32_t kZero = 0;
constexpr std::uint32_t kHalf = 0x3F000000;
constexpr std::uint32_t kOne = 0x3F800000;
constexpr std::uint32_t kTwo = 0x40000000;
constexpr std::uint32_t kThree = 0x40400000;
constexpr std::uint32_t kFour = 0x40800000;
constexpr std::uint32_t kMinus = 0x80000000;

std::string Padded(std::string header) {
  header.resize(80, ' ');
  return header;
}

}  // namespace

TEST(BinaryStlWriterTest, WritesTriangle) {
  std::string const expected =
      Padded("binary STL by brivet, unit half") + Words({1}) +
      Words({kZero, kZero, kOne, kZero, kZero, kZero, kTwo, kZero, kZero, kZero, kOne, kZero}) + std::string(2, '\0');
  EXPECT_EQ(Written<BinaryStlWriter>(PlateModel()), expected);
}

// The mirrored triangle has its corners in reverse, so that its normal is still that of its outer side.
TEST(BinaryStlWriterTest, PlacesOccurrences) {
  std::string const expected =
      Padded("binary STL by brivet, unit metre") + Words({2}) +
      Words({kZero, kZero, kOne, kThree, kZero, kZero, kFour, kZero, kZero, kThree, kHalf, kZero}) +
      std::string(2, '\0') +
      Words({kZero, kZero, kOne, kZero, kHalf, kZero, kMinus | kOne, kZero, kZero, kZero, kZero, kZero}) +
      std::string(2, '\0');
  EXPECT_EQ(Written<BinaryStlWriter>(AssemblyModel()), expected);
}

TEST(BinaryStlWriterTest, WritesNoNormalOfDegenerateTriangle) {
  ProductModel model = PlateModel();
  model.products[0].meshes = {Mesh({0, 0, 0, 1, 0, 0, 2, 0, 0}, {0, 1, 2})};
  EXPECT_EQ(Written<BinaryStlWriter>(model).substr(84, 12), std::string(12, '\0'));
}

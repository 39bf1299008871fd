#include "MeshOutput.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "MeshFixture.h"
#include "PageFixture.h"

namespace {

std::string Bytes(std::function<void(MeshOutput&)> const& write) {
  ByteStream target;
  CheckedOutputStream stream(&target);
  MeshOutput output(stream);
  write(output);
  output.Flush();
  return target.bytes;
}

}  // namespace

TEST(MeshOutputTest, WritesLeastSignificantByteFirst) {
  EXPECT_EQ(Bytes([](MeshOutput& output) {
              output.PutUint16(0x0102);
              output.PutUint32(0xA1B2C3D4U);
              output.PutFloat(-2.0F);
            }),
            std::string("\x02\x01\xD4\xC3\xB2\xA1\0\0\0\xC0", 10));
}

TEST(MeshOutputTest, WritesDecimals) {
  struct Row {
    double number;
    char const* expected;
  };
  for (Row const& row : {Row{0.0, "0"}, Row{-0.0, "0"}, Row{1.0 / 3.0, "0.333333333"}, Row{-1e-20, "-1e-20"},
                         Row{25.4, "25.4"}, Row{123456789012.0, "1.23456789e+11"}}) {
    EXPECT_EQ(Bytes([&row](MeshOutput& output) { output.PutDecimal(row.number); }), row.expected);
  }
}

TEST(MeshOutputTest, WritesInBlocks) {
  PieceStream target;
  CheckedOutputStream stream(&target);
  MeshOutput output(stream);
  output.Put(std::string(1'000'000, 'x'));
  for (int i = 0; i < 100'000; ++i) output.PutUint32(1);
  output.Flush();
  EXPECT_EQ(target.total, 1'400'000);
  EXPECT_LE(target.largest, 131'072);
}

TEST(MeshOutputTest, ThrowsIfStreamIsFull) {
  FullStream target(10);
  CheckedOutputStream stream(&target);
  MeshOutput output(stream);
  output.Put("0123456789a");
  EXPECT_THROW(output.Flush(), CheckedOutputStream::Failure);
}

// Geometry of the interactive picture of a page.
#pragma once

#include <cstddef>
#include <string>

struct ProductModel;

// Encodes edges, triangles and annotations as binary data for page/view.js. Each product is stored once, no matter how
// often it is placed. All numbers are little-endian:
//
//   10 uint32         kMagic, kVersion, then the numbers of records, points, polylines, runs, mesh points, triangles,
//                     mesh runs; 0
//   records           56 bytes each: 3 float64 origin; uint32 kind (0 product, 1 annotation), index in the model, and
//   the
//                     numbers of points, polylines, runs, mesh points, triangles and mesh runs of this record
//   points            3 float32 each, relative to the origin of the record
//   polylines         uint16 number of points of each; two zero bytes if their number is odd
//   runs              uint32 number of polylines, int32 index of their colour or -1
//   mesh points       3 float32 each, relative to the origin
//   normals           4 int8 of each mesh point: the normal times 127 and a zero; zeros if it has none
//   triangles         3 uint32 each, indices of the mesh points of the record
//   mesh runs         uint32 number of triangles, int32 index of their colour or -1
//
// Records follow each other in the arrays. Coordinates are rounded to less than a millionth of the size of the record,
// which makes them compress well. A product that has triangles but no edges gets their boundaries and sharp edges.
// Numbers that are not finite are skipped.
struct PictureData {
  static constexpr unsigned int kMagic = 0x43495042;  // "BPIC"
  static constexpr unsigned int kVersion = 1;

  // At most this many are encoded; the shortest edges, and the last triangles, are left out.
  struct Limits {
    std::size_t points = 4'000'000;
    std::size_t triangles = 2'000'000;
  };

  // Returns the data, or an empty string if there is nothing to show. Sets `leftOut` to a sentence for readers if a
  // limit is reached, otherwise to an empty string.
  static std::string Encode(ProductModel const& model, std::string& leftOut, Limits const& limits);
  static std::string Encode(ProductModel const& model, std::string& leftOut) {
    return Encode(model, leftOut, Limits());
  }
};

// Bytes that brivet-shape-worker writes to its standard output.
//
// A header of kShapeHeader, then records: the kind and the size of the content as 32-bit numbers, and the content. Both
// processes run on one machine, so that numbers have its byte order. Coordinates are in millimetres.
//
//   Mesh        product, face, item: std::uint32_t, an instance or 0 each; points, triangles: std::uint32_t counts;
//               3 double for each point, 3 float for the normal of each point, 3 std::uint32_t for each triangle
//   Properties  product, flags: std::uint32_t; 11 double: volume, area, centroid, least and largest corner of the box
//   Problem     instance: std::uint32_t, or 0; the rest is a text in UTF-8 of at most kProblemSize bytes
//   Done        product: std::uint32_t; all records about the product precede it
//   End         std::uint32_t: number of the records before; nothing follows
//
// A product is its number in the request, which the worker reads from standard input, in lines:
//
//   PARTS SHARE ANGLE      ShapeEvaluator::Parts, deflection as a share of the diagonal, angle in radians
//   IS-MESHED ID ID ...    for each product: 1 or 0, and the numbers of its representations
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

enum class ShapeRecord : std::uint32_t { Mesh = 1, Properties = 2, Problem = 3, Done = 4, End = 5 };

constexpr std::string_view kShapeHeader = "BRVSHP01";
constexpr std::size_t kMeshHeaderSize = 20;
constexpr std::size_t kPointSize = 3 * sizeof(double);
constexpr std::size_t kNormalSize = 3 * sizeof(float);
constexpr std::size_t kTriangleSize = 3 * sizeof(std::uint32_t);
constexpr std::size_t kPropertyCount = 11;
constexpr std::size_t kProblemSize = 500;
constexpr std::uint32_t kHasMass = 1;  // flags of Properties: volume, area and centroid; the box
constexpr std::uint32_t kHasBox = 2;

// Exit statuses of the worker, next to 0.
constexpr int kWorkerFailed = 1;
constexpr int kWorkerOutOfMemory = 7;
constexpr int kWorkerUnreadable = 21;   // the engine cannot read the file
constexpr int kWorkerNotStarted = 127;  // of the loader of programs, if a library is missing or of another version

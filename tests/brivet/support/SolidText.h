// Exact solids for tests, as STEP with the contexts of ModelFixture.h.
#pragma once

#include <string>
#include <vector>

#include "ModelFixture.h"

// Writes the instances of a product with a solid. Ids count from a first one; the product has the base id of
// ProductText, 100.
class SolidText {
 public:
  explicit SolidText(int firstId) : next(firstId) {}

  std::string const& Text() const { return text; }

  int Add(std::string const& record) {
    text += "#" + std::to_string(next) + "=" + record + ";\n";
    return next++;
  }
  int Point(double x, double y, double z) { return Add("CARTESIAN_POINT('',(" + Triple(x, y, z) + "))"); }
  int Direction(double x, double y, double z) { return Add("DIRECTION('',(" + Triple(x, y, z) + "))"); }
  int Vertex(double x, double y, double z) {
    int const point = Point(x, y, z);
    return Add("VERTEX_POINT('',#" + std::to_string(point) + ")");
  }
  int Placement(int point, int axis, int reference) {
    return Add("AXIS2_PLACEMENT_3D('',#" + std::to_string(point) + ",#" + std::to_string(axis) + ",#" +
               std::to_string(reference) + ")");
  }
  // Edge between the points of two vertices.
  int Line(int first, int last, double const* from, double const* to) {
    int const point = Point(from[0], from[1], from[2]);
    int const direction = Direction(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
    int const vector = Add("VECTOR('',#" + std::to_string(direction) + ",1.)");
    int const line = Add("LINE('',#" + std::to_string(point) + ",#" + std::to_string(vector) + ")");
    return Edge(first, last, line);
  }
  int Edge(int first, int last, int curve) {
    return Add("EDGE_CURVE('',#" + std::to_string(first) + ",#" + std::to_string(last) + ",#" + std::to_string(curve) +
               ",.T.)");
  }
  // Face with one bound; an edge is negative if it is reversed.
  int Face(std::vector<int> const& edges, int surface, bool isSameSense = true) {
    std::vector<int> oriented;
    for (int const edge : edges) {
      oriented.push_back(
          Add("ORIENTED_EDGE('',*,*,#" + std::to_string(edge < 0 ? -edge : edge) + (edge < 0 ? ",.F.)" : ",.T.)")));
    }
    int const loop = Add("EDGE_LOOP('',(" + List(oriented) + "))");
    int const bound = Add("FACE_OUTER_BOUND('',#" + std::to_string(loop) + ",.T.)");
    return Add("ADVANCED_FACE('',(#" + std::to_string(bound) + "),#" + std::to_string(surface) +
               (isSameSense ? ",.T.)" : ",.F.)"));
  }
  int Solid(std::vector<int> const& faces) {
    int const shell = Add("CLOSED_SHELL('',(" + List(faces) + "))");
    return Add("MANIFOLD_SOLID_BREP('',#" + std::to_string(shell) + ")");
  }

  static std::string List(std::vector<int> const& ids) {
    std::string list;
    for (int const id : ids) list += (list.empty() ? "#" : ",#") + std::to_string(id);
    return list;
  }

 private:
  static std::string Triple(double x, double y, double z) {
    return std::to_string(x) + "," + std::to_string(y) + "," + std::to_string(z);
  }

  int next;
  std::string text;
};

// A solid box from (0, 0, 0); its faces are x = 0, x = a, y = 0, y = b, z = 0, z = c. Sets their ids and that of the
// solid.
inline std::string BoxText(int firstId, double a, double b, double c, std::vector<int>& faces, int& solid) {
  SolidText text(firstId);
  double corners[8][3];
  int vertices[8];
  for (int i = 0; i < 8; ++i) {
    corners[i][0] = (i & 1) != 0 ? a : 0;
    corners[i][1] = (i & 2) != 0 ? b : 0;
    corners[i][2] = (i & 4) != 0 ? c : 0;
    vertices[i] = text.Vertex(corners[i][0], corners[i][1], corners[i][2]);
  }
  int edges[8][8] = {};
  for (int i = 0; i < 8; ++i) {
    for (int const bit : {1, 2, 4}) {
      int const k = i | bit;
      if (k == i) continue;
      edges[i][k] = text.Line(vertices[i], vertices[k], corners[i], corners[k]);
      edges[k][i] = -edges[i][k];
    }
  }
  // The corners of each face, counterclockwise as seen from outside, and its normal.
  struct Side {
    int corners[4];
    double normal[3];
    double reference[3];
  };
  static constexpr Side kSides[6] = {{{0, 4, 6, 2}, {-1, 0, 0}, {0, 1, 0}}, {{1, 3, 7, 5}, {1, 0, 0}, {0, 1, 0}},
                                     {{0, 1, 5, 4}, {0, -1, 0}, {1, 0, 0}}, {{2, 6, 7, 3}, {0, 1, 0}, {1, 0, 0}},
                                     {{0, 2, 3, 1}, {0, 0, -1}, {1, 0, 0}}, {{4, 5, 7, 6}, {0, 0, 1}, {1, 0, 0}}};
  faces.clear();
  for (Side const& side : kSides) {
    double const* const corner = corners[side.corners[0]];
    int const point = text.Point(corner[0], corner[1], corner[2]);
    int const axis = text.Direction(side.normal[0], side.normal[1], side.normal[2]);
    int const reference = text.Direction(side.reference[0], side.reference[1], side.reference[2]);
    int const placement = text.Placement(point, axis, reference);
    int const plane = text.Add("PLANE('',#" + std::to_string(placement) + ")");
    std::vector<int> loop;
    for (int i = 0; i < 4; ++i) loop.push_back(edges[side.corners[i]][side.corners[(i + 1) % 4]]);
    faces.push_back(text.Face(loop, plane));
  }
  solid = text.Solid(faces);
  return text.Text();
}

// A solid cylinder around the z axis, from z = 0 to `height`, of three faces: side, bottom and top.
inline std::string CylinderText(int firstId, double radius, double height, int& solid) {
  SolidText text(firstId);
  int const origin = text.Point(0, 0, 0);
  int const top = text.Point(0, 0, height);
  int const up = text.Direction(0, 0, 1);
  int const down = text.Direction(0, 0, -1);
  int const x = text.Direction(1, 0, 0);
  int const low = text.Placement(origin, up, x);
  int const high = text.Placement(top, up, x);
  int const below = text.Placement(origin, down, x);
  int const lowVertex = text.Vertex(radius, 0, 0);
  int const highVertex = text.Vertex(radius, 0, height);
  std::string const size = std::to_string(radius);
  int const lowCircle = text.Add("CIRCLE('',#" + std::to_string(low) + "," + size + ")");
  int const highCircle = text.Add("CIRCLE('',#" + std::to_string(high) + "," + size + ")");
  int const lowEdge = text.Edge(lowVertex, lowVertex, lowCircle);
  int const highEdge = text.Edge(highVertex, highVertex, highCircle);
  double const from[3] = {radius, 0, 0};
  double const to[3] = {radius, 0, height};
  int const seam = text.Line(lowVertex, highVertex, from, to);
  int const side = text.Add("CYLINDRICAL_SURFACE('',#" + std::to_string(low) + "," + size + ")");
  int const bottomPlane = text.Add("PLANE('',#" + std::to_string(below) + ")");
  int const topPlane = text.Add("PLANE('',#" + std::to_string(high) + ")");
  std::vector<int> const faces = {text.Face({lowEdge, seam, -highEdge, -seam}, side),
                                  text.Face({-lowEdge}, bottomPlane), text.Face({highEdge}, topPlane)};
  solid = text.Solid(faces);
  return text.Text();
}

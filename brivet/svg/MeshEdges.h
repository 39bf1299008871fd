// Edges of triangulated shapes.
#pragma once

#include <vector>

struct ModelMesh;

// Returns the boundary of a mesh and the edges where its triangles meet at more than 30 degrees, each as two points of
// three coordinates. Points at the same position count as one. Triangles with invalid indices are skipped.
std::vector<double> SharpEdges(ModelMesh const& mesh);

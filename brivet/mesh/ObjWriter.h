// Writer of Wavefront OBJ.
#pragma once

#include "MeshWriter.h"

// Writes one object for each node with meshes, in the length unit of the first root. Colours follow the coordinates of
// each vertex, "v x y z red green blue", as several programs read them, since a material library would be a second
// file. Transparency is left out.
class ObjWriter final : public MeshWriter {
 protected:
  std::string WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) override;
};

// Writer of binary STL.
#pragma once

#include "MeshWriter.h"

// Writes the triangles of all nodes, in the length unit of the first root. STL has neither names, nor colours, nor a
// structure, nor a unit; the header of 80 bytes names the unit for people.
class BinaryStlWriter final : public MeshWriter {
 protected:
  std::string WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) override;
};

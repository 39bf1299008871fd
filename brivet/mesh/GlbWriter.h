// Writer of glTF 2.0 in its binary form.
#pragma once

#include "MeshWriter.h"

// Writes a node for each node of the structure, and a mesh for each product, which its nodes share. A mesh has one
// primitive for each colour. Coordinates are in metres; the node that contains the roots turns the z axis of CAD up to
// the y axis of glTF. Names are those of the model; the ids of instances are in "extras".
class GlbWriter final : public MeshWriter {
 protected:
  std::string WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) override;
};

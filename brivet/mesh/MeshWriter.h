// Common part of the writers of meshes.
#pragma once

#include <string>

#include "MeshOutput.h"
#include "MeshScene.h"
#include "VRINResult.h"

struct BrivetWriteRequest;

// Base class of the writers. A writer writes one document:
//
//   GlbWriter writer;
//   request.result = writer.Write(request);
class MeshWriter {
 public:
  MeshWriter() = default;
  MeshWriter(MeshWriter const&) = delete;
  MeshWriter& operator=(MeshWriter const&) = delete;
  virtual ~MeshWriter() = default;

  // Evaluates the exact shapes of the document, if a module is installed for that, and writes all meshes.
  //
  // Errors, after a report: VREL_E_NOT_SUPPORTED if the document has no triangles, or too many for the format;
  // VREL_E_INVALID_FILE if it cannot be read again; VREL_E_FILE_SAVE.
  VRINResult Write(BrivetWriteRequest& request);

 protected:
  // Writes the scene, which is not empty. Returns why the format cannot represent it; empty for success.
  virtual std::string WriteScene(MeshScene const& scene, BrivetWriteRequest const& request, MeshOutput& output) = 0;
};

// Sets the normal of a triangle by its corners, of length 1, or 0 if the triangle has no area.
void ComputeNormal(double const corners[3][3], double normal[3]);

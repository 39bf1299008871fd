#include "MeshWriter.h"

#include <cmath>

#include "BrivetModule.h"
#include "Diagnostics.h"
#include "Document.h"
#include "ShapeEvaluator.h"

VRINResult MeshWriter::Write(BrivetWriteRequest& request) {
  ProductModel const* const model = GetEvaluatedModel(request, ShapeEvaluator::Meshes);
  static ProductModel const kNone;
  MeshScene const scene(model != nullptr ? *model : kNone);
  auto const refuse = [&request](std::string const& reason, std::string const& hint) {
    ReportProblem(request.shownName, reason);
    if (!hint.empty()) ReportProblem("hint", hint);
    return VREL_E_NOT_SUPPORTED;
  };
  if (scene.IsEmpty()) {
    bool const isAvailable = request.shapes != nullptr && request.shapes->IsAvailable();
    return refuse("the document contains no meshes, which " + request.format + " requires",
                  isAvailable ? "" : "the package brivet-shape meshes the exact shapes of STEP files");
  }
  if (scene.HasTooManyNodes()) {
    return refuse("the structure has more than " + std::to_string(ProductModel::kNodeLimit) + " nodes", "");
  }
  if (scene.SkippedCount() > 0) {
    std::size_t const count = scene.SkippedCount();
    ReportWarning(request.shownName, std::to_string(count) + (count == 1 ? " triangle without an area is left out"
                                                                         : " triangles without an area are left out"));
  }
  CheckedOutputStream stream(request.stream);
  try {
    MeshOutput output(stream);
    std::string const reason = WriteScene(scene, request, output);
    if (!reason.empty()) return refuse(reason, "");
    output.Flush();
  } catch (CheckedOutputStream::Failure const&) {
    return VREL_E_FILE_SAVE;
  }
  return VREL_S_OK;
}

void ComputeNormal(double const corners[3][3], double normal[3]) {
  double a[3];
  double b[3];
  for (int i = 0; i < 3; ++i) {
    a[i] = corners[1][i] - corners[0][i];
    b[i] = corners[2][i] - corners[0][i];
  }
  for (int i = 0; i < 3; ++i) {
    int const j = (i + 1) % 3;
    int const k = (i + 2) % 3;
    normal[i] = a[j] * b[k] - a[k] * b[j];
  }
  double const length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
  for (int i = 0; i < 3; ++i) normal[i] = length > 0.0 && std::isfinite(length) ? normal[i] / length : 0.0;
}

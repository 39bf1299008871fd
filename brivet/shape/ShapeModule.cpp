// Entry points of libBrivetShape.so, which evaluates the exact shapes of STEP files.
//
// The module does not link the engine, so that loading it costs nothing; brivet-shape-worker does.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "BrivetModule.h"
#include "Diagnostics.h"
#include "ModuleDescription.h"
#include "ModuleOptions.h"
#include "ShapeEvaluation.h"

namespace {

constexpr char kComponent[] = "Shape";

// Returns the path of the worker: in the folder of the module, as in the build tree, or in the folder for programs that
// other programs run. Empty if there is none.
std::string FindWorker() {
  Dl_info info;
  if (dladdr(reinterpret_cast<void*>(&FindWorker), &info) == 0) return "";
  std::unique_ptr<char, decltype(&std::free)> const resolved(realpath(info.dli_fname, nullptr), &std::free);
  if (resolved == nullptr) return "";
  std::string folder = resolved.get();
  folder.erase(folder.rfind('/') + 1);
  for (char const* each : {"", BRIVET_WORKER_FOLDER "/"}) {
    std::string path = folder + each + "brivet-shape-worker";
    if (access(path.c_str(), X_OK) == 0) return path;
  }
  return "";
}

}  // namespace

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetEvaluateShapes(BrivetEvaluateRequest& request) {
  request.result = VREL_S_OK;
  ShapeSettings settings;
  settings.worker = FindWorker();
  if (settings.worker.empty()) {
    request.model->evaluationFailure = "brivet-shape-worker is not installed";
    ReportWarning(request.shownName, "exact shapes are not evaluated: " + request.model->evaluationFailure);
    return;
  }
  ModuleOptions const options(request.options, kComponent, ModuleOptions::Reader);
  settings.deflection = options.GetDouble("Deflection", settings.deflection);
  settings.angle = options.GetDouble("Angle", settings.angle);
  settings.limits.bytes = static_cast<std::uint64_t>(options.GetInt("MemoryLimit", 8192)) << 20U;
  settings.limits.seconds = options.GetInt("TimeLimit", settings.limits.seconds);
  ShapeEvaluation(request.path, request.shownName, *request.model, request.parts).Run(settings);
}

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetShape";
  module.title = "exact shapes by Open CASCADE";
  module.version = BRIVET_VERSION;
  FormatDescription shape;
  shape.name = "shape";
  shape.title = "shapes";
  shape.component = kComponent;
  shape.extensions = {".stp", ".step", ".p21"};
  shape.evaluates = true;
  using Type = OptionDescription;
  shape.readerOptions = {
      {"Deflection",
       Type::Double,
       "0.001",
       "distance of a mesh from its surface, as a share of the diagonal",
       {},
       "0.000001",
       "0.1"},
      {"Angle", Type::Double, "0.3", "angle between neighbouring segments of a mesh, in radians", {}, "0.01", "1.5"},
      {"MemoryLimit", Type::Int, "8192", "memory that the evaluation may take, in MB", {}, "64", "16777216"},
      {"TimeLimit", Type::Int, "300", "time that the evaluation may take, in seconds", {}, "1", "604800"},
  };
  module.formats = {shape};
}

#include "ModelRecords.h"

#include <cmath>
#include <string>

#include "VRELString.h"

namespace {

constexpr double kDegreesPerRadian = 57.295779513082320876798154814105;

std::vector<float> FloatsOf(std::vector<double> const& numbers) {
  std::vector<float> floats;
  floats.reserve(numbers.size());
  for (double const number : numbers) floats.push_back(static_cast<float>(number));
  return floats;
}

}  // namespace

VRELAssemblyComponentTransform ComponentTransformOf(Placement const& placement) {
  // The record has columns, the placement rows.
  double columns[12];
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 4; ++column)
      columns[3 * column + row] = placement.Numbers()[4 * row + column];
  }
  return VRELAssemblyComponentTransform(columns, 1.0);
}

VRELRGBColor RgbColorOf(ModelColour const& colour) {
  return VRELRGBColor(static_cast<float>(colour.red), static_cast<float>(colour.green), static_cast<float>(colour.blue),
                      static_cast<float>(1.0 - colour.transparency));
}

VRELUnit LengthUnitOf(ModelUnits const& units) {
  VRELUnit unit = VRELUnitUnknown;
  return GetVRELUnit(units.metres, unit).IsSuccess() ? unit : VRELUnitUnknown;
}

VRELCamera CameraOf(ModelView const& view) {
  if (!view.camera.has_value()) return VRELCamera();
  ModelCamera const& camera = *view.camera;
  float eye[3];
  float target[3];
  float up[3];
  double distance = 0.0;
  for (int i = 0; i < 3; ++i) {
    eye[i] = static_cast<float>(camera.eye[i]);
    target[i] = static_cast<float>(camera.target[i]);
    up[i] = static_cast<float>(camera.up[i]);
    distance = std::hypot(distance, camera.target[i] - camera.eye[i]);
  }
  double const angle = camera.isPerspective ? 2.0 * std::atan2(0.5 * camera.height, distance) * kDegreesPerRadian : 0.0;
  return VRELCamera(VRELCameraTypeDefault, eye, target, up, static_cast<float>(angle), 1.0F);
}

VRELLayerFilterC LayerFilterOf(std::vector<int> const& layers, char const* name) {
  return VRELLayerFilterC(static_cast<int>(layers.size()), layers.empty() ? nullptr : layers.data(),
                          VRELString(std::string(name)), false, eLayerFilterDefault);
}

VRELSelectionSet SelectionSetOf(ModelLayer const& layer) {
  VRELSelectionSet set(VRELString(layer.name.value_or("")), false);
  for (std::string const& item : layer.items) set.AddMember(const_cast<std::string*>(&item));
  return set;
}

PolylineArrays::PolylineArrays(std::vector<ModelPolyline> const& polylines) {
  for (ModelPolyline const& each : polylines) {
    std::vector<float> const floats = FloatsOf(each.coordinates);
    points.insert(points.end(), floats.begin(), floats.end());
    sizes.push_back(static_cast<int>(floats.size() / 3));
  }
}

VRELPolylineSet PolylineArrays::Set(int key) const {
  VRELPolylineSet set(key);
  set.SetData(static_cast<int>(points.size() / 3), points.data(), static_cast<int>(sizes.size()), sizes.data(), 0,
              nullptr);
  return set;
}

VRINResult CopyToShell(ModelMesh const& mesh, VRELSurfacicShell& shell) {
  std::vector<float> const points = FloatsOf(mesh.points);
  std::vector<float> const normals = FloatsOf(mesh.normals);
  std::vector<int> const faces(mesh.triangles.begin(), mesh.triangles.end());
  return shell.CopyData(static_cast<int>(points.size() / 3), points.data(), static_cast<int>(normals.size() / 3),
                        normals.data(), static_cast<int>(faces.size()), faces.data(), 0, nullptr);
}

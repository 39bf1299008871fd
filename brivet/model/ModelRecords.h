// Conversions from the product model to the records of the library.
#pragma once

#include <vector>

#include "ProductModel.h"
#include "VRELAssemblyComponentTransform.h"
#include "VRELCamera.h"
#include "VRELLayerFilterC.h"
#include "VRELPolylineSet.h"
#include "VRELRGBColor.h"
#include "VRELSelectionSet.h"
#include "VRELSurfacicShell.h"
#include "VRELUnit.h"

// The records have single precision where the model has double precision. Placement::AsMorph and ModelBox::AsBox3D
// convert placements and boxes.
//
//   VRELRGBColor const colour = RgbColorOf(model.colours[0].colour);

// Returns the same mapping, with the scale 1.
VRELAssemblyComponentTransform ComponentTransformOf(Placement const& placement);

// Returns the colour; its alpha is 1 minus the transparency.
VRELRGBColor RgbColorOf(ModelColour const& colour);

// Returns the length unit of this size, or VRELUnitUnknown.
VRELUnit LengthUnitOf(ModelUnits const& units);

// Returns the camera of a view, with an angle of 0 for a parallel projection; the default camera if the view has none.
VRELCamera CameraOf(ModelView const& view);

// Returns a filter for the layers with these indices of ProductModel::layers.
VRELLayerFilterC LayerFilterOf(std::vector<int> const& layers, char const* name);

// Returns the items of a layer as a set of pointers to the strings in ModelLayer::items.
// Ownership: the layer owns the strings, and must not change as long as the set is used.
VRELSelectionSet SelectionSetOf(ModelLayer const& layer);

// Arrays of a VRELPolylineSet: x, y, z of all points, and the number of points of each polyline.
struct PolylineArrays {
  explicit PolylineArrays(std::vector<ModelPolyline> const& polylines);

  // Returns a set that refers to the arrays.
  // Ownership: the arrays must live as long as the set and its copies.
  VRELPolylineSet Set(int key) const;

  std::vector<float> points;
  std::vector<int> sizes;
};

// Copies a mesh to a shell: points, normals, and three indices from 0 for each triangle as faces.
VRINResult CopyToShell(ModelMesh const& mesh, VRELSurfacicShell& shell);

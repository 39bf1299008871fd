// Line drawing of a product model as SVG.
#pragma once

#include <cstddef>
#include <string>

struct ProductModel;

struct DrawingOptions {
  // Isometric is seen from the front, the right and above. In All, the top view is above the front view, the right view
  // is right of it, and the isometric view is in the corner.
  enum View { Isometric, Front, Top, Right, All };

  View view = Isometric;
  std::size_t limit = std::size_t{16} << 20U;  // the drawing has at most about this many bytes
};

// Writes the edges of a model as one <svg> element, without an XML declaration, so that it can also be part of a page.
//
//   std::string svg;
//   if (!WriteDrawing(model, DrawingOptions(), "part.stp", svg)) ...  // nothing to draw
//
// Coordinates are in the length unit of the model's extent, from the upper left corner of the view. Each stroke has the
// colour of its edge, or that of the text around it. Hidden lines are not removed. Where lines coincide in the
// projection, within 1/20,000 of its size, only the first one is drawn. A product that has triangles but no edges is
// drawn by the boundaries and the sharp edges of its triangles. Points that are not finite are skipped.
//
// If the edges do not fit into the limit, the shortest ones are left out, and the <desc> says how many.
//
// Returns false, and leaves `svg` unchanged, if there is nothing to draw.
bool WriteDrawing(ProductModel const& model, DrawingOptions const& options, std::string const& title, std::string& svg);

// Picture of a page: the drawing that is always shown, and the data of the interactive picture.
#pragma once

#include <cstddef>
#include <string>

struct ProductModel;

struct PagePicture {
  static constexpr std::size_t kDrawingBytes = 1048576;  // at most

  std::string drawing;   // an svg element; empty if there is nothing to draw
  std::string geometry;  // as view.js reads it; empty if there is nothing to draw
  std::string leftOut;   // a sentence for readers, or empty

  // Returns the picture of a model with geometry.
  static PagePicture Of(ProductModel const& model, std::string const& title);
};

// Summary of a product model for people.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct ProductModel;

struct ModelSummary {
  struct Row {
    std::string key;
    std::string value;
  };

  std::vector<Row> rows;          // units, extent, counts, colours, layers, properties, annotations, views
  std::vector<std::string> tree;  // the structure, a node with its children indented on each line

  // Returns rows for what the model has, and the tree, together at most `lines` lines, but never fewer than the rows.
  // Equal children share a line with their number, and levels that do not fit are left out. Values have at most about
  // `width` characters. Control characters are escaped. An empty model has an empty summary.
  static ModelSummary Of(ProductModel const& model, std::size_t lines, std::size_t width);
};

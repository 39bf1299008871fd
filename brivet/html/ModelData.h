// Product model in the data elements of a page.
#pragma once

#include <string>
#include <vector>

#include "JsonText.h"

class DataElements;
class Document;
class PageValidation;
struct ProductModel;

// Writes the product model and the types of the instances as JSON, for the scripts of the page.
//
// A list that can be long is in elements "NAME-0", "NAME-1", ..., so that a browser never parses much at once; each is
// a list of rows, and a row is a list of values in the order of the functions in the source. Placements that are the
// identity and empty extents are 0. The element "model" has the rest, and under "parts" how many elements each list
// has.
//
// A document can describe more than a browser can show; what is beyond the limits is left out and reported.
class ModelData {
 public:
  static constexpr std::size_t kPartBytes = 262144;
  static constexpr std::size_t kProducts = 200000;
  static constexpr std::size_t kOccurrences = 1000000;
  static constexpr std::size_t kRows = 100000;  // of the other lists
  static constexpr std::size_t kShapes = 100;   // of one product
  static constexpr std::size_t kValues = 100;   // of one property
  static constexpr std::size_t kNumbers = 16;   // of one value

  explicit ModelData(DataElements& target) : elements(target) {}

  // Writes everything. `model` and `validation` may be null.
  void Write(Document& document, ProductModel const* model, PageValidation const* validation = nullptr);

  // Returns a sentence for each list that was cut: "The page shows the first 200000 of 300000 products." Valid before
  // Write, for `model` and `document`.
  static std::vector<std::string> LeftOut(Document& document, ProductModel const* model);

 private:
  void WriteProducts(ProductModel const& model);
  void WriteOccurrences(ProductModel const& model);
  void WriteLayers(ProductModel const& model);
  void WriteProperties(ProductModel const& model, PageValidation const* validation);
  void WriteColours(ProductModel const& model);
  void WriteAnnotations(ProductModel const& model);
  void WriteViews(ProductModel const& model);
  void WriteTypes(Document& document);
  void WriteModel(Document& document, ProductModel const* model);

  void BeginRows(char const* list);
  // Called after each row.
  void EndRow();
  void EndRows();
  void FlushPart();

  DataElements& elements;
  JsonText rows;
  std::string name;
  long part = 0;
  JsonText parts;
};

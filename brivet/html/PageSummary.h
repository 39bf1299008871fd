// Parts of the interactive page that are shown without scripts: the summary and the header of the document.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VRINResult.h"

class Document;
struct ProductModel;

class PageSummary {
 public:
  static constexpr std::size_t kLongestValue = 4000;  // bytes of one value; longer ones are cut

  // Row of the summary; it is marked if it contains a difference.
  struct Row {
    char const* key;
    std::string value;
    bool differs = false;
  };

  // Returns the rows of the summary and the banner if something is lost or left out, as markup. `model` may be null;
  // `computed` follows its rows.
  static std::string Summary(Document& document, ProductModel const* model, std::vector<std::string> const& leftOut,
                             std::vector<Row> const& computed = {});
  // Returns the rows of the header, as markup; empty if it has none.
  static std::string Header(Document& document);
  // Returns a string as pages show it: with controls escaped, as HTML, cut at kLongestValue.
  static std::string DisplayText(std::string_view utf8);
};

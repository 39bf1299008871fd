#include "ProductModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

bool IsBlank(std::string const& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

int ColourByte(double component) {
  if (!(component > 0.0)) return 0;
  return static_cast<int>(std::lround(std::min(component, 1.0) * 255.0));
}

}  // namespace

std::string ModelColour::Hexadecimal() const {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(ColourByte(red)),
                static_cast<unsigned>(ColourByte(green)), static_cast<unsigned>(ColourByte(blue)));
  return text;
}

std::string ModelProduct::DisplayName() const {
  if (name.has_value() && !IsBlank(*name)) return *name;
  return id.value_or("");
}

char const* ModelProperty::KindName() const noexcept {
  static constexpr char const* kNames[] = {"validation", "material", "attribute", "other"};
  return kNames[kind];
}

char const* ModelAnnotation::NameOf(Kind kind) noexcept {
  static constexpr char const* kNames[] = {"dimension", "tolerance", "datum", "note", "placeholder", "other"};
  return kNames[kind];
}

char const* ModelAnnotation::FormName() const noexcept {
  static constexpr char const* kNames[] = {"polyline", "tessellated", "semantic"};
  return kNames[form];
}

std::string ProductModel::NodeName(int product, int occurrence) const {
  if (occurrence >= 0) {
    auto const& name = occurrences[static_cast<std::size_t>(occurrence)].name;
    if (name.has_value() && !IsBlank(*name)) return *name;
  }
  return product >= 0 ? products[static_cast<std::size_t>(product)].DisplayName() : std::string();
}

// Counts bottom up: a product is counted once, not at each of its uses. An explicit stack replaces recursion,
// since structures can be as deep as the file is long.
long ProductModel::CountNodes(int product) const {
  std::vector<long> counts(products.size(), -1);
  std::vector<int> pending{product};
  while (!pending.empty()) {
    auto const index = static_cast<std::size_t>(pending.back());
    if (counts[index] >= 0) {
      pending.pop_back();
      continue;
    }
    long count = 1;
    bool isReady = true;
    for (int const occurrence : products[index].occurrences) {
      int const child = occurrences[static_cast<std::size_t>(occurrence)].child;
      long const below = counts[static_cast<std::size_t>(child)];
      if (below < 0) {
        pending.push_back(child);
        isReady = false;
      } else {
        count = std::min(count + below, kNodeLimit + 1);
      }
    }
    if (!isReady) continue;
    counts[index] = count;
    pending.pop_back();
  }
  return counts[static_cast<std::size_t>(product)];
}

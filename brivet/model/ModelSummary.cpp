#include "ModelSummary.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <unordered_map>

#include "EscapedText.h"
#include "ProductModel.h"

// The tree is cut at the deepest level at which it fits. Levels are tried one after the other; each attempt ends at the
// first line that is too many, so that structures with very many nodes cost no more than small ones. Children are
// grouped by their product once for each product.

namespace {

constexpr std::size_t kNameWidth = 40;  // characters of one name
constexpr int kDepthLimit = 12;
constexpr char kTimes[] = " \xC3\x97";
constexpr char kEllipsis[] = "...";

// Returns the number of characters of UTF-8.
std::size_t WidthOf(std::string const& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

// Returns the beginning of a string, at most `width` characters, with controls escaped.
std::string Shown(std::string const& text, std::size_t width) {
  std::size_t end = 0;
  std::size_t count = 0;
  while (end < text.size()) {
    if ((static_cast<unsigned char>(text[end]) & 0xC0U) != 0x80U && ++count > width) break;
    ++end;
  }
  std::string shown;
  AppendEscapingControls(shown, std::string_view(text).substr(0, end));
  return end < text.size() ? shown + kEllipsis : shown;
}

std::string Number(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

std::string Counted(long number, std::string const& thing) {
  return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

// Joins strings with commas up to a width; the rest is a number: "a, b, and 3 more".
class List {
 public:
  explicit List(std::size_t width) : limit(width) {}

  void Add(std::string const& item) {
    std::size_t const size = WidthOf(item) + 2;
    if (hidden > 0 || (!text.empty() && used + size > limit)) {
      ++hidden;
      return;
    }
    if (!text.empty()) text += ", ";
    text += item;
    used += size;
  }
  std::string Text() const { return hidden == 0 ? text : text + ", and " + std::to_string(hidden) + " more"; }

 private:
  std::size_t const limit;
  std::size_t used = 0;
  long hidden = 0;
  std::string text;
};

class Tree {
 public:
  Tree(ProductModel const& described, std::size_t lineLimit) : model(described), limit(lineLimit) {}

  std::vector<std::string> Lines() {
    std::vector<std::string> best;
    for (int depth = 0; depth <= kDepthLimit && limit > 0; ++depth) {
      lines.clear();
      isCut = false;
      bool const fits = AddAll(depth);
      if (fits || depth == 0) best = lines;
      if (!fits || !isCut) break;
    }
    return best;
  }

 private:
  struct Group {
    int product;
    int occurrence;  // the first one
    long count;
  };

  // Returns false if the tree down to this depth has too many lines; then it is cut there.
  bool AddAll(int depth) {
    for (std::size_t i = 0; i < model.roots.size(); ++i) {
      if (lines.size() + 1 >= limit && i + 1 < model.roots.size()) {
        lines.push_back("and " + std::to_string(model.roots.size() - i) + " more");
        return false;
      }
      if (!Add({model.roots[i], -1, 1}, 0, depth)) return false;
    }
    return true;
  }

  bool Add(Group const& group, int level, int depth) {
    if (lines.size() >= limit) return false;
    std::string line(2 * static_cast<std::size_t>(level), ' ');
    bool const isSingle = group.count == 1;
    std::string const name = model.NodeName(group.product, isSingle ? group.occurrence : -1);
    line += name.empty() ? "(no name)" : Shown(name, kNameWidth);
    if (!isSingle) line += kTimes + std::to_string(group.count);
    auto const& children = model.products[static_cast<std::size_t>(group.product)].occurrences;
    if (level == depth && !children.empty()) {
      isCut = true;
      line += " (" + Counted(static_cast<long>(children.size()), "part") + ")";
    }
    lines.push_back(std::move(line));
    if (level == depth) return true;
    for (Group const& each : GroupsOf(group.product)) {
      if (!Add(each, level + 1, depth)) return false;
    }
    return true;
  }

  std::vector<Group> const& GroupsOf(int product) {
    auto const [found, isNew] = groups.try_emplace(product);
    if (!isNew) return found->second;
    std::unordered_map<int, std::size_t> places;
    for (int const index : model.products[static_cast<std::size_t>(product)].occurrences) {
      int const child = model.occurrences[static_cast<std::size_t>(index)].child;
      auto const [place, isFirst] = places.try_emplace(child, found->second.size());
      if (isFirst) found->second.push_back({child, index, 0});
      ++found->second[place->second].count;
    }
    return found->second;
  }

  ProductModel const& model;
  std::size_t const limit;
  std::vector<std::string> lines;
  std::unordered_map<int, std::vector<Group>> groups;
  bool isCut = false;
};

class Rows {
 public:
  Rows(ProductModel const& described, std::size_t valueWidth) : model(described), width(valueWidth) {}

  std::vector<ModelSummary::Row> All() {
    AddUnits();
    AddExtent();
    AddProducts();
    AddColours();
    AddLayers();
    AddProperties();
    AddAnnotations();
    return std::move(rows);
  }

 private:
  void Put(char const* key, std::string value) { rows.push_back({key, std::move(value)}); }

  void AddUnits() {
    List names(width);
    std::set<std::string> known;
    for (ModelUnits const& each : model.units) {
      std::string name = Shown(each.lengthName, kNameWidth);
      if (!each.angleName.empty()) name += " and " + Shown(each.angleName, kNameWidth);
      if (known.insert(name).second) names.Add(name);
    }
    if (!known.empty()) Put("unit", names.Text());
  }

  void AddExtent() {
    if (model.extent.isEmpty) return;
    std::string text;
    for (int i = 0; i < 3; ++i) text += (i > 0 ? " x " : "") + Number(model.extent.high[i] - model.extent.low[i]);
    if (model.extentUnits >= 0) {
      text += " " + Shown(model.units[static_cast<std::size_t>(model.extentUnits)].lengthName, kNameWidth);
    }
    Put("extent", text);
  }

  void AddProducts() {
    if (model.products.empty()) return;
    long solids = 0;
    long faces = 0;
    for (ModelProduct const& each : model.products) {
      solids += each.solids;
      faces += each.faces;
    }
    std::string text = Counted(static_cast<long>(model.products.size()), "product");
    if (!model.occurrences.empty()) text += ", " + Counted(static_cast<long>(model.occurrences.size()), "occurrence");
    if (solids != 0) text += ", " + Counted(solids, "solid");
    if (faces != 0) text += ", " + Counted(faces, "face");
    Put("contents", text);
  }

  void AddColours() {
    List list(width);
    std::set<std::string> known;
    for (ModelColourUse const& each : model.colours) {
      if (each.items == 0) continue;
      std::string const name = each.colour.Hexadecimal();
      if (known.insert(name).second) list.Add(name);
    }
    if (!known.empty()) Put("colours", list.Text());
  }

  void AddLayers() {
    if (model.layers.empty()) return;
    List list(width);
    for (ModelLayer const& each : model.layers) {
      list.Add("'" + Shown(each.name.value_or(""), kNameWidth) + "' (" +
               Counted(static_cast<long>(each.items.size()), "item") + ")");
    }
    Put("layers", list.Text());
  }

  void AddProperties() {
    static constexpr char const* kKeys[] = {"validation", "material", "attributes", "properties"};
    for (int kind = 0; kind < 4; ++kind) {
      List list(width);
      bool hasAny = false;
      long unnamed = 0;
      for (ModelProperty const& property : model.properties) {
        if (property.kind != kind) continue;
        hasAny = true;
        for (ModelPropertyValue const& value : property.values) list.Add(TextOf(property, value));
        if (!property.values.empty()) continue;
        std::string const name = property.name.value_or("");
        if (name.find_first_not_of(' ') == std::string::npos) {
          ++unnamed;
        } else {
          list.Add(Shown(name, kNameWidth));
        }
      }
      if (unnamed != 0) list.Add(std::to_string(unnamed) + " without a name");
      if (hasAny) Put(kKeys[kind], list.Text());
    }
  }

  static std::string TextOf(ModelProperty const& property, ModelPropertyValue const& value) {
    bool const isNamed = value.name.has_value() && !value.name->empty();
    std::string text = Shown(isNamed ? *value.name : property.name.value_or(""), kNameWidth) + " ";
    if (!value.point.empty()) {
      for (std::size_t i = 0; i < value.point.size(); ++i) text += (i > 0 ? " " : "(") + Number(value.point[i]);
      text += ")";
    } else if (value.number.has_value()) {
      text += Number(*value.number);
    } else {
      text += Shown(value.text.value_or(""), kNameWidth);
    }
    return value.unit.has_value() ? text + " " + Shown(*value.unit, kNameWidth) : text;
  }

  void AddAnnotations() {
    if (!model.annotations.empty()) {
      std::map<ModelAnnotation::Kind, long> counts;
      for (ModelAnnotation const& each : model.annotations) ++counts[each.kind];
      List list(width);
      for (auto const& [kind, count] : counts) {
        list.Add(kind == ModelAnnotation::Other ? std::to_string(count) + " other"
                                                : Counted(count, ModelAnnotation::NameOf(kind)));
      }
      Put("annotations", list.Text());
    }
    if (model.views.empty()) return;
    List list(width);
    for (ModelView const& each : model.views) list.Add("'" + Shown(each.name.value_or(""), kNameWidth) + "'");
    Put("views", list.Text());
  }

  ProductModel const& model;
  std::size_t const width;
  std::vector<ModelSummary::Row> rows;
};

}  // namespace

ModelSummary ModelSummary::Of(ProductModel const& model, std::size_t lines, std::size_t width) {
  if (model.IsEmpty()) return {};
  ModelSummary summary;
  summary.rows = Rows(model, width).All();
  if (summary.rows.size() < lines) summary.tree = Tree(model, lines - summary.rows.size()).Lines();
  return summary;
}

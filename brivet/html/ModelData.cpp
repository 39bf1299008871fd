#include "ModelData.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "DataElements.h"
#include "Document.h"
#include "PageValidation.h"
#include "ProductModel.h"

namespace {

template <class Item>
std::size_t Shown(std::vector<Item> const& items, std::size_t limit) {
  return std::min(items.size(), limit);
}

void PutBox(JsonText& json, ModelBox const& box) {
  if (box.isEmpty) {
    json.Integer(0);
    return;
  }
  json.BeginList();
  for (double const number : box.low) json.Number(number);
  for (double const number : box.high) json.Number(number);
  json.EndList();
}

}  // namespace

void ModelData::Write(Document& document, ProductModel const* model, PageValidation const* validation) {
  parts.BeginObject();
  if (model != nullptr) {
    WriteProducts(*model);
    WriteOccurrences(*model);
    WriteLayers(*model);
    WriteProperties(*model, validation);
    WriteColours(*model);
    WriteAnnotations(*model);
    WriteViews(*model);
  }
  WriteTypes(document);
  parts.EndObject();
  WriteModel(document, model);
}

std::vector<std::string> ModelData::LeftOut(Document& document, ProductModel const* model) {
  std::vector<std::string> sentences;
  auto const add = [&sentences](std::size_t count, std::size_t limit, char const* things) {
    if (count <= limit) return;
    sentences.push_back("The page shows the first " + std::to_string(limit) + " of " + std::to_string(count) + " " +
                        things + ".");
  };
  if (model != nullptr) {
    add(model->products.size(), kProducts, "products");
    add(model->occurrences.size(), kOccurrences, "occurrences");
    add(model->layers.size(), kRows, "layers");
    add(model->properties.size(), kRows, "properties");
    add(model->colours.size(), kRows, "colours");
    add(model->annotations.size(), kRows, "annotations");
    add(model->views.size(), kRows, "views");
  }
  add(document.GetTypeCount(), kRows, "types");
  return sentences;
}

// definition, instance, id, name, description, version, extent, solids, shells, faces, edges, shapes, their number,
// colours
void ModelData::WriteProducts(ProductModel const& model) {
  BeginRows("products");
  for (std::size_t i = 0; i < Shown(model.products, kProducts); ++i) {
    ModelProduct const& each = model.products[i];
    rows.BeginList().String(each.definition).String(each.instance).String(each.id).String(each.name);
    rows.String(each.description).String(each.version);
    PutBox(rows, each.extent);
    rows.Integer(each.solids).Integer(each.shells).Integer(each.faces).Integer(each.edges);
    rows.BeginList();
    for (std::size_t shape = 0; shape < Shown(each.shapes, kShapes); ++shape) rows.String(each.shapes[shape]);
    rows.EndList().Integer(static_cast<long>(each.shapes.size())).BeginList();
    for (std::size_t use = 0; use < Shown(each.colours, kShapes); ++use) rows.Integer(each.colours[use]);
    rows.EndList().Integer(each.units).EndList();
    EndRow();
  }
  EndRows();
}

// parent, child, instance, name, designator, placement. The parent is -1 if the occurrence is not part of the
// structure. Each row is a line, so that scripts can parse one row of many.
void ModelData::WriteOccurrences(ProductModel const& model) {
  std::vector<int> parents(model.occurrences.size(), -1);
  std::size_t const products = Shown(model.products, kProducts);
  for (std::size_t i = 0; i < products; ++i) {
    for (int const use : model.products[i].occurrences) {
      auto const index = static_cast<std::size_t>(use);
      if (static_cast<std::size_t>(model.occurrences[index].child) < products) parents[index] = static_cast<int>(i);
    }
  }
  BeginRows("occurrences");
  for (std::size_t i = 0; i < Shown(model.occurrences, kOccurrences); ++i) {
    ModelOccurrence const& each = model.occurrences[i];
    rows.BeginList().Integer(parents[i]).Integer(each.child).String(each.instance);
    rows.String(each.name).String(each.designator);
    if (each.placement.IsIdentity()) {
      rows.Integer(0);
    } else {
      rows.BeginList();
      for (double const number : each.placement.Numbers()) rows.Number(number);
      rows.EndList();
    }
    rows.EndList();
    rows.text += '\n';
    EndRow();
  }
  EndRows();
}

// instance, name, description, number of items
void ModelData::WriteLayers(ProductModel const& model) {
  BeginRows("layers");
  for (std::size_t i = 0; i < Shown(model.layers, kRows); ++i) {
    ModelLayer const& each = model.layers[i];
    rows.BeginList().String(each.instance).String(each.name).String(each.description);
    rows.Integer(static_cast<long>(each.items.size())).EndList();
    EndRow();
  }
  EndRows();
}

// instance, product, name, description, kind, values: name, value, unit, and if it was checked: the computed value, the
// comparison, 1 if it differs, and its unit
void ModelData::WriteProperties(ProductModel const& model, PageValidation const* validation) {
  BeginRows("properties");
  for (std::size_t i = 0; i < Shown(model.properties, kRows); ++i) {
    ModelProperty const& each = model.properties[i];
    rows.BeginList().String(each.instance).String(each.product).String(each.name).String(each.description);
    rows.String(each.KindName()).BeginList();
    for (std::size_t k = 0; k < Shown(each.values, kValues); ++k) {
      ModelPropertyValue const& value = each.values[k];
      rows.BeginList().String(value.name);
      if (!value.point.empty()) {
        rows.BeginList();
        for (std::size_t n = 0; n < Shown(value.point, kNumbers); ++n) rows.Number(value.point[n]);
        rows.EndList();
      } else if (value.number.has_value()) {
        rows.Number(*value.number);
      } else {
        rows.String(value.text);
      }
      rows.String(value.unit);
      if (ValidationCheck const* const check = validation == nullptr ? nullptr : validation->Find(i, k)) {
        if (check->quantity == ValidationCheck::Centroid) {
          rows.BeginList();
          for (double const number : check->computed) rows.Number(number);
          rows.EndList();
        } else {
          rows.Number(check->computed[0]);
        }
        rows.String(check->Text(validation->Tolerance()));
        rows.Integer(check->verdict == ValidationCheck::Agrees ? 0 : 1).String(check->unit);
      }
      rows.EndList();
    }
    rows.EndList().Integer(static_cast<long>(each.values.size())).EndList();
    EndRow();
  }
  EndRows();
}

// colour, transparency, number of items. All colours, so that indices of colours refer to the rows.
void ModelData::WriteColours(ProductModel const& model) {
  BeginRows("colours");
  for (std::size_t i = 0; i < Shown(model.colours, kRows); ++i) {
    ModelColourUse const& each = model.colours[i];
    rows.BeginList().String(each.colour.Hexadecimal()).Number(each.colour.transparency).Integer(each.items).EndList();
    EndRow();
  }
  EndRows();
}

// instance, name, kind, form, value, view
void ModelData::WriteAnnotations(ProductModel const& model) {
  BeginRows("annotations");
  for (std::size_t i = 0; i < Shown(model.annotations, kRows); ++i) {
    ModelAnnotation const& each = model.annotations[i];
    rows.BeginList().String(each.instance).String(each.name).String(each.KindName()).String(each.FormName());
    rows.String(each.value).String(each.view).EndList();
    EndRow();
  }
  EndRows();
}

// instance, name, kind
void ModelData::WriteViews(ProductModel const& model) {
  BeginRows("views");
  for (std::size_t i = 0; i < Shown(model.views, kRows); ++i) {
    ModelView const& each = model.views[i];
    rows.BeginList().String(each.instance).String(each.name);
    rows.String(each.kind == ModelView::Saved ? "saved" : "camera").EndList();
    EndRow();
  }
  EndRows();
}

// name, number of instances; the most frequent first
void ModelData::WriteTypes(Document& document) {
  std::vector<std::size_t> order(document.GetTypeCount());
  std::iota(order.begin(), order.end(), std::size_t(0));
  std::stable_sort(order.begin(), order.end(), [&document](std::size_t a, std::size_t b) {
    return document.GetTypeInstanceCount(a) > document.GetTypeInstanceCount(b);
  });
  BeginRows("types");
  for (std::size_t i = 0; i < Shown(order, kRows); ++i) {
    long const count = document.GetTypeInstanceCount(order[i]);
    if (count == 0) break;
    rows.BeginList().String(document.GetTypeName(order[i])).Integer(count).EndList();
    EndRow();
  }
  EndRows();
}

void ModelData::WriteModel(Document& document, ProductModel const* model) {
  JsonText json;
  json.BeginObject().Key("instances").Integer(document.GetInstanceCount());
  if (model != nullptr) {
    int const unit = model->extentUnits >= 0 ? model->extentUnits : model->units.empty() ? -1 : 0;
    json.Key("unit");
    if (unit < 0) {
      json.Null();
    } else {
      ModelUnits const& units = model->units[static_cast<std::size_t>(unit)];
      json.BeginObject().Key("name").String(units.lengthName).Key("metres").Number(units.metres).EndObject();
    }
    json.Key("units").BeginList();
    for (std::size_t i = 0; i < Shown(model->units, kRows); ++i) json.String(model->units[i].lengthName);
    json.EndList().Key("unitMetres").BeginList();
    for (std::size_t i = 0; i < Shown(model->units, kRows); ++i) json.Number(model->units[i].metres);
    json.EndList().Key("roots").BeginList();
    for (int const root : model->roots) {
      if (static_cast<std::size_t>(root) < kProducts) json.Integer(root);
    }
    json.EndList();
  }
  json.Key("parts").text += parts.text;
  json.EndObject();
  elements.Write("model", "", json.text);
}

void ModelData::BeginRows(char const* list) {
  name = list;
  part = 0;
  rows = JsonText();
  rows.BeginList();
}

void ModelData::EndRow() {
  if (rows.text.size() >= kPartBytes) FlushPart();
}

void ModelData::EndRows() {
  if (rows.text.size() > 1) FlushPart();
  parts.Key(name.c_str()).Integer(part);
}

void ModelData::FlushPart() {
  rows.EndList();
  elements.Write(name + "-" + std::to_string(part++), "", rows.text);
  rows = JsonText();
  rows.BeginList();
}

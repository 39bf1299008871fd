#include "PageValidation.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <tuple>

#include "ModuleOptions.h"
#include "ProductModel.h"

namespace {

std::string NumberText(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

std::string PointText(double const* point) {
  return "(" + NumberText(point[0]) + ", " + NumberText(point[1]) + ", " + NumberText(point[2]) + ")";
}

std::string WithUnit(std::string const& text, std::string const& unit, char const* power) {
  return unit.empty() ? text : text + " " + unit + power;
}

}  // namespace

PageValidation::PageValidation(ProductModel const* productModel, VRELOptions* options)
    : model(productModel),
      tolerance(
          ModuleOptions(options, "Html", ModuleOptions::Writer).GetDouble("Tolerance", ValidationCheck::kTolerance)) {
  if (model == nullptr) return;
  ComputedTotals totals(*model);
  checks = ValidationCheck::Of(*model, totals, tolerance);
  if (model->roots.size() != 1) return;
  ModelComputed const* const computed = totals.Of(model->roots[0]);
  if (computed != nullptr) root.push_back(*computed);
}

ValidationCheck const* PageValidation::Find(std::size_t property, std::size_t value) const {
  auto const found = std::lower_bound(
      checks.begin(), checks.end(), std::tie(property, value),
      [](ValidationCheck const& check, auto const& key) { return std::tie(check.property, check.value) < key; });
  return found != checks.end() && found->property == property && found->value == value ? &*found : nullptr;
}

std::vector<PageSummary::Row> PageValidation::SummaryRows() const {
  std::vector<PageSummary::Row> rows;
  if (!root.empty()) {
    ModelComputed const& computed = root[0];
    int const units = model->products[static_cast<std::size_t>(model->roots[0])].units;
    std::string const unit = units < 0 ? "" : model->units[static_cast<std::size_t>(units)].lengthName;
    rows.push_back({"Volume", WithUnit(NumberText(computed.volume), unit, "^3") + " computed"});
    rows.push_back({"Surface area", WithUnit(NumberText(computed.area), unit, "^2") + " computed"});
    rows.push_back({"Centroid", WithUnit(PointText(computed.centroid), unit, "") + " computed"});
    // The first stored value of each quantity of the root.
    bool isFound[3] = {};
    for (ValidationCheck const& check : checks) {
      if (check.product != model->roots[0] || isFound[check.quantity]) continue;
      isFound[check.quantity] = true;
      ModelPropertyValue const& value = model->properties[check.property].values[check.value];
      PageSummary::Row& row = rows[check.quantity];
      std::string const stored =
          check.quantity == ValidationCheck::Centroid ? PointText(value.point.data()) : NumberText(*value.number);
      row.value += "; " + WithUnit(stored, value.unit.value_or(""), "") + " stored, " + check.Text(tolerance);
      row.differs = check.verdict != ValidationCheck::Agrees;
    }
    if (computed.volume == 0.0 && !isFound[ValidationCheck::Volume]) rows.erase(rows.begin());
  }
  if (!checks.empty()) {
    auto const differing = std::count_if(checks.begin(), checks.end(), [](ValidationCheck const& each) {
      return each.verdict != ValidationCheck::Agrees;
    });
    std::string const all = std::to_string(checks.size());
    rows.push_back({"Validation",
                    differing == 0 ? all + (checks.size() == 1 ? " stored value agrees" : " stored values agree") +
                                         " with the computed shape"
                                   : std::to_string(differing) + " of " + all +
                                         " stored values differ from the computed shape; see the properties",
                    differing != 0});
  }
  return rows;
}

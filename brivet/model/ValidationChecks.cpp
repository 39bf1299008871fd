#include "ValidationChecks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "Placement.h"

namespace {

// A share of the diagonal of the extent.
constexpr double kRounding = 1e-12;

// Returns a text in lower case, with blanks for underscores and none at its ends.
std::string Plain(std::optional<std::string> const& text) {
  std::string plain;
  for (char letter : text.value_or("")) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    plain += letter == '_' ? ' ' : letter;
  }
  plain.erase(0, std::min(plain.find_first_not_of(' '), plain.size()));
  while (!plain.empty() && plain.back() == ' ') plain.pop_back();
  return plain;
}

bool IsOneOf(std::string const& text, std::initializer_list<char const*> names) {
  return std::any_of(names.begin(), names.end(), [&text](char const* each) { return text == each; });
}

// Returns false if the value is none of the quantities. A value without a name has that of its property.
bool FindQuantity(ModelProperty const& property, ModelPropertyValue const& value, ValidationCheck::Quantity& quantity) {
  std::string name = Plain(value.name);
  if (name.empty()) name = Plain(property.description);
  if (value.number.has_value() && IsOneOf(name, {"volume measure", "volume"})) {
    quantity = ValidationCheck::Volume;
  } else if (value.number.has_value() &&
             IsOneOf(name, {"surface area measure", "surface area", "wetted area measure"})) {
    quantity = ValidationCheck::Area;
  } else if (value.point.size() == 3 && IsOneOf(name, {"centre point", "center point", "centroid"})) {
    quantity = ValidationCheck::Centroid;
  } else {
    return false;
  }
  return true;
}

double MetresOf(ProductModel const& model, ModelProduct const& product) {
  double const metres = product.units < 0 ? 1.0 : model.units[static_cast<std::size_t>(product.units)].metres;
  return metres > 0.0 && std::isfinite(metres) ? metres : 1.0;
}

// Returns whether a unit has the power of length that the quantity requires. A name without a power can be that of a
// unit of volume, such as "litre", unless it is a length unit of the document.
bool HasPower(ProductModel const& model, std::string const& unit, int power) {
  std::size_t const at = unit.rfind('^');
  if (at != unit.npos) return unit.substr(at + 1) == std::to_string(power);
  std::string_view constexpr kMetre = "metre";
  if (unit.size() >= kMetre.size() && unit.compare(unit.size() - kMetre.size(), kMetre.npos, kMetre) == 0) return false;
  return std::none_of(model.units.begin(), model.units.end(),
                      [&unit](ModelUnits const& each) { return each.lengthName == unit; });
}

std::string Percent(double share) {
  char text[40];
  std::snprintf(text, sizeof text, "%.3g %%", 100.0 * share);
  return text;
}

// The share of one; equal numbers, zeros included, have none.
double RelativeDifference(double stored, double computed) {
  if (stored == computed) return 0.0;
  double const base = stored != 0.0 ? std::abs(stored) : std::abs(computed);
  double const share = std::abs(computed - stored) / base;
  return std::isfinite(share) ? share : HUGE_VAL;
}

}  // namespace

ModelComputed const* ComputedTotals::Of(int product) {
  if (product < 0 || static_cast<std::size_t>(product) >= known.size()) return nullptr;
  // Depth first without recursion: a chain of products can have any length. A product is added up after its children.
  std::vector<std::size_t> pending = {static_cast<std::size_t>(product)};
  while (!pending.empty()) {
    std::size_t const next = pending.back();
    if (known[next].state == New) {
      known[next].state = Entered;
      for (int const use : model.products[next].occurrences) {
        int const child = model.occurrences[static_cast<std::size_t>(use)].child;
        if (child >= 0 && known[static_cast<std::size_t>(child)].state == New) {
          pending.push_back(static_cast<std::size_t>(child));
        }
      }
      continue;
    }
    pending.pop_back();
    if (known[next].state == Entered) Add(next);
  }
  Total const& total = known[static_cast<std::size_t>(product)];
  return total.state == Present ? &total.computed : nullptr;
}

void ComputedTotals::Add(std::size_t index) {
  ModelProduct const& product = model.products[index];
  ModelComputed sum;
  double moments[2][3] = {};  // by volume and by area
  bool isPresent = false;
  auto const add = [&](ModelComputed const& part, Placement const& placement) {
    double const volumeFactor = std::abs(placement.Determinant());
    double const volume = part.volume * volumeFactor;
    double const area = part.area * std::pow(volumeFactor, 2.0 / 3.0);
    double center[3] = {part.centroid[0], part.centroid[1], part.centroid[2]};
    placement.Apply(center);
    for (int axis = 0; axis < 3; ++axis) {
      moments[0][axis] += volume * center[axis];
      moments[1][axis] += area * center[axis];
    }
    sum.volume += volume;
    sum.area += area;
    for (int corner = 0; corner < 8 && !part.extent.isEmpty; ++corner) {
      double point[3];
      for (int axis = 0; axis < 3; ++axis) {
        point[axis] = (corner >> axis & 1) != 0 ? part.extent.high[axis] : part.extent.low[axis];
      }
      placement.Apply(point);
      sum.extent.Extend(point);
    }
    isPresent = true;
  };
  known[index].state = Incomplete;
  if (product.faces > 0 && !product.computed.has_value()) return;
  if (product.computed.has_value()) add(*product.computed, Placement());
  for (int const use : product.occurrences) {
    ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(use)];
    if (occurrence.child < 0) continue;
    Total const& child = known[static_cast<std::size_t>(occurrence.child)];
    if (child.state == Absent) continue;
    if (child.state != Present) return;
    add(child.computed, occurrence.placement);
  }
  known[index].state = Absent;
  if (!isPresent) return;
  double const weight = sum.volume > 0.0 ? sum.volume : sum.area;
  double const* const moment = sum.volume > 0.0 ? moments[0] : moments[1];
  // Of a symmetric shape, rounding leaves a tiny number where the centroid is 0.
  double const noise = sum.extent.isEmpty ? 0.0 : kRounding * sum.extent.Diagonal();
  for (int axis = 0; axis < 3 && weight > 0.0; ++axis) {
    double const center = moment[axis] / weight;
    sum.centroid[axis] = std::abs(center) < noise ? 0.0 : center;
  }
  known[index].computed = sum;
  known[index].state = Present;
}

std::string ValidationCheck::Text(double tolerance) const {
  static constexpr char const* kNames[] = {"volume", "area", "length"};
  if (verdict == OtherUnit) return std::string("the stored unit is not one of ") + kNames[quantity];
  if (verdict == Agrees) return "agrees within " + Percent(tolerance);
  if (!std::isfinite(difference)) return "differs";
  std::string const of = quantity == Centroid ? " of the diagonal" : "";
  return "differs by " + Percent(difference) + of + ", more than " + Percent(tolerance);
}

std::vector<ValidationCheck> ValidationCheck::Of(ProductModel const& model, ComputedTotals& totals, double tolerance) {
  std::unordered_map<std::string, int> products;
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    products.emplace(model.products[i].definition, static_cast<int>(i));
  }
  std::vector<ValidationCheck> checks;
  for (std::size_t i = 0; i < model.properties.size(); ++i) {
    ModelProperty const& property = model.properties[i];
    if (property.kind != ModelProperty::Validation ||
        Plain(property.name).find("geometric validation property") == std::string::npos) {
      continue;
    }
    auto const owner = products.find(property.product);
    if (owner == products.end()) continue;
    for (std::size_t k = 0; k < property.values.size(); ++k) {
      ModelPropertyValue const& value = property.values[k];
      ValidationCheck check;
      check.property = i;
      check.value = k;
      check.product = owner->second;
      if (!FindQuantity(property, value, check.quantity)) continue;
      ModelComputed const* const computed = totals.Of(check.product);
      if (computed == nullptr) continue;
      ModelProduct const& product = model.products[static_cast<std::size_t>(check.product)];
      double const metres = MetresOf(model, product);
      int const power = check.quantity == Volume ? 3 : check.quantity == Area ? 2 : 1;
      if (value.unit.has_value() && !HasPower(model, *value.unit, power)) check.verdict = OtherUnit;
      bool const hasUnit = check.verdict != OtherUnit && value.siFactor.has_value();
      double const factor = hasUnit ? std::pow(metres, power) / *value.siFactor : 1.0;
      if (hasUnit && value.unit.has_value()) {
        check.unit = *value.unit;
      } else if (product.units >= 0 && (!hasUnit || *value.siFactor == metres)) {
        check.unit = model.units[static_cast<std::size_t>(product.units)].lengthName;
        if (power > 1 && !check.unit.empty()) check.unit += "^" + std::to_string(power);
      }
      if (check.quantity == Centroid) {
        double distance = 0.0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
          check.computed[axis] = computed->centroid[axis] * factor;
          distance = std::hypot(distance, check.computed[axis] - value.point[axis]);
        }
        double const diagonal = computed->extent.isEmpty ? 0.0 : computed->extent.Diagonal() * factor;
        check.difference = distance == 0.0 ? 0.0 : diagonal > 0.0 ? distance / diagonal : HUGE_VAL;
      } else {
        check.computed[0] = (check.quantity == Volume ? computed->volume : computed->area) * factor;
        check.difference = RelativeDifference(*value.number, check.computed[0]);
      }
      if (check.verdict != OtherUnit && !(check.difference <= tolerance)) check.verdict = Differs;
      checks.push_back(check);
    }
  }
  return checks;
}

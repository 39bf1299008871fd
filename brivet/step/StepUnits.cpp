#include "StepUnits.h"

#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

// Conversion-based units refer to other units; a chain this long is a cycle.
constexpr int kDepthLimit = 8;
constexpr std::size_t kNameLimit = 200;  // of derived units, whose elements can be derived units

struct Prefix {
  char const* name;
  double factor;
};

// ISO 10303-41, si_prefix; the factors are those of the SI.
constexpr Prefix kPrefixes[] = {{"EXA", 1e18},  {"PETA", 1e15},  {"TERA", 1e12},   {"GIGA", 1e9},
                                {"MEGA", 1e6},  {"KILO", 1e3},   {"HECTO", 1e2},   {"DECA", 1e1},
                                {"DECI", 1e-1}, {"CENTI", 1e-2}, {"MILLI", 1e-3},  {"MICRO", 1e-6},
                                {"NANO", 1e-9}, {"PICO", 1e-12}, {"FEMTO", 1e-15}, {"ATTO", 1e-18}};

std::string Lower(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    if (letter == '_') letter = ' ';
  }
  return text;
}

std::string ExponentText(double exponent) {
  if (exponent == std::floor(exponent) && std::abs(exponent) < 1000) return std::to_string(static_cast<int>(exponent));
  return std::to_string(exponent);
}

}  // namespace

StepUnit StepUnits::Read(std::uint32_t unit) {
  return Read(unit, 0);
}

StepUnit StepUnits::Read(std::uint32_t unit, int depth) {
  if (unit == 0 || depth > kDepthLimit) return {};
  auto const found = unitsRead.find(unit);
  if (found != unitsRead.end()) return found->second;
  StepUnit result = Compute(unit, depth);
  unitsRead.emplace(unit, result);
  return result;
}

StepUnit StepUnits::Compute(std::uint32_t unit, int depth) {
  StepUnit result;
  auto const& store = context.store;
  if (store.Is(unit, StepEntity::SiUnit)) {
    std::string const prefix = context.Enumeration(unit, STEP_ATTRIBUTE(SiUnit, "prefix"));
    std::string const name = context.Enumeration(unit, STEP_ATTRIBUTE(SiUnit, "name"));
    if (name.empty()) return result;
    result.isValid = true;
    for (Prefix const& each : kPrefixes) {
      if (prefix == each.name) result.factor = each.factor;
    }
    result.name = Lower(prefix) + Lower(name);
  } else if (store.Is(unit, StepEntity::ConversionBasedUnit)) {
    result.name = context.Text(unit, STEP_ATTRIBUTE(ConversionBasedUnit, "name")).value_or("");
    std::uint32_t const measure =
        context.Instance(unit, STEP_ATTRIBUTE(ConversionBasedUnit, "conversion_factor"), StepEntity::MeasureWithUnit);
    if (measure == 0) return result;
    auto const value = context.Number(measure, STEP_ATTRIBUTE(MeasureWithUnit, "value_component"));
    StepUnit const base =
        Read(context.AnyInstance(measure, STEP_ATTRIBUTE(MeasureWithUnit, "unit_component")), depth + 1);
    // A division by 1000 is exact where a product with 0.001 is not: 25.4 millimetres are 0.0254 metres.
    double const number = value.value_or(0.0);
    double const factor = base.factor < 1.0 ? number / (1.0 / base.factor) : number * base.factor;
    result.isValid = base.isValid && factor > 0.0 && std::isfinite(factor);
    if (result.isValid) {
      result.factor = factor;
    } else {
      context.Warn(unit, "the conversion factor is not a positive number with a unit");
    }
  } else if (store.Is(unit, StepEntity::ContextDependentUnit)) {
    result.name = context.Text(unit, STEP_ATTRIBUTE(ContextDependentUnit, "name")).value_or("");
    result.isValid = true;
  } else if (store.Is(unit, StepEntity::DerivedUnit)) {
    for (std::uint32_t const element :
         context.Instances(unit, STEP_ATTRIBUTE(DerivedUnit, "elements"), StepEntity::DerivedUnitElement)) {
      StepUnit const base = Read(context.AnyInstance(element, STEP_ATTRIBUTE(DerivedUnitElement, "unit")), depth + 1);
      double const exponent = context.Number(element, STEP_ATTRIBUTE(DerivedUnitElement, "exponent")).value_or(1.0);
      if (!result.name.empty()) result.name += ' ';
      result.name += base.name;
      if (exponent != 1.0) result.name += "^" + ExponentText(exponent);
      double const power = std::pow(base.factor, exponent);
      if (std::isfinite(power)) result.factor *= power;
      result.isValid = base.isValid;
      if (result.name.size() > kNameLimit) return {};
    }
  }
  return result;
}

std::optional<ModelUnits> StepUnits::ReadContext(std::uint32_t representationContext) {
  auto const& store = context.store;
  if (!store.Is(representationContext, StepEntity::GlobalUnitAssignedContext)) return std::nullopt;

  ModelUnits units;
  for (std::uint32_t const unit :
       context.AnyInstances(representationContext, STEP_ATTRIBUTE(GlobalUnitAssignedContext, "units"))) {
    bool const isLength = store.Is(unit, StepEntity::LengthUnit);
    if (!isLength && !store.Is(unit, StepEntity::PlaneAngleUnit)) continue;
    StepUnit const read = Read(unit);
    if (!read.isValid) continue;
    (isLength ? units.lengthName : units.angleName) = read.name;
    (isLength ? units.metres : units.radians) = read.factor;
  }
  if (units.lengthName.empty()) return std::nullopt;
  for (std::uint32_t const measure :
       context.AnyInstances(representationContext, STEP_ATTRIBUTE(GlobalUncertaintyAssignedContext, "uncertainty"))) {
    if (units.uncertainty.has_value()) break;
    auto const value = context.Number(measure, STEP_ATTRIBUTE(MeasureWithUnit, "value_component"));
    std::uint32_t const unit = context.AnyInstance(measure, STEP_ATTRIBUTE(MeasureWithUnit, "unit_component"));
    if (!value.has_value() || !store.Is(unit, StepEntity::LengthUnit)) continue;
    StepUnit const read = Read(unit);
    double const scaled = *value * (read.isValid ? read.factor : 1.0) / units.metres;
    // A unit equal to that of the context changes nothing, not even by rounding.
    units.uncertainty = read.isValid && read.factor == units.metres ? *value : scaled;
  }
  return units;
}

int StepUnits::OfContext(std::uint32_t representationContext) {
  if (representationContext == 0) return -1;
  auto const [found, isNew] = known.try_emplace(representationContext, -1);
  if (!isNew) return found->second;
  std::optional<ModelUnits> read = ReadContext(representationContext);
  if (!read.has_value()) return -1;
  ModelUnits& units = *read;
  auto& all = context.model.units;
  char numbers[120];
  std::snprintf(numbers, sizeof numbers, " %.17g %.17g %.17g ", units.metres, units.radians,
                units.uncertainty.value_or(-1.0));
  auto const [place, isNewKind] = indexOfUnits.try_emplace(units.lengthName + numbers + units.angleName, all.size());
  std::size_t const index = place->second;
  if (isNewKind) all.push_back(std::move(units));
  all[index].contexts.push_back(context.IdOf(representationContext));
  known[representationContext] = static_cast<int>(index);
  return static_cast<int>(index);
}

// The context is after a list of any length, so that it is looked up once.
std::uint32_t StepUnits::ContextOf(std::uint32_t representation) {
  auto const [found, isNew] = contexts.try_emplace(representation, 0);
  if (isNew) found->second = context.AnyInstance(representation, STEP_ATTRIBUTE(Representation, "context_of_items"));
  return found->second;
}

double StepUnits::Metres(std::uint32_t representationContext) {
  int const index = OfContext(representationContext);
  return index < 0 ? 1.0 : context.model.units[static_cast<std::size_t>(index)].metres;
}

double StepUnits::Radians(std::uint32_t representationContext) {
  int const index = OfContext(representationContext);
  return index < 0 ? 1.0 : context.model.units[static_cast<std::size_t>(index)].radians;
}

StepUnits::Factors StepUnits::FactorsOf(std::uint32_t representationContext) {
  auto const [found, isNew] = factors.try_emplace(representationContext);
  if (!isNew) return found->second;
  std::optional<ModelUnits> const units = ReadContext(representationContext);
  if (units.has_value()) found->second = {units->metres, units->radians};
  return found->second;
}

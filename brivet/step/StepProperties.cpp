#include "StepProperties.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kDepthLimit = 8;
constexpr long kValueLimit = 1000000;  // plus two for each instance of the document

// Returns whether a text contains the words in any case, separated by blanks or underscores.
bool Contains(std::optional<std::string> const& text, char const* words) {
  if (!text.has_value()) return false;
  std::string plain = *text;
  for (char& letter : plain) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    if (letter == '_') letter = ' ';
  }
  return plain.find(words) != std::string::npos;
}

bool IsBlank(std::optional<std::string> const& text) {
  return !text.has_value() || text->find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

void StepProperties::Read() {
  ReadLayers();
  ReadProperties();
}

void StepProperties::ReadLayers() {
  for (std::uint32_t const each : context.store.InstancesOf(StepEntity::PresentationLayerAssignment)) {
    ModelLayer layer;
    layer.instance = context.IdOf(each);
    layer.name = context.Text(each, STEP_ATTRIBUTE(PresentationLayerAssignment, "name"));
    layer.description = context.Text(each, STEP_ATTRIBUTE(PresentationLayerAssignment, "description"));
    for (std::uint32_t const item :
         context.AnyInstances(each, STEP_ATTRIBUTE(PresentationLayerAssignment, "assigned_items"))) {
      layer.items.push_back(context.IdOf(item));
    }
    context.model.layers.push_back(std::move(layer));
  }
}

// A PROPERTY_DEFINITION has its values in the representations that PROPERTY_DEFINITION_REPRESENTATIONs assign to it. A
// GENERAL_PROPERTY that is associated with it supplies a name that is missing.
void StepProperties::ReadProperties() {
  auto const& store = context.store;
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> links;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::PropertyDefinitionRepresentation)) {
    if (store.Is(link, StepEntity::ShapeDefinitionRepresentation)) continue;
    std::uint32_t const definition =
        context.AnyInstance(link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "definition"));
    links[definition].push_back(link);
  }
  std::unordered_map<std::uint32_t, std::uint32_t> general;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::GeneralPropertyAssociation)) {
    general.try_emplace(context.AnyInstance(link, STEP_ATTRIBUTE(GeneralPropertyAssociation, "derived_definition")),
                        context.AnyInstance(link, STEP_ATTRIBUTE(GeneralPropertyAssociation, "base_definition")));
  }
  for (std::uint32_t const each : store.InstancesOf(StepEntity::PropertyDefinition)) {
    if (store.Is(each, StepEntity::ProductDefinitionShape)) continue;
    ModelProperty property;
    property.instance = context.IdOf(each);
    property.name = context.Text(each, STEP_ATTRIBUTE(PropertyDefinition, "name"));
    property.description = context.Text(each, STEP_ATTRIBUTE(PropertyDefinition, "description"));
    std::uint32_t const owner = structure.OwnerOf(each);
    if (owner != 0) property.product = context.IdOf(owner);
    auto const found = general.find(each);
    std::optional<std::string> generalName;
    if (found != general.end()) {
      generalName = context.Text(found->second, STEP_ATTRIBUTE(GeneralProperty, "name"));
      if (IsBlank(property.name)) property.name = generalName;
      if (IsBlank(property.description) && !property.description.has_value()) {
        property.description = context.Text(found->second, STEP_ATTRIBUTE(GeneralProperty, "description"));
      }
    }
    auto const says = [&](char const* words) {
      return Contains(property.name, words) || Contains(property.description, words) || Contains(generalName, words);
    };
    if (says("validation property")) {
      property.kind = ModelProperty::Validation;
    } else if (says("material property") || says("density")) {
      property.kind = ModelProperty::Material;
    } else if (says("user defined attribute")) {
      property.kind = ModelProperty::Attribute;
    }
    auto const representationLinks = links.find(each);
    if (representationLinks != links.end()) {
      for (std::uint32_t const link : representationLinks->second) {
        std::uint32_t const representation = context.Instance(
            link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "used_representation"), StepEntity::Representation);
        if (representation == 0) continue;
        double const metres = units.FactorsOf(units.ContextOf(representation)).metres;
        metresOfPoints = metres > 0.0 ? std::optional<double>(metres) : std::nullopt;
        for (std::uint32_t const item : context.AnyInstances(representation, STEP_ATTRIBUTE(Representation, "items"))) {
          ReadValue(item, 0, property);
        }
      }
    }
    context.model.properties.push_back(std::move(property));
  }
}

// The number of values is bounded, since many properties can have the same representation.
void StepProperties::ReadValue(std::uint32_t item, int depth, ModelProperty& property) {
  auto const& store = context.store;
  long const limit = kValueLimit + 2 * static_cast<long>(store.InstanceCount());
  if (++valueCount > limit) {
    if (valueCount == limit + 1) context.Warn(property.instance, "there are too many values; the rest is skipped");
    return;
  }
  ModelPropertyValue value;
  value.name = context.Text(item, STEP_ATTRIBUTE(RepresentationItem, "name"));
  auto const setMeasure = [&](StepAttribute const& component, StepAttribute const& unitAttribute) {
    value.number = context.Number(item, component);
    StepUnit const unit = units.Read(context.AnyInstance(item, unitAttribute));
    if (unit.isValid) {
      value.unit = unit.name;
      value.siFactor = unit.factor;
    }
    if (value.number.has_value()) return;
    StepValue const given = store.Get(item, component);
    StepValues content(given);
    if (given.kind == StepValue::Typed && content.Next() && content.Current().kind == StepValue::Text) {
      value.text = std::string(content.Current().text);
    }
  };
  if (store.Is(item, StepEntity::MeasureWithUnit)) {
    setMeasure(STEP_ATTRIBUTE(MeasureWithUnit, "value_component"), STEP_ATTRIBUTE(MeasureWithUnit, "unit_component"));
  } else if (store.Is(item, StepEntity::MeasureRepresentationItem)) {
    setMeasure(STEP_ATTRIBUTE(MeasureRepresentationItem, "value_component"),
               STEP_ATTRIBUTE(MeasureRepresentationItem, "unit_component"));
  } else if (store.Is(item, StepEntity::ValueRepresentationItem)) {
    setMeasure(STEP_ATTRIBUTE(ValueRepresentationItem, "value_component"),
               STEP_ATTRIBUTE(ValueRepresentationItem, "value_component"));
  } else if (store.Is(item, StepEntity::DescriptiveRepresentationItem)) {
    value.text = context.Text(item, STEP_ATTRIBUTE(DescriptiveRepresentationItem, "description"));
  } else if (store.Is(item, StepEntity::IntegerRepresentationItem)) {
    value.number = context.Number(item, STEP_ATTRIBUTE(IntegerRepresentationItem, "the_value"));
  } else if (store.Is(item, StepEntity::RealRepresentationItem)) {
    value.number = context.Number(item, STEP_ATTRIBUTE(RealRepresentationItem, "the_value"));
  } else if (store.Is(item, StepEntity::BooleanRepresentationItem)) {
    value.text = context.Flag(item, STEP_ATTRIBUTE(BooleanRepresentationItem, "the_value")) ? "true" : "false";
  } else if (store.Is(item, StepEntity::CartesianPoint)) {
    value.point = context.Numbers(item, STEP_ATTRIBUTE(CartesianPoint, "coordinates"));
    value.point.erase(
        std::remove_if(value.point.begin(), value.point.end(), [](double number) { return !std::isfinite(number); }),
        value.point.end());
    value.siFactor = metresOfPoints;
  } else if (store.Is(item, StepEntity::CompoundRepresentationItem)) {
    if (depth > kDepthLimit) return;
    for (std::uint32_t const inner :
         context.AnyInstances(item, STEP_ATTRIBUTE(CompoundRepresentationItem, "item_element"))) {
      ReadValue(inner, depth + 1, property);
    }
    return;
  } else {
    return;
  }
  property.values.push_back(std::move(value));
}

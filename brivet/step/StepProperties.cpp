#include "StepProperties.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <unordered_set>
#include <utility>

namespace {

constexpr int kDepthLimit = 8;
constexpr long kValueLimit = 1000000;     // plus two for each instance of the document
constexpr std::size_t kViewLimit = 1000;  // bytes of the names of all views of an annotation

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

// The shortest decimal that reads as the same number.
std::string NumberText(double number) {
  char text[40];
  for (int digits = 6; digits <= 17; ++digits) {
    std::snprintf(text, sizeof text, "%.*g", digits, number);
    if (std::strtod(text, nullptr) == number) break;
  }
  return text;
}

}  // namespace

void StepProperties::Read() {
  ReadLayers();
  ReadProperties();
  ReadViews();
  ReadAnnotations();
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
    if (unit.isValid) value.unit = unit.name;
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

// A camera shows the draughting model that a CAMERA_IMAGE or a mapped camera usage belongs to; a draughting model with
// a camera is a saved view.
void StepProperties::ReadViews() {
  auto const& store = context.store;
  std::map<std::uint32_t, std::vector<std::uint32_t>> camerasOfModel;  // in the order of the file
  std::unordered_set<std::uint32_t> saved;
  for (std::uint32_t const model : store.InstancesOf(StepEntity::Representation)) {
    if (!store.Is(model, StepEntity::DraughtingModel) && !store.Is(model, StepEntity::PresentationView)) continue;
    for (std::uint32_t const item : context.AnyInstances(model, STEP_ATTRIBUTE(Representation, "items"))) {
      if (store.Is(item, StepEntity::CameraModel)) {
        camerasOfModel[model].push_back(item);
        saved.insert(item);
      } else if (store.Is(item, StepEntity::MappedItem)) {
        std::uint32_t const source = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"));
        std::uint32_t const origin = context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin"));
        if (origin != 0 && store.Is(origin, StepEntity::CameraModel)) {
          camerasOfModel[model].push_back(origin);
          saved.insert(origin);
        }
      }
    }
  }
  for (std::uint32_t const camera : store.InstancesOf(StepEntity::CameraModelD3)) {
    ModelView view;
    view.instance = context.IdOf(camera);
    view.name = context.Text(camera, STEP_ATTRIBUTE(RepresentationItem, "name"));
    view.kind = saved.count(camera) != 0 ? ModelView::Saved : ModelView::Camera;
    context.model.views.push_back(std::move(view));
  }
  for (auto const& [model, cameras] : camerasOfModel) {
    std::string names;
    for (std::uint32_t const camera : cameras) {
      std::string const name = context.Text(camera, STEP_ATTRIBUTE(RepresentationItem, "name")).value_or("");
      if (!name.empty() && names.size() + name.size() <= kViewLimit) names += (names.empty() ? "" : ", ") + name;
    }
    for (std::uint32_t const item : context.AnyInstances(model, STEP_ATTRIBUTE(Representation, "items"))) {
      std::string& view = viewOfItem[item];
      if (!names.empty() && view.size() + names.size() <= kViewLimit) view += (view.empty() ? "" : ", ") + names;
    }
  }
}

void StepProperties::ReadAnnotations() {
  ReadGraphicAnnotations();
  ReadSemanticAnnotations();
}

void StepProperties::ReadGraphicAnnotations() {
  auto const& store = context.store;
  struct Callout {
    std::optional<std::string> name;
    std::uint32_t instance = 0;
  };
  std::unordered_map<std::uint32_t, Callout> calloutOf;
  for (std::uint32_t const callout : store.InstancesOf(StepEntity::DraughtingCallout)) {
    for (std::uint32_t const content : context.AnyInstances(callout, STEP_ATTRIBUTE(DraughtingCallout, "contents"))) {
      calloutOf.try_emplace(content,
                            Callout{context.Text(callout, STEP_ATTRIBUTE(RepresentationItem, "name")), callout});
    }
  }
  std::unordered_map<std::uint32_t, std::uint32_t> meaningOf;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::DraughtingModelItemAssociation)) {
    std::uint32_t const meaning =
        context.AnyInstance(link, STEP_ATTRIBUTE(DraughtingModelItemAssociation, "definition"));
    for (std::uint32_t const item :
         context.AnyInstances(link, STEP_ATTRIBUTE(DraughtingModelItemAssociation, "identified_item"))) {
      meaningOf.try_emplace(item, meaning);
    }
  }
  std::vector<std::uint32_t> occurrences = store.InstancesOf(StepEntity::AnnotationOccurrence);
  std::vector<std::uint32_t> const tessellated = store.InstancesOf(StepEntity::TessellatedAnnotationOccurrence);
  occurrences.insert(occurrences.end(), tessellated.begin(), tessellated.end());
  std::sort(occurrences.begin(), occurrences.end());
  occurrences.erase(std::unique(occurrences.begin(), occurrences.end()), occurrences.end());
  for (std::uint32_t const each : occurrences) {
    if (store.Is(each, StepEntity::AnnotationPlane)) continue;
    ModelAnnotation annotation;
    annotation.instance = context.IdOf(each);
    annotation.name = context.Text(each, STEP_ATTRIBUTE(RepresentationItem, "name"));
    auto const callout = calloutOf.find(each);
    std::uint32_t meaning = 0;
    if (auto const found = meaningOf.find(each); found != meaningOf.end()) meaning = found->second;
    auto view = viewOfItem.find(each);
    if (callout != calloutOf.end()) {
      if (IsBlank(annotation.name)) annotation.name = callout->second.name;
      auto const found = meaningOf.find(callout->second.instance);
      if (meaning == 0 && found != meaningOf.end()) meaning = found->second;
      if (view == viewOfItem.end()) view = viewOfItem.find(callout->second.instance);
    }
    if (view != viewOfItem.end() && !view->second.empty()) annotation.view = view->second;
    annotation.form = store.Is(each, StepEntity::TessellatedAnnotationOccurrence) ? ModelAnnotation::Tessellated
                                                                                  : ModelAnnotation::Polyline;
    if (store.Is(each, StepEntity::AnnotationPlaceholderOccurrence)) {
      annotation.kind = ModelAnnotation::Placeholder;
    } else if (store.Is(meaning, StepEntity::DimensionalSize) || store.Is(meaning, StepEntity::DimensionalLocation) ||
               store.Is(each, StepEntity::DimensionCurve)) {
      annotation.kind = ModelAnnotation::Dimension;
    } else if (store.Is(meaning, StepEntity::GeometricTolerance)) {
      annotation.kind = ModelAnnotation::Tolerance;
    } else if (store.Is(meaning, StepEntity::Datum)) {
      annotation.kind = ModelAnnotation::Datum;
    } else if (store.Is(each, StepEntity::AnnotationTextOccurrence)) {
      annotation.kind = ModelAnnotation::Note;
    }
    context.model.annotations.push_back(std::move(annotation));
  }
}

std::string StepProperties::MeasureText(std::uint32_t measure) {
  auto const& store = context.store;
  bool const isItem = !store.Is(measure, StepEntity::MeasureWithUnit);
  auto const number = context.Number(measure, isItem ? STEP_ATTRIBUTE(MeasureRepresentationItem, "value_component")
                                                     : STEP_ATTRIBUTE(MeasureWithUnit, "value_component"));
  if (!number.has_value()) return {};
  StepUnit const unit =
      units.Read(context.AnyInstance(measure, isItem ? STEP_ATTRIBUTE(MeasureRepresentationItem, "unit_component")
                                                     : STEP_ATTRIBUTE(MeasureWithUnit, "unit_component")));
  return NumberText(*number) + (unit.isValid ? " " + unit.name : "");
}

void StepProperties::ReadSemanticAnnotations() {
  auto const& store = context.store;
  std::unordered_map<std::uint32_t, std::uint32_t> representationOf;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::DimensionalCharacteristicRepresentation)) {
    representationOf.try_emplace(
        context.AnyInstance(link, STEP_ATTRIBUTE(DimensionalCharacteristicRepresentation, "dimension")),
        context.AnyInstance(link, STEP_ATTRIBUTE(DimensionalCharacteristicRepresentation, "representation")));
  }
  std::vector<std::uint32_t> dimensions = store.InstancesOf(StepEntity::DimensionalSize);
  std::vector<std::uint32_t> const locations = store.InstancesOf(StepEntity::DimensionalLocation);
  dimensions.insert(dimensions.end(), locations.begin(), locations.end());
  std::sort(dimensions.begin(), dimensions.end());
  for (std::uint32_t const each : dimensions) {
    ModelAnnotation annotation;
    annotation.instance = context.IdOf(each);
    annotation.kind = ModelAnnotation::Dimension;
    annotation.name = store.Is(each, StepEntity::DimensionalSize)
                          ? context.Text(each, STEP_ATTRIBUTE(DimensionalSize, "name"))
                          : context.Text(each, STEP_ATTRIBUTE(ShapeAspectRelationship, "name"));
    auto const found = representationOf.find(each);
    if (found != representationOf.end()) {
      for (std::uint32_t const item : context.AnyInstances(found->second, STEP_ATTRIBUTE(Representation, "items"))) {
        std::string const text = MeasureText(item);
        if (text.empty()) continue;
        annotation.value = text;
        break;
      }
    }
    context.model.annotations.push_back(std::move(annotation));
  }
  for (std::uint32_t const each : store.InstancesOf(StepEntity::GeometricTolerance)) {
    ModelAnnotation annotation;
    annotation.instance = context.IdOf(each);
    annotation.kind = ModelAnnotation::Tolerance;
    annotation.name = context.Text(each, STEP_ATTRIBUTE(GeometricTolerance, "name"));
    std::string const text = MeasureText(context.AnyInstance(each, STEP_ATTRIBUTE(GeometricTolerance, "magnitude")));
    if (!text.empty()) annotation.value = text;
    context.model.annotations.push_back(std::move(annotation));
  }
  for (std::uint32_t const each : store.InstancesOf(StepEntity::Datum)) {
    ModelAnnotation annotation;
    annotation.instance = context.IdOf(each);
    annotation.kind = ModelAnnotation::Datum;
    annotation.name = context.Text(each, STEP_ATTRIBUTE(Datum, "identification"));
    context.model.annotations.push_back(std::move(annotation));
  }
}

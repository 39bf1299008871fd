#include "StepAnnotations.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

// An annotation occurrence styles an item with geometry: curves, sets of curves, filled areas, tessellated items, or
// symbols and texts that map other representations. The items below it are found with an explicit stack and passed to
// StepShapes, which evaluates curves and tessellation as it does for shapes.
//
// The product in whose coordinates an annotation is follows from, in this order: a representation that contains the
// annotation, its callout or its plane and that belongs to a product, is related to a shape of one, or is mapped into
// such a representation; the shape aspect that it is associated with; a shape of a single product that has the same
// context (ISO 10303-43: representations with the same context share their coordinates); the first root.

namespace {

constexpr int kDepthLimit = 32;
constexpr long kStepLimit = 1000000;  // plus kStepsPerInstance for each instance of the document
constexpr long kStepsPerInstance = 8;
constexpr std::size_t kViewLimit = 1000;  // bytes of the names of all views of an annotation
constexpr std::size_t kTextLimit = 4000;  // bytes of the text of a note
constexpr int kTextPartLimit = 1000;      // texts of a composite text, which can contain itself

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

void AppendView(std::string& views, std::string const& names) {
  if (!names.empty() && views.size() + names.size() <= kViewLimit) views += (views.empty() ? "" : ", ") + names;
}

}  // namespace

void StepAnnotations::Read() {
  ReadViews();
  auto const& store = context.store;
  std::vector<std::uint32_t> occurrences = store.InstancesOf(StepEntity::AnnotationOccurrence);
  std::vector<std::uint32_t> const tessellated = store.InstancesOf(StepEntity::TessellatedAnnotationOccurrence);
  occurrences.insert(occurrences.end(), tessellated.begin(), tessellated.end());
  std::sort(occurrences.begin(), occurrences.end());
  occurrences.erase(std::unique(occurrences.begin(), occurrences.end()), occurrences.end());
  if (!occurrences.empty() || !context.model.views.empty()) {
    FindCallouts();
    FindHomes();
    ReadCameras();
    for (std::uint32_t const each : occurrences) {
      if (!store.Is(each, StepEntity::AnnotationPlane)) ReadGraphicAnnotation(each);
    }
  }
  ReadSemanticAnnotations();
}

bool StepAnnotations::Spend() {
  long const limit = kStepLimit + kStepsPerInstance * static_cast<long>(context.store.InstanceCount());
  if (++steps == limit + 1) context.Warn("annotations", "there are too many items; the rest is skipped");
  return steps <= limit;
}

// A camera is shown by a view: a draughting model that contains it, or a presentation view with its image. A camera
// usage says which representation the camera shows.
void StepAnnotations::ReadViews() {
  auto const& store = context.store;
  std::map<std::uint32_t, std::vector<std::uint32_t>> camerasOf;  // in the order of the file
  std::unordered_set<std::uint32_t> saved;
  auto const add = [&](std::uint32_t representation, std::uint32_t camera) {
    auto& cameras = camerasOf[representation];
    if (std::find(cameras.begin(), cameras.end(), camera) == cameras.end()) cameras.push_back(camera);
  };
  for (std::uint32_t const model : store.InstancesOf(StepEntity::Representation)) {
    if (!store.Is(model, StepEntity::DraughtingModel) && !store.Is(model, StepEntity::PresentationView)) continue;
    for (std::uint32_t const item : context.AnyInstances(model, STEP_ATTRIBUTE(Representation, "items"))) {
      std::uint32_t camera = store.Is(item, StepEntity::CameraModel) ? item : 0;
      if (store.Is(item, StepEntity::MappedItem)) {
        std::uint32_t const source = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"));
        std::uint32_t const origin = context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin"));
        if (store.Is(origin, StepEntity::CameraModel)) camera = origin;
      }
      if (camera == 0) continue;
      add(model, camera);
      saved.insert(camera);
    }
  }
  for (std::uint32_t const usage : store.InstancesOf(StepEntity::CameraUsage)) {
    std::uint32_t const camera = context.AnyInstance(usage, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin"));
    std::uint32_t const shown = context.AnyInstance(usage, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation"));
    if (shown != 0 && store.Is(camera, StepEntity::CameraModel)) add(shown, camera);
  }
  for (std::uint32_t const camera : store.InstancesOf(StepEntity::CameraModelD3)) {
    ModelView view;
    view.instance = context.IdOf(camera);
    view.name = context.Text(camera, STEP_ATTRIBUTE(RepresentationItem, "name"));
    view.kind = saved.count(camera) != 0 ? ModelView::Saved : ModelView::Camera;
    context.model.views.push_back(std::move(view));
  }
  for (auto const& [model, cameras] : camerasOf) {
    std::string names;
    for (std::uint32_t const camera : cameras) {
      AppendView(names, context.Text(camera, STEP_ATTRIBUTE(RepresentationItem, "name")).value_or(""));
    }
    AddView(model, names);
  }
}

void StepAnnotations::AddView(std::uint32_t representation, std::string const& names) {
  if (names.empty()) return;
  auto const& store = context.store;
  std::unordered_set<std::uint32_t> seen{representation};
  std::vector<std::uint32_t> pending{representation};
  while (!pending.empty()) {
    std::uint32_t const each = pending.back();
    pending.pop_back();
    std::vector<std::uint32_t> items;
    if (store.Is(each, StepEntity::Representation)) {
      items = context.AnyInstances(each, STEP_ATTRIBUTE(Representation, "items"));
    } else if (store.Is(each, StepEntity::AnnotationPlane)) {
      items = context.AnyInstances(each, STEP_ATTRIBUTE(AnnotationPlane, "elements"));
    }
    for (std::uint32_t item : items) {
      if (!Spend()) return;
      if (store.Is(item, StepEntity::MappedItem)) {
        std::uint32_t const source = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"));
        if (store.Is(source, StepEntity::CameraUsage)) continue;
        item = context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation"));
        if (store.Is(item, StepEntity::DraughtingModel) && seen.insert(item).second) pending.push_back(item);
        continue;
      }
      // A styled item can style a whole callout.
      std::uint32_t const styled = context.AnyInstance(item, STEP_ATTRIBUTE(StyledItem, "item"));
      if (store.Is(styled, StepEntity::DraughtingCallout)) item = styled;
      if (!seen.insert(item).second) continue;
      AppendView(viewOfItem[item], names);
      if (store.Is(item, StepEntity::AnnotationPlane)) pending.push_back(item);
    }
  }
}

void StepAnnotations::FindCallouts() {
  auto const& store = context.store;
  for (std::uint32_t const callout : store.InstancesOf(StepEntity::DraughtingCallout)) {
    for (std::uint32_t const content : context.AnyInstances(callout, STEP_ATTRIBUTE(DraughtingCallout, "contents"))) {
      calloutOf.try_emplace(content, callout);
    }
  }
  for (std::uint32_t const plane : store.InstancesOf(StepEntity::AnnotationPlane)) {
    for (std::uint32_t const element : context.AnyInstances(plane, STEP_ATTRIBUTE(AnnotationPlane, "elements"))) {
      planeOf.try_emplace(element, plane);
    }
  }
  for (std::uint32_t const link : store.InstancesOf(StepEntity::DraughtingModelItemAssociation)) {
    std::uint32_t const meaning =
        context.AnyInstance(link, STEP_ATTRIBUTE(ItemIdentifiedRepresentationUsage, "definition"));
    for (std::uint32_t const item :
         context.AnyInstances(link, STEP_ATTRIBUTE(ItemIdentifiedRepresentationUsage, "identified_item"))) {
      meaningOf.try_emplace(item, meaning);
    }
    std::uint32_t const placeholder = context.AnyInstance(
        link, STEP_ATTRIBUTE(DraughtingModelItemAssociationWithPlaceholder, "annotation_placeholder"));
    if (placeholder != 0) meaningOf.try_emplace(placeholder, meaning);
  }
}

void StepAnnotations::FindHomes() {
  auto const& store = context.store;
  std::vector<std::uint32_t> pending;
  auto const put = [&](std::uint32_t representation, int product, Placement const& placement) {
    if (representation == 0 || product < 0) return;
    if (homes.try_emplace(representation, Home{product, placement, true}).second) pending.push_back(representation);
  };
  for (auto const& [shape, product] : structure.ProductsByShape()) put(shape, product, Placement());
  for (std::uint32_t const link : store.InstancesOf(StepEntity::PropertyDefinitionRepresentation)) {
    std::uint32_t const owner =
        structure.OwnerOf(context.AnyInstance(link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "definition")));
    if (owner == 0) continue;
    put(context.AnyInstance(link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "used_representation")),
        structure.ProductOfOwner(owner), Placement());
  }
  std::sort(pending.begin(), pending.end());
  for (std::uint32_t const representation : pending) {
    std::uint32_t const shared = units.ContextOf(representation);
    int const product = homes[representation].product;
    if (shared == 0) continue;
    auto const [found, isNew] = productOfContext.try_emplace(shared, product);
    if (!isNew && found->second != product) found->second = -1;
  }
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> neighbours;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::RepresentationRelationship)) {
    if (store.Is(link, StepEntity::RepresentationRelationshipWithTransformation)) continue;
    std::uint32_t const first = context.AnyInstance(link, STEP_ATTRIBUTE(RepresentationRelationship, "rep_1"));
    std::uint32_t const second = context.AnyInstance(link, STEP_ATTRIBUTE(RepresentationRelationship, "rep_2"));
    neighbours[first].push_back(second);
    neighbours[second].push_back(first);
  }
  while (!pending.empty()) {
    std::uint32_t const representation = pending.back();
    pending.pop_back();
    Home const home = homes[representation];
    if (auto const found = neighbours.find(representation); found != neighbours.end()) {
      for (std::uint32_t const next : found->second) put(next, home.product, home.placement);
    }
    for (std::uint32_t const item : context.AnyInstances(representation, STEP_ATTRIBUTE(Representation, "items"))) {
      if (!store.Is(item, StepEntity::MappedItem)) continue;
      std::uint32_t const source = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"));
      std::uint32_t const mapped =
          context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation"));
      Placement mapping;
      if (!store.Is(mapped, StepEntity::DraughtingModel) || homes.count(mapped) != 0) continue;
      if (ReadMapping(item, mapping) != 0) put(mapped, home.product, home.placement * mapping);
    }
  }
  for (std::uint32_t const representation : store.InstancesOf(StepEntity::Representation)) {
    for (std::uint32_t const item : context.AnyInstances(representation, STEP_ATTRIBUTE(Representation, "items"))) {
      bool const isPart = store.Is(item, StepEntity::AnnotationOccurrence) ||
                          store.Is(item, StepEntity::TessellatedAnnotationOccurrence) ||
                          store.Is(item, StepEntity::DraughtingCallout) || store.Is(item, StepEntity::CameraModel);
      std::uint32_t const styled = isPart ? 0 : context.AnyInstance(item, STEP_ATTRIBUTE(StyledItem, "item"));
      if (isPart) {
        representationsOf[item].push_back(representation);
      } else if (store.Is(styled, StepEntity::DraughtingCallout)) {
        representationsOf[styled].push_back(representation);
      }
    }
  }
}

StepAnnotations::Home const& StepAnnotations::HomeOf(std::uint32_t representation) {
  auto const [home, isNew] = homes.try_emplace(representation);
  if (isNew) {
    auto const found = productOfContext.find(units.ContextOf(representation));
    if (found != productOfContext.end()) home->second.product = found->second;
  }
  return home->second;
}

std::uint32_t StepAnnotations::OwnerOfMeaning(std::uint32_t meaning) const {
  auto const& store = context.store;
  if (store.Is(meaning, StepEntity::DimensionalSize)) {
    meaning = context.AnyInstance(meaning, STEP_ATTRIBUTE(DimensionalSize, "applies_to"));
  } else if (store.Is(meaning, StepEntity::ShapeAspectRelationship)) {
    meaning = context.AnyInstance(meaning, STEP_ATTRIBUTE(ShapeAspectRelationship, "relating_shape_aspect"));
  } else if (store.Is(meaning, StepEntity::GeometricTolerance)) {
    meaning = context.AnyInstance(meaning, STEP_ATTRIBUTE(GeometricTolerance, "toleranced_shape_aspect"));
  }
  return structure.OwnerOf(meaning);
}

StepAnnotations::Home StepAnnotations::Placed(std::uint32_t representation, Home home) const {
  auto const& model = context.model;
  if (home.product < 0) home.product = !model.roots.empty() ? model.roots.front() : model.products.empty() ? -1 : 0;
  StepUnits::Factors const used =
      representation == 0 ? StepUnits::Factors() : units.FactorsOf(units.ContextOf(representation));
  int const target = home.product < 0 ? -1 : model.products[static_cast<std::size_t>(home.product)].units;
  if (used.metres != 0.0 && target >= 0) {
    double const factor = used.metres / model.units[static_cast<std::size_t>(target)].metres;
    if (factor != 1.0) home.placement = Placement::Scaling(factor) * home.placement;
  }
  return home;
}

// The view reference system of ISO 10303-46: z points to the viewer, y is up. The projection point and the window are
// in its coordinates.
std::optional<ModelCamera> StepAnnotations::CameraOf(std::uint32_t camera, Placement const& placement) {
  auto const& store = context.store;
  std::uint32_t const system = context.AnyInstance(camera, STEP_ATTRIBUTE(CameraModelD3, "view_reference_system"));
  std::uint32_t const volume = context.AnyInstance(camera, STEP_ATTRIBUTE(CameraModelD3, "perspective_of_volume"));
  Placement frame;
  if (!store.Is(system, StepEntity::Axis2Placement3d) || !store.Is(volume, StepEntity::ViewVolume) ||
      !shapes.Geometry().ReadPlacement(system, frame)) {
    return std::nullopt;
  }
  ModelCamera result;
  result.isPerspective = context.Enumeration(volume, STEP_ATTRIBUTE(ViewVolume, "projection_type")) == "CENTRAL";
  std::uint32_t const eye = context.AnyInstance(volume, STEP_ATTRIBUTE(ViewVolume, "projection_point"));
  if (eye == 0 || !shapes.Geometry().ReadPoint(eye, result.eye)) return std::nullopt;
  std::uint32_t const window = context.AnyInstance(volume, STEP_ATTRIBUTE(ViewVolume, "view_window"));
  Placement corner;
  std::uint32_t const position = context.AnyInstance(window, STEP_ATTRIBUTE(PlanarBox, "placement"));
  double const x = context.Number(window, STEP_ATTRIBUTE(PlanarExtent, "size_in_x")).value_or(0.0);
  double const y = context.Number(window, STEP_ATTRIBUTE(PlanarExtent, "size_in_y")).value_or(0.0);
  if (position != 0 && std::abs(x) <= kLargestCoordinate && std::abs(y) <= kLargestCoordinate &&
      shapes.Geometry().ReadPlacement(position, corner)) {
    result.target[0] = 0.5 * x;
    result.target[1] = 0.5 * y;
    corner.Apply(result.target);
    result.width = std::abs(x);
    result.height = std::abs(y);
  } else {
    result.target[0] = result.eye[0];
    result.target[1] = result.eye[1];
  }
  double const distance = context.Number(volume, STEP_ATTRIBUTE(ViewVolume, "view_plane_distance")).value_or(0.0);
  result.target[2] += std::abs(distance) <= kLargestCoordinate ? distance : 0.0;
  frame = placement * frame;
  auto const& n = frame.Numbers();
  double const scale = std::cbrt(std::abs(frame.Determinant()));
  if (!frame.IsFinite() || !(scale > 0.0)) return std::nullopt;
  frame.Apply(result.eye);
  frame.Apply(result.target);
  for (std::size_t i = 0; i < 3; ++i) result.up[i] = n[4 * i + 1] / scale;
  result.width *= scale;
  result.height *= scale;
  return result;
}

void StepAnnotations::ReadCameras() {
  std::vector<std::uint32_t> const cameras = context.store.InstancesOf(StepEntity::CameraModelD3);
  for (std::size_t i = 0; i < cameras.size() && i < context.model.views.size(); ++i) {
    auto const found = representationsOf.find(cameras[i]);
    std::uint32_t const representation = found == representationsOf.end() ? 0 : found->second.front();
    Home const home = Placed(representation, representation == 0 ? Home() : HomeOf(representation));
    ModelView& view = context.model.views[i];
    view.product = home.product;
    view.camera = CameraOf(cameras[i], home.placement);
  }
}

Placement StepAnnotations::Locate(std::uint32_t occurrence, std::uint32_t meaning, ModelAnnotation& annotation) {
  std::uint32_t own = 0;  // the representation that defines the unit
  Home chosen;
  std::uint32_t callout = 0;
  if (auto const found = calloutOf.find(occurrence); found != calloutOf.end()) callout = found->second;
  auto plane = planeOf.find(occurrence);
  if (plane == planeOf.end() && callout != 0) plane = planeOf.find(callout);
  for (std::uint32_t const each : {occurrence, callout, plane == planeOf.end() ? 0 : plane->second}) {
    if (each == 0) continue;
    auto const view = viewOfItem.find(each);
    if (!annotation.view.has_value() && view != viewOfItem.end() && !view->second.empty()) {
      annotation.view = view->second;
    }
    auto const found = representationsOf.find(each);
    if (found == representationsOf.end()) continue;
    for (std::uint32_t const representation : found->second) {
      Home const& home = HomeOf(representation);
      if (own == 0) own = representation;
      if (chosen.isCertain || home.product < 0 || (chosen.product >= 0 && !home.isCertain)) continue;
      chosen = home;
      own = representation;
    }
  }
  if (!chosen.isCertain) {
    int const product = structure.ProductOfOwner(OwnerOfMeaning(meaning));
    if (product >= 0) chosen = {product, Placement(), true};
  }
  chosen = Placed(own, chosen);
  annotation.product = chosen.product;
  Placement const placement = chosen.placement;
  radians = own == 0 ? 1.0 : units.FactorsOf(units.ContextOf(own)).radians;
  if (plane != planeOf.end()) {
    std::uint32_t const item = context.AnyInstance(plane->second, STEP_ATTRIBUTE(StyledItem, "item"));
    std::uint32_t position = context.AnyInstance(item, STEP_ATTRIBUTE(ElementarySurface, "position"));
    if (position == 0) position = context.AnyInstance(item, STEP_ATTRIBUTE(PlanarBox, "placement"));
    Placement frame;
    if (position != 0 && shapes.Geometry().ReadPlacement(position, frame)) annotation.plane = placement * frame;
  }
  return placement;
}

ModelAnnotation::Kind StepAnnotations::KindOf(std::uint32_t occurrence, std::uint32_t meaning) const {
  auto const& store = context.store;
  if (store.Is(occurrence, StepEntity::AnnotationPlaceholderOccurrence)) return ModelAnnotation::Placeholder;
  if (store.Is(meaning, StepEntity::DimensionalSize) || store.Is(meaning, StepEntity::DimensionalLocation) ||
      store.Is(occurrence, StepEntity::DimensionCurve)) {
    return ModelAnnotation::Dimension;
  }
  if (store.Is(meaning, StepEntity::GeometricTolerance)) return ModelAnnotation::Tolerance;
  if (store.Is(meaning, StepEntity::Datum) || store.Is(meaning, StepEntity::DatumFeature) ||
      store.Is(meaning, StepEntity::DatumTarget)) {
    return ModelAnnotation::Datum;
  }
  return store.Is(occurrence, StepEntity::AnnotationTextOccurrence) ? ModelAnnotation::Note : ModelAnnotation::Other;
}

void StepAnnotations::ReadGraphicAnnotation(std::uint32_t occurrence) {
  auto const& store = context.store;
  ModelAnnotation annotation;
  annotation.instance = context.IdOf(occurrence);
  annotation.name = context.Text(occurrence, STEP_ATTRIBUTE(RepresentationItem, "name"));
  auto meaning = meaningOf.find(occurrence);
  auto const callout = calloutOf.find(occurrence);
  bool isVisible = !styles.IsInvisible(occurrence);
  if (callout != calloutOf.end()) {
    if (IsBlank(annotation.name)) {
      annotation.name = context.Text(callout->second, STEP_ATTRIBUTE(RepresentationItem, "name"));
    }
    if (meaning == meaningOf.end() || meaning->second == 0) meaning = meaningOf.find(callout->second);
    isVisible = isVisible && !styles.IsInvisible(callout->second);
  }
  std::uint32_t const associated = meaning == meaningOf.end() ? 0 : meaning->second;
  annotation.form = store.Is(occurrence, StepEntity::TessellatedAnnotationOccurrence) ? ModelAnnotation::Tessellated
                                                                                      : ModelAnnotation::Polyline;
  annotation.kind = KindOf(occurrence, associated);
  std::string const text = TextOf(context.AnyInstance(occurrence, STEP_ATTRIBUTE(StyledItem, "item")));
  if (!text.empty()) annotation.value = text;
  Placement const placement = Locate(occurrence, associated, annotation);
  if (shapes.GetSettings().withGeometry && isVisible) {
    shapes.ReadAnnotation(LeavesOf(occurrence, placement, annotation), radians, annotation);
  }
  context.model.annotations.push_back(std::move(annotation));
}

std::string StepAnnotations::TextOf(std::uint32_t item) {
  auto const& store = context.store;
  std::string text;
  std::vector<std::uint32_t> pending{item};
  for (int count = 0; !pending.empty() && count < kTextPartLimit && Spend(); ++count) {
    std::uint32_t const each = pending.back();
    pending.pop_back();
    if (store.Is(each, StepEntity::TextLiteral)) {
      std::string const literal = context.Text(each, STEP_ATTRIBUTE(TextLiteral, "literal")).value_or("");
      if (text.size() + literal.size() > kTextLimit) break;
      text += (text.empty() ? "" : "\n") + literal;
    } else if (store.Is(each, StepEntity::CompositeText) && pending.size() < static_cast<std::size_t>(kTextPartLimit)) {
      std::vector<std::uint32_t> const parts =
          context.AnyInstances(each, STEP_ATTRIBUTE(CompositeText, "collected_text"));
      pending.insert(pending.end(), parts.rbegin(), parts.rend());
    }
  }
  return text;
}

std::uint32_t StepAnnotations::ReadMapping(std::uint32_t item, Placement& placement) {
  auto const& store = context.store;
  std::uint32_t const source =
      context.Instance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"), StepEntity::RepresentationMap);
  if (source == 0 || store.Is(source, StepEntity::CameraUsage)) return 0;
  std::uint32_t target = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_target"));
  std::uint32_t const origin = context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin"));
  Placement scale;
  if (store.Is(target, StepEntity::SymbolTarget)) {
    double const x = context.Number(target, STEP_ATTRIBUTE(SymbolTarget, "x_scale")).value_or(1.0);
    double const y = context.Number(target, STEP_ATTRIBUTE(SymbolTarget, "y_scale")).value_or(1.0);
    scale = Placement({x, 0, 0, 0, 0, y, 0, 0, 0, 0, 1, 0});
    target = context.AnyInstance(target, STEP_ATTRIBUTE(SymbolTarget, "placement"));
  }
  Placement to;
  Placement from;
  Placement inverse;
  if (target == 0 || origin == 0 || !shapes.Geometry().ReadPlacement(target, to) ||
      !shapes.Geometry().ReadPlacement(origin, from) || !from.Invert(inverse)) {
    return 0;
  }
  placement = to * scale * inverse;
  return context.Instance(source, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation"),
                          StepEntity::Representation);
}

std::vector<StepShapes::PlacedItem> StepAnnotations::LeavesOf(std::uint32_t occurrence, Placement const& placement,
                                                              ModelAnnotation& annotation) {
  auto const& store = context.store;
  struct Entry {
    StepShapes::PlacedItem item;
    int depth;
  };
  std::vector<StepShapes::PlacedItem> leaves;
  std::vector<Entry> pending{{{occurrence, placement, -1}, 0}};
  while (!pending.empty() && Spend()) {
    Entry entry = pending.back();
    pending.pop_back();
    std::uint32_t const item = entry.item.item;
    if (styles.IsInvisible(item) || entry.depth > kDepthLimit) continue;
    if (int const own = styles.ColourOf(item); own >= 0) entry.item.colour = own;
    std::vector<std::uint32_t> children;
    if (store.Is(item, StepEntity::StyledItem)) {
      if (int const own = styles.ColourOfAnnotation(item); own >= 0) entry.item.colour = own;
      children.push_back(context.AnyInstance(item, STEP_ATTRIBUTE(StyledItem, "item")));
      for (std::uint32_t const line :
           context.AnyInstances(item, STEP_ATTRIBUTE(AnnotationPlaceholderOccurrenceWithLeaderLine, "leader_line"))) {
        children.push_back(line);
      }
    } else if (store.Is(item, StepEntity::AnnotationPlaceholderLeaderLine)) {
      children = context.AnyInstances(item, STEP_ATTRIBUTE(AnnotationPlaceholderLeaderLine, "geometric_elements"));
    } else if (store.Is(item, StepEntity::GeometricSet)) {
      children = context.AnyInstances(item, STEP_ATTRIBUTE(GeometricSet, "elements"));
    } else if (store.Is(item, StepEntity::AnnotationFillArea)) {
      children = context.AnyInstances(item, STEP_ATTRIBUTE(AnnotationFillArea, "boundaries"));
    } else if (store.Is(item, StepEntity::CompositeText)) {
      children = context.AnyInstances(item, STEP_ATTRIBUTE(CompositeText, "collected_text"));
    } else if (store.Is(item, StepEntity::TextLiteralWithAssociatedCurves)) {
      children = context.AnyInstances(item, STEP_ATTRIBUTE(TextLiteralWithAssociatedCurves, "associated_curves"));
    } else if (store.Is(item, StepEntity::MappedItem)) {
      Placement mapping;
      std::uint32_t const mapped = ReadMapping(item, mapping);
      if (mapped == 0) continue;
      entry.item.placement = entry.item.placement * mapping;
      children = context.AnyInstances(mapped, STEP_ATTRIBUTE(Representation, "items"));
    } else if (store.Is(item, StepEntity::PlanarBox)) {
      AddRectangle(item, entry.item.placement, entry.item.colour, annotation);
    } else if (store.Is(item, StepEntity::Curve) || store.Is(item, StepEntity::TessellatedItem)) {
      leaves.push_back(entry.item);
    }
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      if (*child != 0) pending.push_back({{*child, entry.item.placement, entry.item.colour}, entry.depth + 1});
    }
  }
  return leaves;
}

void StepAnnotations::AddRectangle(std::uint32_t box, Placement const& placement, int colour,
                                   ModelAnnotation& annotation) {
  double const x = context.Number(box, STEP_ATTRIBUTE(PlanarExtent, "size_in_x")).value_or(0.0);
  double const y = context.Number(box, STEP_ATTRIBUTE(PlanarExtent, "size_in_y")).value_or(0.0);
  Placement frame;
  std::uint32_t const position = context.AnyInstance(box, STEP_ATTRIBUTE(PlanarBox, "placement"));
  bool const isUsable = std::abs(x) <= kLargestCoordinate && std::abs(y) <= kLargestCoordinate;
  if (!isUsable || position == 0 || !shapes.Geometry().ReadPlacement(position, frame)) return;
  frame = placement * frame;
  ModelPolyline polyline;
  polyline.instance = context.IdOf(box);
  polyline.colour = colour;
  double const corners[5][2] = {{0.0, 0.0}, {x, 0.0}, {x, y}, {0.0, y}, {0.0, 0.0}};
  for (auto const& corner : corners) {
    double point[3] = {corner[0], corner[1], 0.0};
    frame.Apply(point);
    polyline.coordinates.insert(polyline.coordinates.end(), point, point + 3);
  }
  annotation.polylines.push_back(std::move(polyline));
}

std::string StepAnnotations::MeasureText(std::uint32_t measure) {
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

void StepAnnotations::ReadSemanticAnnotations() {
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

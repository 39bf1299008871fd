#include "StepAssembly.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

// The shape of a product definition is found by
//
//   PRODUCT_DEFINITION_SHAPE -> SHAPE_DEFINITION_REPRESENTATION -> representation
//
// and from there by SHAPE_REPRESENTATION_RELATIONSHIPs without a transformation, which connect the representation of
// the structure with those of solids. A relationship with a transformation places a child in its parent: placement
// times the child's item equals the parent's item. Exporters disagree about the order of both, so that the
// representations to which items and shapes belong decide, and the order in the file only if they do not.
//
// Cycles are cut by a depth-first search with an explicit stack: an occurrence that leads to a product on the present
// path is lost. All steps are linear in the number of instances.

namespace {

constexpr std::size_t kExtentStepLimit = 2000000;  // plus kStepsPerPoint for each point of all shapes
constexpr std::size_t kStepsPerPoint = 4;

bool IsWord(std::string const& text, char const* word) {
  return text.find(word) != std::string::npos;
}

}  // namespace

void StepAssembly::Read() {
  ReadProducts();
  FindExcludedProducts();
  ReadRepresentations();
  ReadOccurrences();
  ReadPlacements();
  PlaceByMappedItems();
  CutCycles();
  FindRoots();
  ReadShapes();
}

int StepAssembly::ProductOf(std::uint32_t definition) const {
  auto const found = products.find(definition);
  return found == products.end() ? -1 : found->second;
}

int StepAssembly::ProductOfOwner(std::uint32_t owner) const {
  auto const found = occurrenceOf.find(owner);
  return found == occurrenceOf.end() ? ProductOf(owner)
                                     : context.model.occurrences[static_cast<std::size_t>(found->second)].child;
}

std::unordered_map<std::uint32_t, int> StepAssembly::ProductsByShape() const {
  std::unordered_map<std::uint32_t, int> productOfShape;
  for (std::size_t i = 0; i < representations.size(); ++i) {
    for (std::uint32_t const shape : representations[i]) productOfShape.try_emplace(shape, static_cast<int>(i));
  }
  return productOfShape;
}

std::uint32_t StepAssembly::OwnerOf(std::uint32_t propertyDefinition) const {
  auto const& store = context.store;
  std::uint32_t definition = propertyDefinition;
  for (int depth = 0; depth < 8 && definition != 0; ++depth) {
    if (store.Is(definition, StepEntity::ProductDefinition) ||
        store.Is(definition, StepEntity::ProductDefinitionRelationship)) {
      return definition;
    }
    if (store.Is(definition, StepEntity::PropertyDefinition)) {
      definition = context.AnyInstance(definition, STEP_ATTRIBUTE(PropertyDefinition, "definition"));
    } else if (store.Is(definition, StepEntity::ShapeAspect)) {
      definition = context.AnyInstance(definition, STEP_ATTRIBUTE(ShapeAspect, "of_shape"));
    } else {
      return 0;
    }
  }
  return 0;
}

void StepAssembly::ReadProducts() {
  for (std::uint32_t const definition : context.store.InstancesOf(StepEntity::ProductDefinition)) {
    ModelProduct product;
    product.definition = context.IdOf(definition);
    std::uint32_t const formation = context.Instance(definition, STEP_ATTRIBUTE(ProductDefinition, "formation"),
                                                     StepEntity::ProductDefinitionFormation);
    if (formation != 0) {
      product.version = context.Text(formation, STEP_ATTRIBUTE(ProductDefinitionFormation, "id"));
      std::uint32_t const item =
          context.Instance(formation, STEP_ATTRIBUTE(ProductDefinitionFormation, "of_product"), StepEntity::Product);
      if (item != 0) {
        product.instance = context.IdOf(item);
        product.id = context.Text(item, STEP_ATTRIBUTE(Product, "id"));
        product.name = context.Text(item, STEP_ATTRIBUTE(Product, "name"));
        product.description = context.Text(item, STEP_ATTRIBUTE(Product, "description"));
      }
    }
    products.emplace(definition, static_cast<int>(context.model.products.size()));
    context.model.products.push_back(std::move(product));
  }
  representations.resize(context.model.products.size());
  representationSets.resize(context.model.products.size());
}

// Documents and raw material are products of a category, and no roots.
void StepAssembly::FindExcludedProducts() {
  std::unordered_set<std::string> excluded;
  for (std::uint32_t const category : context.store.InstancesOf(StepEntity::ProductRelatedProductCategory)) {
    std::string const name = context.Text(category, STEP_ATTRIBUTE(ProductCategory, "name")).value_or("");
    if (name != "document" && name != "raw material" && !IsWord(name, "document")) continue;
    for (std::uint32_t const item :
         context.Instances(category, STEP_ATTRIBUTE(ProductRelatedProductCategory, "products"), StepEntity::Product)) {
      excluded.insert(context.IdOf(item));
    }
  }
  for (ModelProduct& product : context.model.products) {
    if (excluded.count(product.instance) != 0) product.isRootCandidate = false;
  }
}

void StepAssembly::ReadRepresentations() {
  auto const& store = context.store;
  auto const add = [this](int product, std::uint32_t representation) {
    auto const index = static_cast<std::size_t>(product);
    if (!representationSets[index].insert(representation).second) return;
    representations[index].push_back(representation);
  };
  std::unordered_set<std::uint32_t> direct;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::ShapeDefinitionRepresentation)) {
    std::uint32_t const definition = context.Instance(
        link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "definition"), StepEntity::PropertyDefinition);
    std::uint32_t const representation = context.Instance(
        link, STEP_ATTRIBUTE(PropertyDefinitionRepresentation, "used_representation"), StepEntity::Representation);
    if (definition == 0 || representation == 0) continue;
    std::uint32_t const owner = context.AnyInstance(definition, STEP_ATTRIBUTE(PropertyDefinition, "definition"));
    int const product = ProductOf(owner);
    if (product < 0) continue;
    direct.insert(representation);
    add(product, representation);
  }

  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> neighbours;
  for (std::uint32_t const link : store.InstancesOf(StepEntity::ShapeRepresentationRelationship)) {
    if (store.Is(link, StepEntity::RepresentationRelationshipWithTransformation)) continue;
    std::uint32_t const first =
        context.Instance(link, STEP_ATTRIBUTE(RepresentationRelationship, "rep_1"), StepEntity::Representation);
    std::uint32_t const second =
        context.Instance(link, STEP_ATTRIBUTE(RepresentationRelationship, "rep_2"), StepEntity::Representation);
    if (first == 0 || second == 0) continue;
    neighbours[first].push_back(second);
    neighbours[second].push_back(first);
  }
  for (std::size_t index = 0; index < representations.size(); ++index) {
    // The vector grows while it is traversed. Another product's own representation is not entered.
    for (std::size_t i = 0; i < representations[index].size(); ++i) {
      auto const found = neighbours.find(representations[index][i]);
      if (found == neighbours.end()) continue;
      for (std::uint32_t const next : found->second) {
        if (direct.count(next) == 0) add(static_cast<int>(index), next);
      }
    }
    ModelProduct& product = context.model.products[index];
    for (std::uint32_t const representation : representations[index]) {
      product.shapes.push_back(context.IdOf(representation));
      int const used = units.OfContext(units.ContextOf(representation));
      if (product.units < 0) product.units = used;
    }
  }
}

void StepAssembly::ReadOccurrences() {
  auto const& store = context.store;
  for (std::uint32_t const usage : store.InstancesOf(StepEntity::AssemblyComponentUsage)) {
    if (store.Is(usage, StepEntity::PromissoryUsageOccurrence) ||
        store.Is(usage, StepEntity::SpecifiedHigherUsageOccurrence)) {
      continue;
    }
    ModelOccurrence occurrence;
    occurrence.instance = context.IdOf(usage);
    std::uint32_t const parent =
        context.Instance(usage, STEP_ATTRIBUTE(ProductDefinitionRelationship, "relating_product_definition"),
                         StepEntity::ProductDefinition);
    std::uint32_t const child =
        context.Instance(usage, STEP_ATTRIBUTE(ProductDefinitionRelationship, "related_product_definition"),
                         StepEntity::ProductDefinition);
    if (parent == 0 || child == 0) continue;
    occurrence.parent = ProductOf(parent);
    occurrence.child = ProductOf(child);
    occurrence.id = context.Text(usage, STEP_ATTRIBUTE(ProductDefinitionRelationship, "id"));
    occurrence.name = context.Text(usage, STEP_ATTRIBUTE(ProductDefinitionRelationship, "name"));
    occurrence.designator = context.Text(usage, STEP_ATTRIBUTE(AssemblyComponentUsage, "reference_designator"));
    std::uint32_t const quantity =
        context.AnyInstance(usage, STEP_ATTRIBUTE(QuantifiedAssemblyComponentUsage, "quantity"));
    if (quantity != 0) {
      occurrence.quantity = context.Number(quantity, STEP_ATTRIBUTE(MeasureWithUnit, "value_component")).value_or(1.0);
    }
    double const factor = MetresOf(occurrence.child) / MetresOf(occurrence.parent);
    if (factor != 1.0) occurrence.placement = Placement::Scaling(factor);
    occurrenceOf.emplace(usage, static_cast<int>(context.model.occurrences.size()));
    context.model.occurrences.push_back(std::move(occurrence));
  }
  isPlaced.assign(context.model.occurrences.size(), false);
}

double StepAssembly::MetresOf(int product) const {
  int const index = product < 0 ? -1 : context.model.products[static_cast<std::size_t>(product)].units;
  return index < 0 ? 1.0 : context.model.units[static_cast<std::size_t>(index)].metres;
}

bool StepAssembly::Belongs(std::uint32_t representation, int product) const {
  return product >= 0 && representationSets[static_cast<std::size_t>(product)].count(representation) != 0;
}

bool StepAssembly::IsItemOf(std::uint32_t item, std::uint32_t representation) {
  auto const [found, isNew] = itemSets.try_emplace(representation);
  if (isNew) {
    for (std::uint32_t const each : context.AnyInstances(representation, STEP_ATTRIBUTE(Representation, "items"))) {
      found->second.insert(each);
    }
  }
  return found->second.count(item) != 0;
}

void StepAssembly::ReadPlacements() {
  for (std::uint32_t const link : context.store.InstancesOf(StepEntity::ContextDependentShapeRepresentation)) {
    std::uint32_t const relationship =
        context.Instance(link, STEP_ATTRIBUTE(ContextDependentShapeRepresentation, "representation_relation"),
                         StepEntity::RepresentationRelationship);
    std::uint32_t const shape =
        context.Instance(link, STEP_ATTRIBUTE(ContextDependentShapeRepresentation, "represented_product_relation"),
                         StepEntity::ProductDefinitionShape);
    if (relationship == 0 || shape == 0) continue;
    auto const found = occurrenceOf.find(context.AnyInstance(shape, STEP_ATTRIBUTE(PropertyDefinition, "definition")));
    if (found == occurrenceOf.end()) continue;
    auto const index = static_cast<std::size_t>(found->second);
    if (!isPlaced[index] && ReadRelationship(relationship, context.model.occurrences[index])) isPlaced[index] = true;
  }
}

bool StepAssembly::ReadRelationship(std::uint32_t relationship, ModelOccurrence& occurrence) {
  auto const& store = context.store;
  std::uint32_t childShape = context.AnyInstance(relationship, STEP_ATTRIBUTE(RepresentationRelationship, "rep_1"));
  std::uint32_t parentShape = context.AnyInstance(relationship, STEP_ATTRIBUTE(RepresentationRelationship, "rep_2"));
  std::uint32_t const transformation = context.AnyInstance(
      relationship, STEP_ATTRIBUTE(RepresentationRelationshipWithTransformation, "transformation_operator"));
  if (transformation == 0) return false;
  bool const isReversed = !(Belongs(childShape, occurrence.child) && Belongs(parentShape, occurrence.parent)) &&
                          Belongs(parentShape, occurrence.child) && Belongs(childShape, occurrence.parent);
  if (isReversed) std::swap(childShape, parentShape);
  double const factor = MetresOf(occurrence.child) / MetresOf(occurrence.parent);

  if (store.Is(transformation, StepEntity::CartesianTransformationOperator)) {
    Placement placement;
    if (!shapes.Geometry().ReadPlacement(transformation, placement)) return false;
    if (isReversed && !placement.Invert(placement)) return false;
    occurrence.placement = placement * Placement::Scaling(factor);
    return true;
  }
  std::uint32_t first =
      context.AnyInstance(transformation, STEP_ATTRIBUTE(ItemDefinedTransformation, "transform_item_1"));
  std::uint32_t second =
      context.AnyInstance(transformation, STEP_ATTRIBUTE(ItemDefinedTransformation, "transform_item_2"));
  if (first == 0 || second == 0) {
    context.Warn(transformation, "a transformation without two placements is skipped");
    return false;
  }
  // Items belong to rep_1 and rep_2 in this order; of a reversed relationship the first is the parent's.
  if (isReversed) std::swap(first, second);
  bool const isInOrder = IsItemOf(first, childShape) && IsItemOf(second, parentShape);
  if (!isInOrder && IsItemOf(second, childShape) && IsItemOf(first, parentShape)) std::swap(first, second);
  return MapItems(first, second, factor, occurrence.placement);
}

bool StepAssembly::MapItems(std::uint32_t childItem, std::uint32_t parentItem, double factor, Placement& placement) {
  Placement child;
  Placement parent;
  Placement inverse;
  if (!shapes.Geometry().ReadPlacement(childItem, child) || !shapes.Geometry().ReadPlacement(parentItem, parent) ||
      !child.Invert(inverse)) {
    return false;
  }
  Placement const mapping = factor == 1.0 ? parent * inverse : parent * Placement::Scaling(factor) * inverse;
  if (!mapping.IsFinite()) return false;
  placement = mapping;
  return true;
}

// Occurrences without a transformation are placed by the mapped items of their parent that map a shape of the child, in
// the order of both.
void StepAssembly::PlaceByMappedItems() {
  auto const& store = context.store;
  auto& occurrences = context.model.occurrences;
  std::map<int, std::vector<std::size_t>> unplaced;  // by parent
  for (std::size_t i = 0; i < occurrences.size(); ++i) {
    if (!isPlaced[i]) unplaced[occurrences[i].parent].push_back(i);
  }
  std::unordered_map<std::uint32_t, int> const productOfShape = ProductsByShape();
  for (auto const& [parent, waiting] : unplaced) {
    std::unordered_map<int, std::vector<std::uint32_t>> mappedItems;  // by child
    for (std::uint32_t const shape : representations[static_cast<std::size_t>(parent)]) {
      for (std::uint32_t const item : context.AnyInstances(shape, STEP_ATTRIBUTE(Representation, "items"))) {
        if (!store.Is(item, StepEntity::MappedItem)) continue;
        std::uint32_t const source = context.AnyInstance(item, STEP_ATTRIBUTE(MappedItem, "mapping_source"));
        auto const found = productOfShape.find(
            context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapped_representation")));
        if (found != productOfShape.end() && found->second != parent) mappedItems[found->second].push_back(item);
      }
    }
    std::unordered_map<int, std::size_t> used;
    for (std::size_t const index : waiting) {
      ModelOccurrence& occurrence = occurrences[index];
      auto const& items = mappedItems[occurrence.child];
      std::size_t const position = used[occurrence.child]++;
      if (position >= items.size()) continue;
      shapes.Skip(items[position]);
      std::uint32_t const source = context.AnyInstance(items[position], STEP_ATTRIBUTE(MappedItem, "mapping_source"));
      isPlaced[index] = MapItems(context.AnyInstance(source, STEP_ATTRIBUTE(RepresentationMap, "mapping_origin")),
                                 context.AnyInstance(items[position], STEP_ATTRIBUTE(MappedItem, "mapping_target")),
                                 MetresOf(occurrence.child) / MetresOf(occurrence.parent), occurrence.placement);
    }
  }
}

void StepAssembly::CutCycles() {
  auto& model = context.model;
  for (std::size_t i = 0; i < model.occurrences.size(); ++i) {
    model.products[static_cast<std::size_t>(model.occurrences[i].parent)].occurrences.push_back(static_cast<int>(i));
  }
  enum State : char { Unvisited, OnPath, Done };
  std::vector<State> states(model.products.size(), Unvisited);
  std::vector<bool> isLost(model.occurrences.size(), false);
  std::vector<std::pair<std::size_t, std::size_t>> path;  // product and its next occurrence

  auto const search = [&](std::size_t start) {
    if (states[start] != Unvisited) return;
    states[start] = OnPath;
    path.emplace_back(start, 0);
    while (!path.empty()) {
      auto& [product, next] = path.back();
      auto const& children = model.products[product].occurrences;
      if (next == children.size()) {
        states[product] = Done;
        path.pop_back();
        continue;
      }
      auto const index = static_cast<std::size_t>(children[next++]);
      auto const child = static_cast<std::size_t>(model.occurrences[index].child);
      if (states[child] == OnPath) {
        isLost[index] = true;
        context.Warn(model.occurrences[index].instance, "the occurrence closes a cycle and is skipped");
      } else if (states[child] == Unvisited) {
        states[child] = OnPath;
        path.emplace_back(child, 0);
      }
    }
  };
  // Roots first, so that a cycle loses the occurrence that closes it as seen from the root.
  std::vector<bool> isChild(model.products.size(), false);
  for (ModelOccurrence const& each : model.occurrences) isChild[static_cast<std::size_t>(each.child)] = true;
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    if (!isChild[i]) search(i);
  }
  for (std::size_t i = 0; i < model.products.size(); ++i) search(i);
  for (ModelProduct& product : model.products) {
    auto& children = product.occurrences;
    children.erase(std::remove_if(children.begin(), children.end(),
                                  [&](int index) { return isLost[static_cast<std::size_t>(index)]; }),
                   children.end());
  }
}

void StepAssembly::FindRoots() {
  auto& model = context.model;
  std::vector<bool> isChild(model.products.size(), false);
  for (ModelProduct const& product : model.products) {
    for (int const index : product.occurrences) {
      isChild[static_cast<std::size_t>(model.occurrences[static_cast<std::size_t>(index)].child)] = true;
    }
  }
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    if (!isChild[i] && model.products[i].isRootCandidate) model.roots.push_back(static_cast<int>(i));
  }
}

void StepAssembly::ReadShapes() {
  auto& model = context.model;
  std::vector<StepExtent> extents(model.products.size());
  std::vector<bool> isChild(model.products.size(), false);
  for (ModelOccurrence const& each : model.occurrences) isChild[static_cast<std::size_t>(each.child)] = true;
  for (std::size_t i = 0; i < model.products.size(); ++i) {
    shapes.Read(model.products[i], representations[i], isChild[i]);
    extents[i] = shapes.TakeExtent();
  }
  ComputeExtents(extents);
}

// Returns the products with children before their parents.
std::vector<std::size_t> StepAssembly::BottomUp() const {
  auto const& model = context.model;
  std::vector<std::size_t> order;
  std::vector<bool> isVisited(model.products.size(), false);
  std::vector<std::pair<std::size_t, std::size_t>> path;
  for (std::size_t start = 0; start < model.products.size(); ++start) {
    if (isVisited[start]) continue;
    isVisited[start] = true;
    path.emplace_back(start, 0);
    while (!path.empty()) {
      auto& [product, next] = path.back();
      auto const& children = model.products[product].occurrences;
      if (next == children.size()) {
        order.push_back(product);
        path.pop_back();
        continue;
      }
      auto const& occurrence = model.occurrences[static_cast<std::size_t>(children[next++])];
      auto const child = static_cast<std::size_t>(occurrence.child);
      if (isVisited[child]) continue;
      isVisited[child] = true;
      path.emplace_back(child, 0);
    }
  }
  return order;
}

// The extent of an assembly is exact if its nodes have few enough points and arcs: each is placed. Otherwise it is the
// extent of the placed boxes of its children, so that deep structures do not take quadratic time.
void StepAssembly::ComputeExtents(std::vector<StepExtent>& extents) {
  auto& model = context.model;
  std::vector<std::size_t> steps(model.products.size(), 0);
  std::size_t budget = kExtentStepLimit;
  for (StepExtent const& each : extents) budget += kStepsPerPoint * each.Size();
  std::size_t const limit = budget;
  for (std::size_t const index : BottomUp()) {
    ModelProduct& product = model.products[index];
    steps[index] = 1 + extents[index].Size();
    for (int const each : product.occurrences) {
      auto const child = static_cast<std::size_t>(model.occurrences[static_cast<std::size_t>(each)].child);
      steps[index] = std::min(steps[index] + steps[child], limit + 1);
    }
    if (product.occurrences.empty()) continue;
    if (steps[index] <= budget) {
      budget -= steps[index];
      ExtendByTree(static_cast<int>(index), extents, product.extent);
      continue;
    }
    for (int const each : product.occurrences) {
      ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(each)];
      ModelBox const& box = model.products[static_cast<std::size_t>(occurrence.child)].extent;
      for (int corner = 0; corner < 8 && !box.isEmpty; ++corner) {
        double point[3];
        for (int i = 0; i < 3; ++i) point[i] = (corner >> i & 1) != 0 ? box.high[i] : box.low[i];
        occurrence.placement.Apply(point);
        product.extent.Extend(point);
      }
    }
  }
  if (model.roots.empty()) return;
  model.extentUnits = model.products[static_cast<std::size_t>(model.roots.front())].units;
  double const target = MetresOf(model.roots.front());
  for (int const root : model.roots) {
    ModelBox box = model.products[static_cast<std::size_t>(root)].extent;
    double const factor = MetresOf(root) / target;
    for (int i = 0; i < 3; ++i) {
      box.low[i] *= factor;
      box.high[i] *= factor;
    }
    model.extent.Extend(box);
  }
}

void StepAssembly::ExtendByTree(int root, std::vector<StepExtent>& extents, ModelBox& box) const {
  auto const& model = context.model;
  std::vector<std::pair<int, Placement>> pending{{root, Placement()}};
  while (!pending.empty()) {
    auto const [index, placement] = pending.back();
    pending.pop_back();
    extents[static_cast<std::size_t>(index)].Extend(placement, box);
    for (int const each : model.products[static_cast<std::size_t>(index)].occurrences) {
      ModelOccurrence const& occurrence = model.occurrences[static_cast<std::size_t>(each)];
      Placement const child = placement * occurrence.placement;
      if (child.IsFinite()) pending.emplace_back(occurrence.child, child);
    }
  }
}

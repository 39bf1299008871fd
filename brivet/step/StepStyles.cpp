#include "StepStyles.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

struct NamedColour {
  char const* name;
  double red, green, blue;
};

// ISO 10303-46, pre_defined_colour.
constexpr NamedColour kNamedColours[] = {{"red", 1, 0, 0},    {"green", 0, 1, 0},   {"blue", 0, 0, 1},
                                         {"yellow", 1, 1, 0}, {"magenta", 1, 0, 1}, {"cyan", 0, 1, 1},
                                         {"black", 0, 0, 0},  {"white", 1, 1, 1}};

double Clamp(double component) {
  return std::clamp(component, 0.0, 1.0);
}

}  // namespace

void StepStyles::Read() {
  auto const& store = context.store;
  for (std::uint32_t const each : store.InstancesOf(StepEntity::Invisibility)) {
    for (std::uint32_t const item : context.AnyInstances(each, STEP_ATTRIBUTE(Invisibility, "invisible_items"))) {
      Hide(item);
      // An invisible styled item hides the item that it styles.
      std::uint32_t const target = context.AnyInstance(item, STEP_ATTRIBUTE(StyledItem, "item"));
      if (target != 0) Hide(target);
    }
  }

  // Styles that are replaced for the very item that they style do not count.
  std::unordered_set<std::uint32_t> replaced;
  for (std::uint32_t const each : store.InstancesOf(StepEntity::OverRidingStyledItem)) {
    std::uint32_t const base =
        context.Instance(each, STEP_ATTRIBUTE(OverRidingStyledItem, "over_ridden_style"), StepEntity::StyledItem);
    std::uint32_t const item = context.AnyInstance(each, STEP_ATTRIBUTE(StyledItem, "item"));
    if (base != 0 && base != each && item != 0 &&
        item == context.AnyInstance(base, STEP_ATTRIBUTE(StyledItem, "item"))) {
      replaced.insert(base);
    }
  }
  for (std::uint32_t const each : store.InstancesOf(StepEntity::StyledItem)) {
    bool const isAnnotation =
        store.Is(each, StepEntity::AnnotationOccurrence) || store.Is(each, StepEntity::TessellatedAnnotationOccurrence);
    if (isAnnotation || replaced.count(each) != 0) continue;
    std::optional<ModelColour> const colour = ColourOfStyledItem(each);
    if (!colour.has_value()) continue;
    int const index = IndexOf(*colour);
    ++context.model.colours[static_cast<std::size_t>(index)].items;
    std::uint32_t const item = context.AnyInstance(each, STEP_ATTRIBUTE(StyledItem, "item"));
    if (item == 0) continue;
    styled.Insert(item);
    // The overriding style of an item wins in any order in the file.
    if (store.Is(each, StepEntity::OverRidingStyledItem)) {
      colours[item] = index;
    } else {
      colours.try_emplace(item, index);
    }
  }
}

void StepStyles::Hide(std::uint32_t item) {
  invisible.insert(item);
  styled.Insert(item);
}

int StepStyles::ColourOf(std::uint32_t item) const {
  if (!styled.Contains(item)) return -1;
  auto const found = colours.find(item);
  return found == colours.end() ? -1 : found->second;
}

int StepStyles::ColourOfAnnotation(std::uint32_t occurrence) {
  std::optional<ModelColour> const colour = ColourOfStyledItem(occurrence);
  return colour.has_value() ? IndexOf(*colour) : -1;
}

int StepStyles::IndexOf(ModelColour const& colour) {
  auto const [place, isFirst] = written.try_emplace({colour.red, colour.green, colour.blue, colour.transparency}, 0);
  if (isFirst) place->second = FindOrAdd(colour);
  return place->second;
}

int StepStyles::FindOrAdd(ModelColour const& colour) {
  char key[120];
  std::snprintf(key, sizeof key, "%.9g %.9g %.9g %.9g", colour.red, colour.green, colour.blue, colour.transparency);
  auto& all = context.model.colours;
  auto const [found, isNew] = known.try_emplace(key, static_cast<int>(all.size()));
  if (isNew) all.push_back({colour, 0});
  return found->second;
}

// The colour of a surface is preferred to that of curves and points.
std::optional<ModelColour> StepStyles::ColourOfStyledItem(std::uint32_t styledItem) {
  auto const& store = context.store;
  std::optional<ModelColour> other;
  for (std::uint32_t const assignment : context.AnyInstances(styledItem, STEP_ATTRIBUTE(StyledItem, "styles"))) {
    for (std::uint32_t const style :
         context.AnyInstances(assignment, STEP_ATTRIBUTE(PresentationStyleAssignment, "styles"))) {
      if (store.Is(style, StepEntity::SurfaceStyleUsage)) {
        std::uint32_t const side = context.AnyInstance(style, STEP_ATTRIBUTE(SurfaceStyleUsage, "style"));
        if (auto const colour = SurfaceColour(side)) return colour;
      } else if (store.Is(style, StepEntity::FillAreaStyle)) {
        for (std::uint32_t const fill : context.AnyInstances(style, STEP_ATTRIBUTE(FillAreaStyle, "fill_styles"))) {
          auto const colour = ReadColour(context.AnyInstance(fill, STEP_ATTRIBUTE(FillAreaStyleColour, "fill_colour")));
          if (colour.has_value()) return colour;
        }
      } else if (store.Is(style, StepEntity::CurveStyle) && !other.has_value()) {
        other = ReadColour(context.AnyInstance(style, STEP_ATTRIBUTE(CurveStyle, "curve_colour")));
      } else if (store.Is(style, StepEntity::PointStyle) && !other.has_value()) {
        other = ReadColour(context.AnyInstance(style, STEP_ATTRIBUTE(PointStyle, "marker_colour")));
      }
    }
  }
  return other;
}

std::optional<ModelColour> StepStyles::SurfaceColour(std::uint32_t style) {
  auto const& store = context.store;
  std::optional<ModelColour> colour;
  double transparency = 0.0;
  for (std::uint32_t const each : context.AnyInstances(style, STEP_ATTRIBUTE(SurfaceSideStyle, "styles"))) {
    if (store.Is(each, StepEntity::SurfaceStyleFillArea)) {
      std::uint32_t const area = context.AnyInstance(each, STEP_ATTRIBUTE(SurfaceStyleFillArea, "fill_area"));
      for (std::uint32_t const fill : context.AnyInstances(area, STEP_ATTRIBUTE(FillAreaStyle, "fill_styles"))) {
        auto const found = ReadColour(context.AnyInstance(fill, STEP_ATTRIBUTE(FillAreaStyleColour, "fill_colour")));
        if (found.has_value()) colour = found;
      }
    } else if (store.Is(each, StepEntity::SurfaceStyleRendering)) {
      auto const found = ReadColour(context.AnyInstance(each, STEP_ATTRIBUTE(SurfaceStyleRendering, "surface_colour")));
      if (found.has_value() && !colour.has_value()) colour = found;
      for (std::uint32_t const property :
           context.AnyInstances(each, STEP_ATTRIBUTE(SurfaceStyleRenderingWithProperties, "properties"))) {
        auto const value = context.Number(property, STEP_ATTRIBUTE(SurfaceStyleTransparent, "transparency"));
        if (value.has_value()) transparency = Clamp(*value);
      }
    }
  }
  if (colour.has_value()) colour->transparency = transparency;
  return colour;
}

std::optional<ModelColour> StepStyles::ReadColour(std::uint32_t colour) {
  auto const& store = context.store;
  if (store.Is(colour, StepEntity::ColourRgb)) {
    auto const red = context.Number(colour, STEP_ATTRIBUTE(ColourRgb, "red"));
    auto const green = context.Number(colour, STEP_ATTRIBUTE(ColourRgb, "green"));
    auto const blue = context.Number(colour, STEP_ATTRIBUTE(ColourRgb, "blue"));
    if (red.has_value() && green.has_value() && blue.has_value()) {
      return ModelColour{Clamp(*red), Clamp(*green), Clamp(*blue), 0.0};
    }
    context.Warn(colour, "a component of the colour is not a number");
  } else if (store.Is(colour, StepEntity::PreDefinedItem)) {
    std::string const name = context.Text(colour, STEP_ATTRIBUTE(PreDefinedItem, "name")).value_or("");
    for (NamedColour const& each : kNamedColours) {
      if (name == each.name) return ModelColour{each.red, each.green, each.blue, 0.0};
    }
    context.Warn(colour, "unknown predefined colour '" + name + "'");
  }
  return std::nullopt;
}

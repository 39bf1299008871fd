// Colours and visibility of items.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "StepHash.h"
#include "StepMarks.h"
#include "StepModelContext.h"

// Reads all styled items into ProductModel::colours.
class StepStyles {
 public:
  explicit StepStyles(StepModelContext& modelContext) : context(modelContext) {}

  void Read();

  // Returns the index of the colour that an item itself has, or -1.
  int ColourOf(std::uint32_t item) const;
  // Returns the index of the colour that an annotation occurrence gives its item, or -1. It is not counted.
  int ColourOfAnnotation(std::uint32_t occurrence);
  // Returns whether an item itself has a colour or is invisible.
  bool HasStyle(std::uint32_t item) const noexcept { return styled.Contains(item); }
  bool IsInvisible(std::uint32_t item) const { return styled.Contains(item) && invisible.count(item) != 0; }

 private:
  std::optional<ModelColour> ColourOfStyledItem(std::uint32_t styledItem);
  std::optional<ModelColour> SurfaceColour(std::uint32_t style);
  std::optional<ModelColour> ReadColour(std::uint32_t colour);
  void Hide(std::uint32_t item);
  int IndexOf(ModelColour const& colour);
  int FindOrAdd(ModelColour const& colour);

  StepModelContext& context;
  std::unordered_map<std::uint32_t, int> colours;                // by item
  std::unordered_map<std::string, int, SeededStringHash> known;  // by the written form of the colour
  std::map<std::array<double, 4>, int> written;                  // by its numbers, whose form is in `known`
  std::unordered_set<std::uint32_t> invisible;
  StepMarks styled;  // the items of both, so that the others are recognized without a search
};

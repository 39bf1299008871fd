// Access to the instances of a STEP file with checks, for the readers of the product model.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "ProductModel.h"
#include "StepEntityStore.h"

// An instance is its ordinal; 0 means none. A reference that is missing, dangling or of a wrong type is skipped
// with one warning that names the instance, the attribute, and the expected and the found type.
class StepModelContext {
 public:
  StepModelContext(StepEntityStore const& entityStore, ProductModel& productModel) noexcept
      : store(entityStore), model(productModel) {}

  StepEntityStore const& store;
  ProductModel& model;

  // Returns the referenced instance if it is of the entity, otherwise 0, with a warning. An unset attribute needs none
  // if it is optional.
  std::uint32_t Instance(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected,
                         bool isOptional = false);
  // Returns the instances of a list that are of the entity. A single reference counts as a list.
  std::vector<std::uint32_t> Instances(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected);
  // Appends them to a vector, whose memory can be reused.
  void AddInstances(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected,
                    std::vector<std::uint32_t>& found);
  // Returns the referenced instance of any entity, or 0; with a warning if the file does not contain it.
  std::uint32_t AnyInstance(std::uint32_t instance, StepAttribute const& attribute);
  std::vector<std::uint32_t> AnyInstances(std::uint32_t instance, StepAttribute const& attribute);

  // Returns a string, or nothing if it is unset. Other values draw a warning.
  std::optional<std::string> Text(std::uint32_t instance, StepAttribute const& attribute);
  // Returns a finite number, also from a typed parameter, or nothing.
  std::optional<double> Number(std::uint32_t instance, StepAttribute const& attribute) const noexcept;
  // Returns the numbers of a list.
  std::vector<double> Numbers(std::uint32_t instance, StepAttribute const& attribute) const;
  // Returns true for .T., false for everything else.
  bool Flag(std::uint32_t instance, StepAttribute const& attribute) const noexcept;
  std::string Enumeration(std::uint32_t instance, StepAttribute const& attribute) const;

  std::string IdOf(std::uint32_t instance) const { return store.IdOf(instance); }
  // Adds a warning about an instance, at most one of the same text.
  void Warn(std::uint32_t instance, std::string const& text) { Warn(store.IdOf(instance), text); }
  void Warn(std::string const& instance, std::string const& text);
  // Adds a warning about a value of an attribute that is not an instance of the expected entity.
  void WarnOfType(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected, StepValue const& found);

 private:
  // Returns the ordinal of a reference, or 0 with a warning.
  std::uint32_t Resolve(std::uint32_t instance, StepAttribute const& attribute, StepValue const& reference);

  static constexpr std::size_t kWarningLimit = 10000;
  std::unordered_set<std::string> warned;
};

// Returns the number of a value: of the value itself or of a typed parameter that contains it.
std::optional<double> NumberOf(StepValue const& value) noexcept;

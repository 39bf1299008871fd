#include "StepModelContext.h"

#include <algorithm>
#include <cmath>

namespace {

std::string AttributeName(StepAttribute const& attribute) {
  std::string_view names = DefinitionOf(attribute.entity).attributes;
  for (int i = 0; i < attribute.own; ++i) names = names.substr(names.find(' ') + 1);
  return std::string(names.substr(0, names.find(' ')));
}

}  // namespace

std::optional<double> NumberOf(StepValue const& value) noexcept {
  if (value.kind == StepValue::Number && std::isfinite(value.number)) return value.number;
  if (value.kind != StepValue::Typed) return std::nullopt;
  StepValues content(value);
  if (!content.Next() || content.Current().kind != StepValue::Number) return std::nullopt;
  double const number = content.Current().number;
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void StepModelContext::Warn(std::string const& instance, std::string const& text) {
  if (warned.size() >= kWarningLimit) return;
  std::string line = instance + ": " + text;
  if (warned.insert(line).second) model.warnings.push_back(std::move(line));
}

void StepModelContext::WarnOfType(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected,
                                  StepValue const& found) {
  std::string what = found.KindName();
  if (found.kind == StepValue::Reference) {
    if (found.reference == 0) {
      what = "#" + std::string(found.text) + ", which the file does not contain";
    } else {
      std::string_view const type = store.TypeNameOf(found.reference);
      what = store.IdOf(found.reference) + (type.empty() ? " of another type" : " of type " + std::string(type));
    }
  }
  Warn(instance, "attribute " + AttributeName(attribute) + ": expected " + std::string(DefinitionOf(expected).name) +
                     ", found " + what);
}

std::uint32_t StepModelContext::Instance(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected,
                                         bool isOptional) {
  std::uint32_t target = 0;
  if (store.ReadReference(instance, attribute, target)) {
    if (store.Is(target, expected)) return target;
  } else if (isOptional && store.IsUnset(instance, attribute)) {
    return 0;
  }
  StepValue const value = store.Get(instance, attribute);
  if (value.kind == StepValue::Reference && value.reference != 0 && store.Is(value.reference, expected)) {
    return value.reference;
  }
  if (!isOptional || (value.kind != StepValue::Unset && value.kind != StepValue::Derived)) {
    WarnOfType(instance, attribute, expected, value);
  }
  return 0;
}

std::vector<std::uint32_t> StepModelContext::Instances(std::uint32_t instance, StepAttribute const& attribute,
                                                       StepEntity expected) {
  std::vector<std::uint32_t> found;
  AddInstances(instance, attribute, expected, found);
  return found;
}

void StepModelContext::AddInstances(std::uint32_t instance, StepAttribute const& attribute, StepEntity expected,
                                    std::vector<std::uint32_t>& found) {
  std::size_t const old = found.size();
  auto const isExpected = [&](std::uint32_t each) { return store.Is(each, expected); };
  if (store.ReadReferences(instance, attribute, found)) {
    if (std::all_of(found.begin() + static_cast<std::ptrdiff_t>(old), found.end(), isExpected)) return;
    found.resize(old);
  }
  StepValue const list = store.Get(instance, attribute);
  auto const add = [&](StepValue const& value) {
    if (value.kind == StepValue::Reference && value.reference != 0 && store.Is(value.reference, expected)) {
      found.push_back(value.reference);
    } else {
      WarnOfType(instance, attribute, expected, value);
    }
  };
  if (list.kind == StepValue::List || list.kind == StepValue::Typed) {
    for (StepValues values(list); values.Next();) add(values.Current());
  } else {
    add(list);
  }
}

std::uint32_t StepModelContext::Resolve(std::uint32_t instance, StepAttribute const& attribute,
                                        StepValue const& reference) {
  if (reference.reference == 0) {
    Warn(instance, "attribute " + AttributeName(attribute) + ": found #" + std::string(reference.text) +
                       ", which the file does not contain");
  }
  return reference.reference;
}

std::uint32_t StepModelContext::AnyInstance(std::uint32_t instance, StepAttribute const& attribute) {
  std::uint32_t target = 0;
  if (store.ReadReference(instance, attribute, target)) return target;
  StepValue const value = store.Get(instance, attribute);
  return value.kind == StepValue::Reference ? Resolve(instance, attribute, value) : 0;
}

std::vector<std::uint32_t> StepModelContext::AnyInstances(std::uint32_t instance, StepAttribute const& attribute) {
  std::vector<std::uint32_t> found;
  if (store.ReadReferences(instance, attribute, found)) return found;
  auto const add = [&](StepValue const& value) {
    if (value.kind != StepValue::Reference) return;
    std::uint32_t const each = Resolve(instance, attribute, value);
    if (each != 0) found.push_back(each);
  };
  StepValue const list = store.Get(instance, attribute);
  add(list);
  if (list.kind != StepValue::List && list.kind != StepValue::Typed) return found;
  // A select of sets is written as a typed list: NULL_STYLE, SET_REPRESENTATION_ITEM((#1,#2)).
  for (StepValues values(list); values.Next();) {
    StepValue const& value = values.Current();
    add(value);
    if (value.kind != StepValue::List) continue;
    for (StepValues inner(value); inner.Next();) add(inner.Current());
  }
  return found;
}

std::optional<std::string> StepModelContext::Text(std::uint32_t instance, StepAttribute const& attribute) {
  StepValue const value = store.Get(instance, attribute);
  if (value.kind == StepValue::Text) return std::string(value.text);
  if (value.kind != StepValue::Unset && value.kind != StepValue::Derived && value.kind != StepValue::EndOfList) {
    Warn(instance, "attribute " + AttributeName(attribute) + ": expected a string, found " + value.KindName());
  }
  return std::nullopt;
}

std::optional<double> StepModelContext::Number(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
  double number = 0.0;
  if (store.ReadNumber(instance, attribute, number) && std::isfinite(number)) return number;
  return NumberOf(store.Get(instance, attribute));
}

std::vector<double> StepModelContext::Numbers(std::uint32_t instance, StepAttribute const& attribute) const {
  std::vector<double> numbers;
  if (store.ReadNumbers(instance, attribute, numbers)) return numbers;
  StepValue const list = store.Get(instance, attribute);
  if (list.kind != StepValue::List) return numbers;
  for (StepValues values(list); values.Next();) {
    if (values.Current().kind == StepValue::Number) numbers.push_back(values.Current().number);
  }
  return numbers;
}

bool StepModelContext::Flag(std::uint32_t instance, StepAttribute const& attribute) const noexcept {
  bool flag = false;
  if (store.ReadFlag(instance, attribute, flag)) return flag;
  StepValue const value = store.Get(instance, attribute);
  return value.kind == StepValue::Enumeration && value.text == "T";
}

std::string StepModelContext::Enumeration(std::uint32_t instance, StepAttribute const& attribute) const {
  StepValue const value = store.Get(instance, attribute);
  return value.kind == StepValue::Enumeration ? std::string(value.text) : std::string();
}

#include "StepOptions.h"

#include "VRELOption.h"
#include "VRELOptions.h"

VRELOption* FindStepOption(VRELOptions* options, std::string const& direction, VRELString const& name) {
  VRELOption* option = nullptr;
  if (options == nullptr) return nullptr;
  VRELString const path = VRELString("Step.Assembly." + direction + ".") + name;
  return options->GetOption(path, option).IsSuccess() ? option : nullptr;
}

bool FindStepOption(VRELOptions* options, std::string const& direction, VRELString const& name, VRELString& value) {
  VRELOption const* const option = FindStepOption(options, direction, name);
  return option != nullptr && option->GetValue(value).IsSuccess();
}

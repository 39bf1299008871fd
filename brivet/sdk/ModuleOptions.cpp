#include "ModuleOptions.h"

#include "VRELOption.h"
#include "VRELOptions.h"
#include "VRELString.h"

ModuleOptions::ModuleOptions(VRELOptions* store, std::string const& component, Task task)
    : options(store), prefix(component + ".Assembly." + (task == Reader ? "Reader." : "Writer.")) {}

template <class T>
T ModuleOptions::Get(std::string const& name, T defaultValue) const {
  VRELOption* option = nullptr;
  if (options == nullptr || !options->GetOption(VRELString(prefix + name), option).IsSuccess()) return defaultValue;
  T value = defaultValue;
  return option->GetValue(value).IsSuccess() ? value : defaultValue;
}

std::string ModuleOptions::GetString(std::string const& name, std::string const& defaultValue) const {
  return Get(name, VRELString(defaultValue)).toUtf8();
}

bool ModuleOptions::GetBool(std::string const& name, bool defaultValue) const {
  return Get(name, defaultValue);
}

int ModuleOptions::GetInt(std::string const& name, int defaultValue) const {
  return Get(name, defaultValue);
}

double ModuleOptions::GetDouble(std::string const& name, double defaultValue) const {
  return Get(name, defaultValue);
}

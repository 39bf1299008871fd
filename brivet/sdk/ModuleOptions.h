// Options that a module looks up.
#pragma once

#include <string>

class VRELOptions;

// Finds the options of one format, for reading or for writing it, in those that the user set. The driver has checked
// the types of the options that the module declares.
//
//   ModuleOptions const options(request.options, "Stl", ModuleOptions::Reader);
//   std::string const unit = options.GetString("Unit", "mm");  // looks up Stl.Assembly.Reader.Unit
//
// A value that is not set, or that has another type, is the default.
// Thread safety: that of VRELOptions.
class ModuleOptions {
 public:
  enum Task { Reader, Writer };

  // `store` may be null. Ownership: the store is not owned.
  ModuleOptions(VRELOptions* store, std::string const& component, Task task);

  std::string GetString(std::string const& name, std::string const& defaultValue) const;
  bool GetBool(std::string const& name, bool defaultValue) const;
  int GetInt(std::string const& name, int defaultValue) const;
  double GetDouble(std::string const& name, double defaultValue) const;

 private:
  template <class T>
  T Get(std::string const& name, T defaultValue) const;

  VRELOptions* options;
  std::string prefix;
};

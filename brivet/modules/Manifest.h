// Manifest of a format module: its description, in a configuration file next to it.
#pragma once

#include <cstddef>
#include <string>

#include "ModuleDescription.h"

// A module libNAME.so has the manifest NAME.brivet, which brivet-describe writes.
struct Manifest {
  static constexpr std::size_t kSizeLimit = 65536;  // bytes
  static constexpr char kExtension[] = ".brivet";

  ModuleDescription module;
  std::string problem;  // why the manifest is invalid: "syntax error: ..."; empty if it is valid

  // Parses the content of the manifest of a module of that name. The description of a module for another version of the
  // SDK is not checked, and has names only.
  static Manifest Parse(std::string bytes, std::string const& name);
};

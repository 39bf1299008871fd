// Style sheet, scripts and library of the interactive page, as the build embeds them.
#pragma once

#include <string_view>

// The definitions are written by page/embed.py at build time. The hashes are those of a Content-Security-Policy,
// "sha256-...". kThree and its companions are empty if three.js was not installed when the module was built.
struct PageAssets {
  static std::string_view const kStyle;
  static std::string_view const kStyleHash;
  static std::string_view const kScript;
  static std::string_view const kScriptHash;
  static std::string_view const kThree;  // three.js, compressed with gzip, in Base64
  static std::string_view const kThreeHash;
  static std::string_view const kThreeNotice;  // its licence
};

// The formats that the driver reads and writes, and the modules that do it.
#pragma once

#include <string_view>

struct Format {
  char const* name;        // on the command line: "html"
  char const* title;       // for people: "HTML"
  char const* module;      // lib + this + .so
  char const* extension;   // of files that are written: ".html"
  char const* extensions;  // of files that are taken for it, each between blanks: " .html .htm "

  // The format that is read from a file of that name: STEP, whatever the name, as long as no other is read.
  static Format const& OfInput(std::string_view path);
  // The format that is written into a file of that name; null where its extension tells none.
  static Format const* OfOutput(std::string_view path);
  // The format of that name that can be written; null where there is none.
  static Format const* Named(std::string_view name);
  // What is written where nobody says: a page.
  static Format const& Page();
};

// The extension of a file's name, with its point; empty where there is none. A point in front of a name begins none.
std::string_view ExtensionOf(std::string_view path);
// The name without its folder.
std::string_view BaseNameOf(std::string_view path);

// Formats that the driver reads and writes.
#pragma once

#include <string>
#include <string_view>

struct ModuleDescription;

// The strings are valid until the program ends.
struct Format {
  char const* name;                                // on the command line: "html"
  char const* title;                               // for people: "HTML"
  char const* module;                              // name of the library without "lib" and ".so"
  char const* extension;                           // of new files: ".html"
  char const* extensions;                          // of files of this format, each between blanks: " .html .htm "
  char const* path = nullptr;                      // of the library; null to have the loader search it by name
  ModuleDescription const* description = nullptr;  // of the module, as in its manifest; null if there is none

  // Returns the format for reading a file: the one that has its extension, else the one that recognises its first
  // bytes, else STEP. A final ".gz" is ignored. Only a regular file that is not compressed is opened; a pipe without a
  // known extension is STEP.
  static Format const& OfInput(std::string_view path);
  // Returns the format for writing a file of this name, or null if its extension is unknown. A final ".gz" is ignored.
  static Format const* OfOutput(std::string_view path);
  // Returns the format of this name that can be written, or null.
  static Format const* Named(std::string_view name);
  // Returns the format of a module that evaluates the shapes of files with the extension, or null.
  static Format const* OfEvaluation(std::string_view extension);
  // Returns the default: an HTML page.
  static Format const& Page();
  // Returns the names of the formats that can be written: "html, text, step".
  static std::string WrittenNames();
  // Returns their extensions: ".html, .htm, .txt, ...".
  static std::string WrittenExtensions();
  // Returns a table of all formats, one per line: name, title, what can be done, module, version, extensions and path.
  // A format that is not used, because another one of its name is before it in the path, is marked.
  static std::string Table();

  // Returns the name of the output for an input, without folder: the input's name with the extension of this format
  // instead of its own. That of standard input is "stdin".
  std::string OutputName(std::string_view input) const;
};

// Returns the path without a final ".gz", in any case; IsGzipName returns whether there is one.
std::string_view WithoutGzipExtension(std::string_view path);
bool IsGzipName(std::string_view path);

// Description of a format module: its formats and their options.
//
// A module exports a function that fills its description:
//
//   BRIVET_DESCRIBE_MODULE(module) {
//     module.name = "BrivetStl";
//     module.version = "1.0";
//     FormatDescription stl;
//     stl.name = "stl";
//     stl.title = "STL";
//     stl.extensions = {".stl"};
//     stl.reads = true;
//     stl.readerOptions = {{"Unit", OptionDescription::Choice, "mm", "unit of the coordinates", {"mm", "inch"}}};
//     module.formats = {stl};
//   }
//
// brivet-describe writes it to a manifest next to the module, so that the driver knows the module without loading it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Version of this interface: of the classes and functions in these headers. The driver refuses a module that was built
// for another one.
#define BRIVET_SDK_VERSION 1

// Option of a format, for reading or for writing it.
struct OptionDescription {
  enum Type { Bool, Int, Double, String, Choice };

  std::string name;  // letters and digits: "FileLineLength"
  Type type = String;
  std::string defaultValue;          // as in an options file; empty for none
  std::string help;                  // one line of at most 200 bytes
  std::vector<std::string> choices;  // of Choice; case is ignored
  std::string minimum;               // of Int and Double; empty for none
  std::string maximum;

  // Returns why a value does not have the type or is out of range: "expected a number from 0 to 9, found 'a'"; empty if
  // it is valid. `value` is as in an options file: quotes at its ends are not part of it.
  std::string InvalidReason(std::string_view value) const;
};

// Returns "bool", "int", "double", "string" or "choice".
char const* NameOf(OptionDescription::Type type);
// Sets the type of that name. Returns false, and changes nothing, if there is none.
bool FindOptionType(std::string_view name, OptionDescription::Type& type);

// Bytes that every file of a format has at one place.
struct Signature {
  int offset = 0;     // from the beginning of the file
  std::string bytes;  // at most 64

  bool Matches(std::string_view begin) const;
};

// The driver looks at so many bytes of a file to recognise its format.
constexpr int kRecognisedBytes = 512;

struct FormatDescription {
  std::string name;                     // on the command line; lower-case letters, digits, "-" and "_": "stl"
  std::string title;                    // for people: "STL"
  std::string component;                // first part of option names, "Stl" of Stl.*.Reader.Unit; empty for the name
  std::vector<std::string> extensions;  // in lower case, the first for new files: ".stl"
  std::string mediaType;                // "model/stl"; may be empty
  std::vector<Signature> signatures;    // a file with one of them and an unknown extension has this format
  bool reads = false;
  bool writes = false;
  bool evaluates = false;   // computes the exact shapes of documents that have one of the extensions
  bool usesShapes = false;  // writing it may evaluate exact shapes; the options of their evaluation apply to it
  std::vector<OptionDescription> readerOptions;
  std::vector<OptionDescription> writerOptions;

  std::string const& Component() const { return component.empty() ? name : component; }
  // Returns whether the first bytes of a file, at most kRecognisedBytes, have one of the signatures.
  bool Recognises(std::string_view begin) const;
};

struct ModuleDescription {
  int sdkVersion = BRIVET_SDK_VERSION;
  std::string name;     // of the library, without "lib" and ".so"; at most 55 bytes
  std::string title;    // one line for people; may be empty
  std::string version;  // of the module: "1.0"
  std::vector<FormatDescription> formats;

  // Returns the format of that name, or null.
  FormatDescription const* Find(std::string_view formatName) const;
  // Returns which rule above the description breaks: "two formats have the name 'stl'"; empty for none.
  std::string InvalidReason() const;
};

#define BRIVET_SDK_VERSION_FUNCTION "BrivetSdkVersion"
#define BRIVET_DESCRIBE "BrivetDescribeModule"

using BrivetSdkVersionFunction = int();
using BrivetDescribeFunction = void(ModuleDescription&);

// Defines the function that describes the module; its body follows. The version is a function of its own, because it
// must be known before a class of the interface is used.
// NOLINTBEGIN(bugprone-macro-parentheses): the argument is the name of a parameter.
#define BRIVET_DESCRIBE_MODULE(description)                                                                    \
  extern "C" __attribute__((visibility("default"))) int BrivetSdkVersion();                                    \
  extern "C" int BrivetSdkVersion() {                                                                          \
    return BRIVET_SDK_VERSION;                                                                                 \
  }                                                                                                            \
  extern "C" __attribute__((visibility("default"))) void BrivetDescribeModule(ModuleDescription& description); \
  extern "C" void BrivetDescribeModule(ModuleDescription& description)
// NOLINTEND(bugprone-macro-parentheses)

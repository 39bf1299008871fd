// Header of a STEP file as rows of the file header.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DocumentVisitor.h"

class VRELFileHeader;
class VRELString;

// Fills a file header with the strings of FILE_DESCRIPTION, FILE_NAME and FILE_SCHEMA: a heading for each entity, then
// a row for each string. The key is that of the file header where it resembles the parameter's name (File Name, Author,
// Organization), otherwise that name. Each item of a list has its own row, from the second on with its number: Author,
// Author 2. Only the first kListLimit items are stored; a last row, "Author (number)", has the number of items.
//
// "(unset)" is the value of $ and of a parameter that the file omits, "(none)" that of an empty list, "(empty)" that of
// an empty string. Control characters are escaped: <U+000A>.
//
// Passed to a parser as the visitor for one record at a time.
class StepHeader final : public DocumentVisitor {
 public:
  static constexpr std::size_t kListLimit = 100;

  explicit StepHeader(VRELFileHeader& target) : header(target) {}

  // Returns the names of an entity's parameters, which end with null; null for an entity that is not one of the three.
  static char const* const* ParametersOf(std::string_view type);

  void BeginRecord(std::string_view type) override;
  void EndRecord() override;
  void Integer(std::string_view number) override { Add(number); }
  void Real(std::string_view number) override { Add(number); }
  void String(Text const& text) override;
  void Enumeration(std::string_view name) override { Add(name); }
  void Binary(std::string_view digits) override { Add(digits); }
  void Reference(Id const& target, bool defined) override;
  void Name(std::string_view name) override { Add(name); }
  void Resource(std::string_view resource) override { Add(resource); }
  void Unset() override;
  void Derived() override { Unset(); }
  void BeginList() override;
  void EndList() override;
  void BeginTyped(std::string_view /*type*/) override { BeginList(); }
  void EndTyped() override { EndList(); }
  void BeginBraces(std::string_view /*tag*/) override { BeginList(); }
  void EndBraces() override { EndList(); }

 private:
  struct Parameter {
    bool isSet = false;
    std::size_t count = 0;
    std::vector<std::string> items;  // the first ones
  };

  void AddParameter(bool isSet);
  void Add(std::string_view item);
  void SetRows(char const* name, Parameter const& parameter);

  VRELFileHeader& header;
  std::string heading;
  char const* const* names = nullptr;
  std::vector<Parameter> parameters;  // no more than an entity has
  std::size_t depth = 0;
  std::size_t index = 0;  // of the present parameter, from 1
};

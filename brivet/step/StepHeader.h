// The header of a STEP file as the family shows it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "DocumentVisitor.h"

class VRELFileHeader;
class VRELString;

// Fills a file header with the strings of FILE_DESCRIPTION, FILE_NAME and FILE_SCHEMA: a heading for each entity, then
// a row for each text. The keys are the header's own where they still show the parameter's name (File Name, Author,
// Organization), else that name. Each item of a list has a row of its own, from the second on with its number: Author,
// Author 2. "(unset)" stands for $ and for a parameter that the file leaves out, "(none)" for an empty list, "(empty)"
// for an empty string, <U+000A> for a control character.
//
// Handed to a parser as a visitor, for one record after the other.
class StepHeader final : public DocumentVisitor {
 public:
  explicit StepHeader(VRELFileHeader& target) : header(target) {}

  // The names of an entity's parameters; null behind the last. Null for an entity that is not one of the three.
  static char const* const* ParametersOf(std::string_view type);

  void BeginRecord(std::string_view type) override;
  void EndRecord() override;
  void Integer(std::string_view number) override { Add(number); }
  void Real(std::string_view number) override { Add(number); }
  void String(Text const& text) override;
  void Enumeration(std::string_view name) override { Add(name); }
  void Binary(std::string_view digits) override { Add(digits); }
  void Reference(Id const& target, bool defined) override;
  void Unset() override;
  void Derived() override { Unset(); }
  void BeginList() override;
  void EndList() override;
  void BeginTyped(std::string_view type) override;
  void EndTyped() override { EndList(); }

 private:
  struct Parameter {
    bool isSet = false;
    std::vector<std::string> texts;
  };

  void Add(std::string_view shown);
  void SetRows(char const* name, Parameter const& parameter);

  VRELFileHeader& header;
  std::string heading;
  char const* const* names = nullptr;
  std::vector<Parameter> parameters;
  std::size_t depth = 0;
};

// Strings of the header section of a document.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DocumentVisitor.h"

// Visitor that stores the strings of the header's records by their position.
//
//   HeaderRecords header;
//   document.DescribeHeader(header);
//   std::optional<std::string> const name = header.Text("FILE_NAME", 0);
class HeaderRecords final : public DocumentVisitor {
 public:
  void BeginRecord(std::string_view type) override;
  void EndRecord() override { record = nullptr; }
  void String(DocumentVisitor::Text const& text) override;
  void Unset() override;
  void BeginList() override;
  void EndList() override { --depth; }

  // Returns the first string of a parameter, counted from 0, or nothing if it has none.
  std::optional<std::string> Text(char const* type, std::size_t index) const;
  // Returns the strings of a parameter.
  std::vector<std::string> List(char const* type, std::size_t index) const;
  // Returns "AP203", "AP214" or "AP242" by the first schema that is known, "other" if none is, and null without
  // schemas.
  char const* ApplicationProtocol() const;

 private:
  std::map<std::string, std::vector<std::vector<std::string>>, std::less<>> records;
  std::vector<std::vector<std::string>>* record = nullptr;
  int depth = 0;  // of lists in the present record
};

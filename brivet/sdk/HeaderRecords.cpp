#include "HeaderRecords.h"

namespace {

// Returns the application protocol of a schema, "AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }", or null.
char const* ProtocolOf(std::string const& schema) {
  std::string const name = schema.substr(0, schema.find_first_of(" {"));
  if (name == "CONFIG_CONTROL_DESIGN" || name.rfind("AP203_", 0) == 0) return "AP203";
  if (name.rfind("AUTOMOTIVE_DESIGN", 0) == 0) return "AP214";
  if (name.rfind("AP242_", 0) == 0) return "AP242";
  return nullptr;
}

}  // namespace

void HeaderRecords::BeginRecord(std::string_view type) {
  record = &records[std::string(type)];
  depth = 0;
}

void HeaderRecords::String(DocumentVisitor::Text const& text) {
  if (record == nullptr) return;
  if (depth == 0) record->emplace_back();
  record->back().emplace_back(text.utf8);
}

void HeaderRecords::Unset() {
  if (record != nullptr && depth == 0) record->emplace_back();
}

void HeaderRecords::BeginList() {
  if (record != nullptr && depth == 0) record->emplace_back();
  ++depth;
}

std::optional<std::string> HeaderRecords::Text(char const* type, std::size_t index) const {
  std::vector<std::string> const list = List(type, index);
  if (list.empty()) return std::nullopt;
  return list.front();
}

std::vector<std::string> HeaderRecords::List(char const* type, std::size_t index) const {
  auto const found = records.find(type);
  if (found == records.end() || index >= found->second.size()) return {};
  return found->second[index];
}

char const* HeaderRecords::ApplicationProtocol() const {
  std::vector<std::string> const schemas = List("FILE_SCHEMA", 0);
  for (std::string const& schema : schemas) {
    if (char const* const protocol = ProtocolOf(schema)) return protocol;
  }
  return schemas.empty() ? nullptr : "other";
}

// Visitor that checks the calls of a document, for the tests of a reading module.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "DocumentVisitor.h"

// Checks that a document calls a visitor as DocumentVisitor requires, and passes the calls on to another visitor.
//
//   ContractVisitor header(ContractVisitor::Header);
//   document->DescribeHeader(header);
//   EXPECT_EQ(header.Finish(), "");
//   ContractVisitor data(ContractVisitor::Data);
//   document->Describe(data, progress, false);
//   EXPECT_EQ(data.Finish(), "");
//
// A message names the broken rule: "#7: Real '1' has no decimal point". The rules:
//
// - Each Begin has its End, in the reverse order. Nothing is passed outside the section it belongs to.
// - Data: BeginInstance is in a section. An instance contains records and referrers, a simple one exactly one record, a
//   complex one at least one. A section's own record is before its instances and has no type; all others have one.
// - Data: the digits of an id are decimal, without leading zeros; `number` is the same or -1; no two instances have the
//   same id. A reference that is said to be defined is the id of an instance.
// - Header: only records and values.
// - Types and enumerations are of upper-case letters, digits and "_"; an enumeration has no points.
// - An integer has decimal digits and an optional sign. A real has digits, a decimal point and an optional exponent,
//   which begins with "E", in every locale. The digits of a binary value are hexadecimal, in upper case, the first one
//   0 to 3.
// - BeginTyped contains one value. `encoded` of a string has no control characters, and `escaped` is set if it has an
//   escape; `utf8` is UTF-8.
class ContractVisitor final : public DocumentVisitor {
 public:
  enum Part { Header, Data };

  // Ownership: `visitor` is not owned; null for none.
  explicit ContractVisitor(Part describedPart, DocumentVisitor* visitor = nullptr)
      : part(describedPart), next(visitor != nullptr ? visitor : &nothing) {}

  // Checks what can be checked only at the end. Returns all messages, one a line, at most kMessageLimit; empty if no
  // rule was broken.
  std::string Finish();

  static constexpr std::size_t kMessageLimit = 100;

  void BeginSection() override;
  void EndSection() override;
  void BeginInstance(Id const& id, bool complex) override;
  void EndInstance() override;
  void BeginRecord(std::string_view type) override;
  void EndRecord() override;
  void Integer(std::string_view number) override;
  void Real(std::string_view number) override;
  void String(Text const& text) override;
  void Enumeration(std::string_view name) override;
  void Binary(std::string_view digits) override;
  void Reference(Id const& target, bool defined) override;
  void Unset() override;
  void Derived() override;
  void BeginList() override;
  void EndList() override;
  void BeginTyped(std::string_view type) override;
  void EndTyped() override;
  void Name(std::string_view name) override;
  void Resource(std::string_view resource) override;
  void BeginBraces(std::string_view tag) override;
  void EndBraces() override;
  void Referrer(Id const& source) override;
  void BeginOtherSection(std::string_view keyword) override;
  void EndOtherSection() override;
  void BeginEntry(std::string_view name) override;
  void EndEntry() override;
  void Lines(std::string_view text) override;

 private:
  struct Scope {
    char kind;
    long content = 0;  // values, or records of an instance
    bool hasInstances = false;
  };

  void Break(std::string const& message);
  bool IsIn(std::string_view kinds) const;
  void Open(char kind, char const* call, std::string_view allowed);
  void Close(char kind, char const* call);
  void Value(char const* call);
  void CheckId(Id const& id);
  void CheckType(char const* call, std::string_view type);

  Part const part;
  DocumentVisitor nothing;
  DocumentVisitor* const next;
  std::vector<Scope> scopes;
  std::vector<std::string> messages;
  std::vector<std::string> ids;
  std::vector<std::string> references;
  std::string where;  // "#7: ", "FILE_NAME: "
  bool isComplex = false;
};

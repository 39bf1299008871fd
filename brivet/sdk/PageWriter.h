// Base class of all pages for readers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DocumentVisitor.h"
#include "VRINResult.h"

struct BrivetWriteRequest;
struct Loss;
class Document;

// Writes a document from its title to its last instance, in this order:
//
//   title, summary (if the class writes one), what was lost, header, counts by type, each section: its instances, each
//   with those that refer to it
//
// A derived class provides the markup. Of ids with very many digits only the first ones are shown.
class PageWriter : public DocumentVisitor {
 public:
  // Errors: those of Document::Describe.
  VRINResult WritePage(BrivetWriteRequest& request);

  void BeginSection() override;
  void EndSection() override;
  void BeginInstance(Id const& id, bool complex) override;
  void EndInstance() override;
  void BeginRecord(std::string_view type) override;
  void EndRecord() override;
  void Integer(std::string_view number) override { PutValue(number); }
  void Real(std::string_view number) override { PutValue(number); }
  void String(Text const& text) override;
  void Enumeration(std::string_view name) override;
  void Binary(std::string_view digits) override;
  void Reference(Id const& target, bool defined) override;
  void Unset() override { PutValue("$"); }
  void Derived() override { PutValue("*"); }
  void BeginList() override { Open("("); }
  void EndList() override { Close(")"); }
  void BeginTyped(std::string_view type) override;
  void EndTyped() override { Close(")"); }
  void Name(std::string_view name) override { PutValue(name); }
  void Resource(std::string_view resource) override;
  void BeginBraces(std::string_view tag) override;
  void EndBraces() override { Close("}"); }
  void Referrer(Id const& source) override;
  void BeginOtherSection(std::string_view keyword) override;
  void EndOtherSection() override { EndSection(); }
  void BeginEntry(std::string_view name) override;
  void EndEntry() override;
  void Lines(std::string_view text) override;

  // Returns the digits of an id as they are shown: the first ones and "..." if there are very many.
  static std::string DisplayDigits(Id const& id);

 protected:
  // A line can be as long as the document. It is written in blocks of about this many bytes.
  static constexpr std::size_t kBlockSize = 65536;

  // Puts UTF-8 text. A line may be put in any number of calls.
  virtual void Put(std::string_view utf8) = 0;
  virtual void EndLine() = 0;
  // Puts the id of an instance where it is defined.
  virtual void PutDefinition(Id const& id) = 0;
  // Puts the text before a reference, such as ", #", and the id of the instance that it leads to.
  virtual void PutReference(std::string_view before, Id const& id) = 0;
  virtual void PutTitle(std::string_view title) = 0;
  virtual void PutHeading(std::string_view heading) = 0;
  // Tables of two columns: BeginTable, rows, EndTable. A row with an empty key is a heading.
  virtual void BeginTable() = 0;
  virtual void PutRow(std::string_view key, std::string_view value) = 0;
  virtual void EndTable() = 0;
  // The line of those that refer to an instance.
  virtual void BeginReferrers() = 0;
  virtual void EndReferrers() = 0;
  // Called after the title: writes a summary of the product model, or nothing.
  virtual void WriteSummary(BrivetWriteRequest& /*request*/) {}
  // Called after each instance. Throws to end writing.
  virtual void Check() = 0;

 private:
  void WriteLosses(Document& document);
  void WriteHeader(Document& document);
  void WriteCounts(Document& document);
  void Separate();
  void PutValue(std::string_view value);
  void PutEscaped(std::string_view utf8);
  void Open(std::string_view text);
  void Close(std::string_view text);
  void EndRecords();

  std::string escaped;  // a member so that its memory is reused
  long section = 0;
  std::size_t depth = 0;  // of lists within the record or the entry
  bool isComplex = false;
  bool isFirst = true;     // nothing precedes in the present list
  bool inRecords = false;  // the line of the instance has not ended
  bool inEntry = false;
  bool hasReferrers = false;  // the line of the referrers has begun
};

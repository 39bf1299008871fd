// What all pages for people have in common.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DocumentVisitor.h"
#include "VRINResult.h"

struct BrivetWriteRequest;
class Document;

// Writes a document from its title to its last instance, in the order
//
//   title, header, counts by type, each data section: its instances, each with those that refer to it
//
// A derived class brings the marks of its kind of page.
class PageWriter : public DocumentVisitor {
 public:
  // Fails as Document::Describe does.
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
  void EndList() override { Close(); }
  void BeginTyped(std::string_view type) override;
  void EndTyped() override { Close(); }
  void Referrer(Id const& source) override;

 protected:
  // A line may be as long as the document: what is kept of it goes out when it has so many bytes.
  static constexpr std::size_t BLOCK = 65536;

  // Text of the page, in UTF-8. What Put is given may come in any number of calls to one line.
  virtual void Put(std::string_view utf8) = 0;
  virtual void EndLine() = 0;
  // The name of an instance, where it is defined and where something leads to it.
  virtual void PutDefinition(Id const& id) = 0;
  virtual void PutReference(Id const& id) = 0;
  virtual void PutTitle(std::string_view title) = 0;
  virtual void PutHeading(std::string_view heading) = 0;
  // Tables of two columns: BeginTable, rows, EndTable. The key of a row is empty in a row between others.
  virtual void BeginTable() = 0;
  virtual void PutRow(std::string_view key, std::string_view value) = 0;
  virtual void EndTable() = 0;
  // The line of those that refer to an instance.
  virtual void BeginReferrers() = 0;
  virtual void EndReferrers() = 0;
  // Called behind each instance: throws to end the work.
  virtual void Check() = 0;

 private:
  void WriteHeader(Document& document);
  void WriteCounts(Document& document);
  void Separate();
  void PutValue(std::string_view value);
  void Open(std::string_view text);
  void Close();
  void EndRecords();

  std::string shown;  // kept between calls for its memory
  long section = 0;
  bool isComplex = false;
  bool isFirst = true;        // nothing stands in the present list yet
  bool inRecords = false;     // the line of the instance has not ended
  bool hasReferrers = false;  // that of the referrers has begun
};

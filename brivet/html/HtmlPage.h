// HTML page of a document.
#pragma once

#include <string>
#include <string_view>

#include "CheckedOutputStream.h"
#include "PageWriter.h"
#include "VRELHTMLStreamFormatter.h"

// Each instance is an anchor with its id as the name, and each reference is a link to it. Characters beyond ASCII are
// written as numeric character references, so that the page is the same in every encoding.
//
// Errors: CheckedOutputStream::Failure if the stream does not accept everything.
class HtmlPage final : public PageWriter {
 public:
  HtmlPage(CheckedOutputStream& target, std::string const& title);

 private:
  void Put(std::string_view utf8) override;
  void EndLine() override;
  void PutDefinition(Id const& id) override;
  void PutReference(std::string_view before, Id const& id) override;
  void PutTitle(std::string_view title) override;
  void PutHeading(std::string_view heading) override;
  void BeginTable() override { PutMarkup("<TABLE>\n"); }
  void PutRow(std::string_view key, std::string_view value) override;
  void EndTable() override { PutMarkup("</TABLE>\n"); }
  void BeginReferrers() override { PutMarkup("<SMALL>&nbsp;&nbsp;&nbsp;&nbsp;referred to by "); }
  void EndReferrers() override;
  void Check() override { stream.Check(); }

  static std::string AnchorOf(Id const& id);
  void PutMarkup(std::string_view markup) { pending += markup; }
  void Flush();

  CheckedOutputStream& stream;
  VRELHTMLStreamFormatter formatter;
  std::string pending;  // written before the next object of the formatter
};

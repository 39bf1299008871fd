// The page that people browse.
#pragma once

#include <string>
#include <string_view>

#include "PageWriter.h"
#include "VRELHTMLStreamFormatter.h"
#include "CheckedOutputStream.h"

// Each instance is an anchor named by its id, each reference a link to it. Characters beyond ASCII stand as numeric
// references, so that the page reads the same in every encoding. Throws CheckedOutputStream::Failure when the stream takes
// less than it is given.
class HtmlPage final : public PageWriter {
 public:
  HtmlPage(CheckedOutputStream& target, std::string const& title);

 private:
  void Put(std::string_view utf8) override;
  void EndLine() override;
  void PutDefinition(Id const& id) override;
  void PutReference(Id const& id) override;
  void PutTitle(std::string_view title) override;
  void PutHeading(std::string_view heading) override;
  void BeginTable() override { PutMarkup("<TABLE>\n"); }
  void PutRow(std::string_view key, std::string_view value) override;
  void EndTable() override { PutMarkup("</TABLE>\n"); }
  void BeginReferrers() override { PutMarkup("<SMALL>&nbsp;&nbsp;&nbsp;&nbsp;referred to by "); }
  void EndReferrers() override;
  void Check() override { stream.Check(); }

  void PutMarkup(std::string_view markup) { pending += markup; }
  void Flush();

  CheckedOutputStream& stream;
  VRELHTMLStreamFormatter formatter;
  std::string pending;  // what is to be written before the next object of the formatter
};

// Plain text page of a document.
#pragma once

#include <string>
#include <string_view>

#include "CheckedOutputStream.h"
#include "PageWriter.h"
#include "Utf8StreamFormatter.h"

// UTF-8, one instance per line.
//
// Errors: CheckedOutputStream::Failure if the stream does not accept everything.
class TextPage final : public PageWriter {
 public:
  explicit TextPage(CheckedOutputStream& target, std::string const& /*title*/ = "")
      : stream(target), formatter(&target) {}

 private:
  void Put(std::string_view utf8) override;
  void EndLine() override;
  void PutDefinition(Id const& id) override { pending += DisplayDigits(id); }
  void PutReference(std::string_view before, Id const& id) override {
    Put(before);
    pending += DisplayDigits(id);
  }
  void PutTitle(std::string_view title) override;
  void PutHeading(std::string_view heading) override;
  void BeginTable() override {}
  void PutRow(std::string_view key, std::string_view value) override;
  void EndTable() override {}
  void BeginReferrers() override { pending += "    referred to by "; }
  void EndReferrers() override { EndLine(); }
  void WriteSummary(BrivetWriteRequest& request) override;
  void Check() override { stream.Check(); }

  void Flush();

  CheckedOutputStream& stream;
  Utf8StreamFormatter formatter;
  std::string pending;
};

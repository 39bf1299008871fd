// The page as plain text.
#pragma once

#include <string>
#include <string_view>

#include "PageWriter.h"
#include "Utf8StreamFormatter.h"
#include "CheckedOutputStream.h"

// UTF-8, an instance a line. Throws CheckedOutputStream::Failure when the stream takes less than it is given.
class TextPage final : public PageWriter {
 public:
  explicit TextPage(CheckedOutputStream& target) : stream(target), formatter(&target) {}

 private:
  void Put(std::string_view utf8) override;
  void EndLine() override;
  void PutDefinition(Id const& id) override { pending += id.digits; }
  void PutReference(Id const& id) override { pending += id.digits; }
  void PutTitle(std::string_view title) override;
  void PutHeading(std::string_view heading) override;
  void BeginTable() override {}
  void PutRow(std::string_view key, std::string_view value) override;
  void EndTable() override {}
  void BeginReferrers() override { pending += "    referred to by "; }
  void EndReferrers() override { EndLine(); }
  void Check() override { stream.Check(); }

  void Flush();

  CheckedOutputStream& stream;
  Utf8StreamFormatter formatter;
  std::string pending;
};

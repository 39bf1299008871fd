#include "HtmlPage.h"

#include "HtmlText.h"

namespace {

constexpr char kStyle[] =
    "<META CHARSET=\"us-ascii\">\n"
    "<STYLE>\n"
    "BODY { font: 14px/1.5 sans-serif; margin: 2em; }\n"
    "TABLE { border-collapse: collapse; }\n"
    "TD { border-bottom: 1px solid #DDD; padding: 0.1em 1em 0.1em 0; vertical-align: top; }\n"
    "TD[colspan] { border: 0; font-weight: bold; padding-top: 0.8em; }\n"
    "DIV { font-family: monospace; overflow-wrap: anywhere; }\n"
    "SMALL { color: #666; }\n"
    "A { text-decoration: none; }\n"
    "A[name] { font-weight: bold; }\n"
    "A:target { background: #FFE680; }\n"
    "</STYLE>\n";

}  // namespace

HtmlPage::HtmlPage(CheckedOutputStream& target, std::string const& title)
    : stream(target), formatter(&target, EscapeHtml(title).c_str(), "#FFFFFF") {
  PutMarkup(kStyle);
}

void HtmlPage::Put(std::string_view utf8) {
  AppendHtml(pending, utf8);
  if (pending.size() >= kBlockSize) Flush();
}

void HtmlPage::Flush() {
  if (!pending.empty()) formatter << pending.c_str();
  pending.clear();
  stream.Check();
}

void HtmlPage::EndLine() {
  Flush();
  formatter << formatter.endline();
}

// Numbers of the formatter are of type long. Other ids have the position of the instance as the name of their anchor,
// because an id can have any number of digits and be referred to any number of times.
std::string HtmlPage::AnchorOf(Id const& id) {
  return id.ordinal != 0 ? "n" + std::to_string(id.ordinal) : std::string();
}

void HtmlPage::PutDefinition(Id const& id) {
  Flush();
  if (id.fits()) {
    formatter << formatter.define(static_cast<long>(id.number));
    return;
  }
  std::string const anchor = AnchorOf(id);
  if (!anchor.empty()) PutMarkup("<a name= \"" + anchor + "\">");
  Put(DisplayDigits(id));
  if (!anchor.empty()) PutMarkup("</a>");
}

void HtmlPage::PutReference(std::string_view before, Id const& id) {
  Put(before);
  Flush();
  if (id.fits()) {
    formatter << formatter.refer(static_cast<long>(id.number));
    return;
  }
  std::string const anchor = AnchorOf(id);
  if (!anchor.empty()) PutMarkup("<a href=\"#" + anchor + "\">");
  Put(DisplayDigits(id));
  if (!anchor.empty()) PutMarkup("</a>");
}

void HtmlPage::PutTitle(std::string_view title) {
  PutMarkup("<H1>");
  Put(title);
  PutMarkup("</H1>\n");
}

void HtmlPage::PutHeading(std::string_view heading) {
  PutMarkup("<H2>");
  Put(heading);
  PutMarkup("</H2>\n");
}

void HtmlPage::PutRow(std::string_view key, std::string_view value) {
  PutMarkup(key.empty() ? "<TR><TD COLSPAN=2>" : "<TR><TD>");
  Put(key);
  if (!key.empty()) PutMarkup("<TD>");
  Put(value);
  PutMarkup("\n");
}

void HtmlPage::EndReferrers() {
  PutMarkup("</SMALL>");
  EndLine();
}

// Entry points of libBrivetHtml.so, which writes pages for browsers.
#include "HtmlPage.h"
#include "ModuleDescription.h"
#include "PageModule.h"

BRIVET_PAGE_MODULE(HtmlPage)

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetHtml";
  module.title = "pages for browsers";
  module.version = BRIVET_VERSION;
  FormatDescription html;
  html.name = "html";
  html.title = "HTML";
  html.component = "Html";
  html.extensions = {".html", ".htm"};
  html.mediaType = "text/html";
  html.writes = true;
  module.formats = {html};
}

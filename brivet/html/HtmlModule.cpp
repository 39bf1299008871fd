// Entry points of libBrivetHtml.so, which writes pages for browsers.
#include "HtmlPage.h"
#include "InteractivePage.h"
#include "ModuleDescription.h"
#include "ModuleOptions.h"
#include "PageModule.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}
BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  if (ModuleOptions(request.options, "Html", ModuleOptions::Writer).GetBool("Plain", false)) {
    WritePage<HtmlPage>(request);
  } else {
    WritePage<InteractivePage>(request);
  }
}

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
  html.writerOptions = {
      {"Plain", OptionDescription::Bool, "Off", "write a listing without scripts, for text browsers", {}, "", ""}};
  module.formats = {html};
}

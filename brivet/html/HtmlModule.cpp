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
  html.usesShapes = true;
  using Type = OptionDescription;
  html.writerOptions = {
      {"Plain", Type::Bool, "Off", "write a listing without scripts, for text browsers", {}, "", ""},
      {"Shade",
       Type::Choice,
       "Auto",
       "shade faces of exact shapes by the shape module: Auto if there are not too many",
       {"Auto", "On", "Off"},
       "",
       ""},
      {"Tolerance",
       Type::Double,
       "0.001",
       "share by which stored volumes, areas and centroids may differ from computed ones",
       {},
       "0",
       "1"},
  };
  module.formats = {html};
}

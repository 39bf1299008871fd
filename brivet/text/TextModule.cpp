// Entry points of libBrivetText.so, which writes pages as plain text.
#include "ModuleDescription.h"
#include "PageModule.h"
#include "TextPage.h"

BRIVET_PAGE_MODULE(TextPage)

BRIVET_DESCRIBE_MODULE(module) {
  module.name = "BrivetText";
  module.title = "pages as plain text";
  module.version = BRIVET_VERSION;
  FormatDescription text;
  text.name = "text";
  text.title = "text";
  text.component = "Text";
  text.extensions = {".txt", ".text"};
  text.mediaType = "text/plain";
  text.writes = true;
  module.formats = {text};
}

// The entry points of libBrivetHtml.so, which writes a page that people browse.
#include "BrivetModule.h"
#include "HtmlPage.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}

BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  CheckedOutputStream stream(request.stream);
  try {
    HtmlPage page(stream, request.title);
    request.result = page.WritePage(request);
  } catch (CheckedOutputStream::Failure const&) {
    request.result = VREL_E_FILE_SAVE;
  }
  if (request.result.IsSuccess() && stream.HasFailed()) request.result = VREL_E_FILE_SAVE;
}

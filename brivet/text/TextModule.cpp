// The entry points of libBrivetText.so, which writes a page as plain text.
#include "BrivetModule.h"
#include "TextPage.h"

BRIVET_MODULE_ENTRY BrivetInitialize() {}

BRIVET_MODULE_ENTRY BrivetFinalize() {}

BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) {
  CheckedOutputStream stream(request.stream);
  try {
    TextPage page(stream);
    request.result = page.WritePage(request);
  } catch (CheckedOutputStream::Failure const&) {
    request.result = VREL_E_FILE_SAVE;
  }
  if (request.result.IsSuccess() && stream.HasFailed()) request.result = VREL_E_FILE_SAVE;
}

// Entry points of a module that writes pages.
#pragma once

#include "BrivetModule.h"
#include "CheckedOutputStream.h"

// Writes a page of the class `Page`, which derives from PageWriter and is constructed from the stream and the title.
template <class Page>
void WritePage(BrivetWriteRequest& request) {
  CheckedOutputStream stream(request.stream);
  try {
    Page page(stream, request.title);
    request.result = page.WritePage(request);
  } catch (CheckedOutputStream::Failure const&) {
    request.result = VREL_E_FILE_SAVE;
  }
  if (request.result.IsSuccess() && stream.HasFailed()) request.result = VREL_E_FILE_SAVE;
}

// Defines the entry points of such a module.
#define BRIVET_PAGE_MODULE(Page)                                         \
  BRIVET_MODULE_ENTRY BrivetInitialize() {}                              \
  BRIVET_MODULE_ENTRY BrivetFinalize() {}                                \
  BRIVET_MODULE_ENTRY BrivetWriteDocument(BrivetWriteRequest& request) { \
    WritePage<Page>(request);                                            \
  }

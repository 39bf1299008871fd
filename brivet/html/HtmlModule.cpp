// Entry points of libBrivetHtml.so, which writes pages for browsers.
#include "HtmlPage.h"
#include "PageModule.h"

BRIVET_PAGE_MODULE(HtmlPage)

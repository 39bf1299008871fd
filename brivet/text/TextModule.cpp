// Entry points of libBrivetText.so, which writes pages as plain text.
#include "PageModule.h"
#include "TextPage.h"

BRIVET_PAGE_MODULE(TextPage)

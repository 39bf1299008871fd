// Output of -list.
#pragma once

#include "VRINResult.h"

class Document;

// Prints a summary of the document on standard output, in UTF-8: its header as in the logs, the numbers of its
// instances, its types with their counts, and each string with escapes, decoded, with its line and instance. Each
// string is one line: control characters are shown as <U+000A>. The listing depends on nothing but the document.
//
// Requires: the document was read; it need not be resolved.
// Errors: VREL_E_FILE_SAVE, reported, if standard output does not take all.
VRINResult PrintListing(Document& document);

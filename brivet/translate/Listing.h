// Output of -list.
#pragma once

#include "VRINResult.h"

class Document;
class Progress;

// Prints a description of the document on standard output, in UTF-8: the summary of its product model if it has one,
// its header as in the logs, the numbers of its instances, its types with their counts, and each string with escapes,
// decoded, with its line and instance. Each string is one line: control characters are shown as <U+000A>. The listing
// depends on nothing but the document.
//
// Requires: the document was read; it need not be resolved.
// Errors: VREL_E_FILE_SAVE, reported, if standard output does not take all.
VRINResult PrintListing(Document& document, Progress& progress);

// Prints at most a screenful: file, application protocol, system, date and instances, and the summary of the product
// model.
//
// Requires, Errors: as for PrintListing.
VRINResult PrintDocumentSummary(Document& document, Progress& progress);

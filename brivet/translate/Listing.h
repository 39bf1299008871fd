// What -list prints.
#pragma once

#include <string>

#include "VRINResult.h"

class Document;

// Prints on standard output, in UTF-8, what the document tells of itself: its header as the logs of the family show it,
// the numbers of its instances, the types by their numbers, and each text with escapes, decoded, with the line where it
// begins and the instance that holds it. One text is one line: a control character is shown as <U+000A>.
//
// The document was read, and need not be resolved. Nothing but the document decides a byte. VREL_E_FILE_SAVE, reported,
// where standard output does not take all.
VRINResult PrintListing(Document& document);

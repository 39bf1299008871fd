// Writer of ISO 10303-21 clear text.
#pragma once

#include "VRINResult.h"

struct BrivetWriteRequest;

// Writes a document as a STEP file: one instance per line, in the document's order. If the option FileLineLength is
// set, a longer line continues in the next one, between two values; a value is never divided. Strings keep their bytes
// and escapes; if the option Encoding is set, characters beyond ASCII are written in that encoding, or as escapes if it
// does not have them. Comments and line ends of the document are not kept. If parts of the document were lost, a
// comment after the header says so.
//
// The options AuthorName, OrganizationName, PreProcessorVersion, SendingSystemName and FileDescription replace what the
// header of the document says. All options are looked up as "Step.Assembly.Writer.NAME". The same document and options
// give the same bytes.
//
// Errors: VREL_E_FILE_SAVE if the stream does not accept everything; VREL_E_INVALID_ARGUMENT, after a report, for a
// value of an option that cannot be used.
VRINResult WriteStep(BrivetWriteRequest& request);

// Writes a document as an ISO 10303-21 clear text file.
#pragma once

#include "VRINResult.h"

struct BrivetWriteRequest;

// One instance a line, in the document's order; a line longer than the option FileLineLength, where that is set, goes
// on in the next one wherever the format allows a line end between two values. A value is never broken. Strings keep
// their escapes.
//
// The options AuthorName, OrganizationName, PreProcessorVersion, SendingSystemName and FileDescription, asked for as
// Step.Assembly.Writer.AuthorName and so on, take the place of what the document's header says. Comments and line ends
// of the document are not kept. The same document and options give the same bytes.
//
// VREL_E_FILE_SAVE if the stream takes less than it was given.
VRINResult WriteStep(BrivetWriteRequest& request);

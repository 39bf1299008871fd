// Summary of a document as one JSON object.
#pragma once

#include "VRINResult.h"

class CheckedOutputStream;
struct BrivetWriteRequest;

// Writes file, counts, status, units, products, structure, extent, colours, layers, properties, annotations and views,
// as docs/summary.schema.json describes. The text is UTF-8 and ends with a line feed.
//
// Errors: those of Document::DescribeHeader and Document::GetModel; CheckedOutputStream::Failure.
VRINResult WriteJsonSummary(BrivetWriteRequest& request, CheckedOutputStream& stream);

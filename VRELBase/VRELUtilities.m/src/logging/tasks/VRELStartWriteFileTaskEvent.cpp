#include "VRELStartWriteFileTaskEvent.h"

VRELStartWriteFileTaskEvent::VRELStartWriteFileTaskEvent(VRELFilePath const& targetPath)
    : VRELStartTaskEvent("Writing File", "File Write", VREL_LEVEL_INFO), path(targetPath) {}

void VRELStartWriteFileTaskEvent::GetFormattedDescription(VRELOutputStream* /*stream*/) {}

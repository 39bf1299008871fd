// All of VRELBase in one include: every public header, from the ground floor up.
#pragma once

// Object.
#include "Gk_Exception.h"
#include "Gk_Marker.h"
#include "VRELAbortException.h"
#include "VRELAllocException.h"
#include "VRELArchiveException.h"
#include "VRELExport.h"
#include "VRELIcuNamespace.h"
#include "VRELObject.h"
#include "VRELReferenceCount.h"
#include "VRELReferenceHandle.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

// Containers.
#include "VRELArrayHeader.h"
#include "VRELDynamicArray.h"
#include "VRELHashTraits.h"
#include "VRELMemoryBound.h"

// Strings.
#include "VRELString.h"

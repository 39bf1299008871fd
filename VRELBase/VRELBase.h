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
#include "VRELTextCopy.h"
#include "VRELTypedHandle.h"
#include "VRINResult.h"

// Containers.
#include "VRELArrayHeader.h"
#include "VRELDynamicArray.h"
#include "VRELHashTraits.h"
#include "VRELMemoryBound.h"

// Strings.
#include "VRELString.h"

// Events.
#include "Gk_ErrMgr.h"
#include "VRELAssert.h"
#include "VRELAssertEvent.h"
#include "VRELChannelLine.h"
#include "VRELDebug.h"
#include "VRELDebugEvent.h"
#include "VRELError.h"
#include "VRELErrorEvent.h"
#include "VRELErrorTracker.h"
#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "VRELEventLevel.h"
#include "VRELEventListener.h"
#include "VRELIndentedChannel.h"
#include "VRELInfo.h"
#include "VRELMessageEvent.h"
#include "VRELPrintfFormat.h"
#include "VRELTest.h"
#include "VRELTestEvent.h"
#include "VRELTextEvent.h"
#include "VRELVerbose.h"
#include "VRELVerboseEvent.h"
#include "VRELWarning.h"
#include "VRELWarningEvent.h"

// Narrow.
#include "Gk_ROString.h"
#include "Gk_RWString.h"
#include "Gk_String.h"

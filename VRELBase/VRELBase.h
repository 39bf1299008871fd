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
#include "VRELArraySort.h"
#include "VRELDynamicArray.h"
#include "VRELHashList.h"
#include "VRELHashMap.h"
#include "VRELHashMarks.h"
#include "VRELHashRows.h"
#include "VRELHashTable.h"
#include "VRELHashTraits.h"
#include "VRELList.h"
#include "VRELMap.h"
#include "VRELMemoryBound.h"
#include "VRELNodeChain.h"
#include "VRELPair.h"
#include "VRELStack.h"
#include "VRELTree.h"

// Strings.
#include "VRELString.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELStringConversions.h"
#include "VRELStringISO1030321Converter.h"
#include "VRELStringISO1030321Reader.h"
#include "VRELStringISO1030321Writer.h"
#include "VRELStringISO10646Reader.h"
#include "VRELStringISO10646Writer.h"
#include "VRELStringISO8859Reader.h"
#include "VRELStringTokenizer.h"
#include "VRELStringUnicodeWCharUtil.h"

// Numeric.
#include "Gk_Def.h"
#include "Gk_Func.h"
#include "Gk_LinMap.h"
#include "VRELDate.h"
#include "VRELFloatUtil.h"
#include "VRELLocalNumericLocaleOverride.h"

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
#include "Gk_StringParser.h"
#include "VRELRoloNode.h"

// Values.
#include "VRELTable.h"
#include "VRELValue.h"

// Files.
#include "VRELFile.h"
#include "VRELFileDescriptor.h"
#include "VRELFileDescriptorHandle.h"
#include "VRELFileHandle.h"
#include "VRELFileHeader.h"
#include "VRELFilePath.h"

// Streams.
#include "Gk_HTMLAnchor.h"
#include "Gk_HTMLEndline.h"
#include "Gk_HTMLMargin.h"
#include "Gk_HTMLSpace.h"
#include "Gk_HTMLTag.h"
#include "Gk_Source.h"
#include "VRELFileInputStream.h"
#include "VRELFileOutputStream.h"
#include "VRELFilterInputStream.h"
#include "VRELFilterOutputStream.h"
#include "VRELHTMLStreamFormatter.h"
#include "VRELInputStream.h"
#include "VRELOutputStream.h"
#include "VRELStreamFormatter.h"
#include "VRELStringInputStream.h"
#include "VRELStringOutputStream.h"

// Settings.
#include "VRELArgs.h"
#include "VRELEnvironment.h"
#include "VRELOptionConstants.h"
#include "VRELOptionName.h"
#include "VRELProperties.h"

// Options.
#include "VRELCfgFile.h"
#include "VRELCfgFileIndex.h"
#include "VRELCfgFileKey.h"
#include "VRELCfgFileSection.h"
#include "VRELOption.h"
#include "VRELOptionToken.h"
#include "VRELOptions.h"
#include "VRELOptionsArray.h"

// Logging.
#include "VRELTrace.h"

// Units.
#include "Gk_Unit.h"
#include "VRELUnit.h"
#include "VRELUnitValue.h"

// Records.
#include "VRELAssemblyComponentTransform.h"

// Public.
#include "VRINComponentName.h"
#include "VRINFile.h"
#include "VRINFileImpl.h"
#include "VRINName.h"
#include "VRINNameImpl.h"
#include "VRINObject.h"
#include "VRINObjectImpl.h"
#include "VRINOptionName.h"
#include "VRINReaderWriterName.h"
#include "VRINRepresentationName.h"
#include "VRINUnit.h"
#include "VRINUnitImpl.h"
#include "VRINUnitValue.h"
#include "VRINValue.h"
#include "VRINValueImpl.h"

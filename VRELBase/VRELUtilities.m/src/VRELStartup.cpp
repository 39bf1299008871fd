// All objects of the library with static storage duration and a constructor or destructor. The order of the definitions
// is the order of construction; destruction is in reverse order. The C++ standard defines an order only within one
// source, so no other source of the library defines such an object (tests/tree/check_objects.py).
//
// Constraints on the order:
//   - the free lists of string blocks are first, so that they are usable as long as the library's strings exist;
//   - the array of option names is before the names, which register themselves in it;
//   - public names are in the order of their diagnostic numbers;
//   - the event bus is before the loggers, which leave it when they are destroyed;
//   - the console stream is before the formatters and loggers that write to it;
//   - the table of modules is after nearly everything, so that a module can use the library while it is unloaded.
#include <string_view>

#include "Gk_ObservableDoc.h"
#include "Gk_Unit.h"
#include "VREL4x4Matrix.h"
#include "VRELConsoleLogger.h"
#include "VRELError.h"
#include "VRELEventBus.h"
#include "VRELFileHeader.h"
#include "VRELFileInputStream.h"
#include "VRELFileOutputStream.h"
#include "VRELLibraryManager.h"
#include "VRELOptionConstants.h"
#include "VRELOptionName.h"
#include "VRELPerfTrackerStatus.h"
#include "VRELPointf.h"
#include "VRELStreamFormatter.h"
#include "VRELStringBlocks.h"
#include "VRELTimingLogger.h"
#include "VRELUnit.h"
#include "VRELVectorf.h"
#include "VRINComponentName.h"
#include "VRINOptionName.h"
#include "VRINReaderWriterName.h"
#include "VRINRepresentationName.h"
#include "VRINResult.h"

namespace {

VRELStringBlocks::Lifetime stringBlocks;

}  // namespace

VRINResult VRINResult::E_FAIL_RESULT(VREL_E_FAIL);

VRELString const VREL_OPTION_WILDCARD(std::u16string_view(u"*"));

VRELDynamicArray<VRELOptionName*> VRELOptionName::_optionNames;

#define VREL_NAME(identifier, text) VRELOptionName VRELOptionName::identifier(Literal{u##text});
#include "VRELOptionNames.def"

// The order determines the numbers of the diagnostic names.
#define VREL_NAME(identifier, text) VRINOptionName VRINOptionName::identifier(Literal{u##text});
#include "VRINOptionNames.def"

#define VREL_NAME(identifier, text) VRINComponentName VRINComponentName::identifier(Literal{u##text});
#include "VRINComponentNames.def"

#define VREL_NAME(identifier, text) VRINReaderWriterName VRINReaderWriterName::identifier(Literal{u##text});
#include "VRINReaderWriterNames.def"

#define VREL_NAME(identifier, text) VRINRepresentationName VRINRepresentationName::identifier(Literal{u##text});
#include "VRINRepresentationNames.def"

ReleaseUnits releaseUnits;

Gk_Unit const Gk_Unit::meter("meter", 1000.0);
Gk_Unit const Gk_Unit::cm("cm", 10.0);
Gk_Unit const Gk_Unit::mm("mm", 1.0);
Gk_Unit const Gk_Unit::inch("inch", 25.4);
Gk_Unit const Gk_Unit::foot("foot", 304.79999999999995);
Gk_Unit const Gk_Unit::yard("yard", 914.3999999999999);
Gk_Unit const Gk_Unit::mile("mile", 1609343.9999999998);
Gk_Unit const Gk_Unit::mils("mils", 0.0254);
Gk_Unit const Gk_Unit::micr("micron", 0.001);
Gk_Unit const Gk_Unit::deci("decimeter", 100.0);
Gk_Unit const Gk_Unit::km("km", 1e6);
Gk_Unit const Gk_Unit::uinch("microinch", 2.5399999999999997e-5);

VREL4x4Matrix const VREL4x4MatrixI;

VRELPointf const VRELPointOf(0.0F, 0.0F, 0.0F);
VRELVectorf const VRELNullVectorf(0.0F, 0.0F, 0.0F);
VRELVectorf const VRELVectorIf(1.0F, 0.0F, 0.0F);
VRELVectorf const VRELVectorJf(0.0F, 1.0F, 0.0F);
VRELVectorf const VRELVectorKf(0.0F, 0.0F, 1.0F);

VRELError VRELError::FAIL_ERROR(VREL_E_FAIL);

VRELEventBus VRELEventBus::_eventBus;

VRELFileInputStream VRELFileInputStream::console;
VRELFileOutputStream VRELFileOutputStream::console;

// Destroyed before the console, which can be its stream.
VRELStreamFormatter Gk_ObservableDoc::_debugSink(nullptr);

VRELString const VRELFileHeader::MODIFICATION_DATE(L"Modification Date");
VRELString const VRELFileHeader::FILE_NAME(L"File Name");
VRELString const VRELFileHeader::AUTHOR(L"Author");
VRELString const VRELFileHeader::ORGANIZATION(L"Organization");
VRELString const VRELFileHeader::SOURCE_SYSTEM(L"Source System");
VRELString const VRELFileHeader::VERSION(L"Version");
VRELString const VRELFileHeader::UNITS(L"Units");
VRELString const VRELFileHeader::COMMENT(L"Comment");
VRELString const VRELFileHeader::TOLERANCE(L"Tolerance");
VRELString const VRELFileHeader::DOCUMENT_TYPE(L"Document Type");
VRELString const VRELFileHeader::CONFIGURATIONS_COUNT(L"Configurations Count");
VRELString const VRELFileHeader::ACTIVE_CONFIGURATION(L"Active Configuration");
VRELString const VRELFileHeader::CONFIGURATIONS(L"Configurations");

VRELPerfTrackerStatus VRELPerfTrackerStatus::instance;

// Destroyed before the bus, which it leaves.
VRELConsoleLogger VRELConsoleLogger::_console;

// Destroyed while almost everything else still exists, because modules can use it in their destructors.
VRELHashMap<VRELString, VRELLibraryHandle> VRELLibraryManager::_libraries(17);

namespace {

// Unloads the modules before the table is destroyed: a module that is unloaded can look up others in the table.
struct ReleaseLibraries {
  ~ReleaseLibraries() {
    VRELLibrary::StopLoading();
    while (VRELLibraryManager::_libraries.Size() > 0) {
      auto const last = VRELLibraryManager::_libraries;
      VRELLibraryManager::_libraries = none;
    }
  }

  // Allocated at start: an allocation at exit can fail.
  VRELHashMap<VRELString, VRELLibraryHandle> const none{17};
} releaseLibraries;

}  // namespace

// Destroyed before the console, which prints its summary, and before the modules, which can own its monitor.
VRELTimingLogger VRELTimingLogger::_timer;

// Computes the mass of the parts by a function of a module.
#include "Gk_PacketInputStream.h"
#include "Gk_Source.h"
#include "VRELBox3D.h"
#include "VRELBrivetLibrary.h"
#include "VRELDynamicArray.h"
#include "VRELErrorEvent.h"
#include "VRELEvent.h"
#include "VRELEventBus.h"
#include "VRELEventListener.h"
#include "VRELFileInputStream.h"
#include "VRELFileOutputStream.h"
#include "VRELFilePath.h"
#include "VRELLibraryManager.h"
#include "VRELLogFileWrapper.h"
#include "VRELMorph3D.h"
#include "VRELOption.h"
#include "VRELOptions.h"
#include "VRELPoint3D.h"
#include "VRELReferenceCount.h"
#include "VRELStreamFormatter.h"
#include "VRELString.h"
#include "VRELStringAsciiCharUtil.h"
#include "VRELTypedHandle.h"
#include "VRELUnitValue.h"
#include "VRELWarning.h"
#include "VRINResult.h"

// A part, shared by handles.
class Part : public VRELReferenceCount {
 public:
  Part(VRELString const& partName, int partQuantity) : name(partName), quantity(partQuantity) {}

  VRELString name;
  int quantity;
  VRELPoint3D position;
};

class PartHandle : public VRELTypedHandle<Part> {
 public:
  using VRELTypedHandle::VRELTypedHandle;
};

using PartList = VRELDynamicArray<PartHandle>;

// Returns the value of an option, or the fallback if there is none.
template <class T>
T Setting(VRELOptions const& options, VRELString const& name, T fallback) {
  VRELOption* option = nullptr;
  if (options.GetOption(name, option).IsSuccess()) option->GetValue(fallback);
  return fallback;
}

// Reports a failure as an event and returns its code.
VRINResult Check(PartHandle const& part, int minimum) {
  if (part->quantity < 1) {
    VRELError error(VREL_E_INVALID_ARGUMENT, part->name + L" has no quantity");
    return VRELErrorEvent::Fire(error, __FILE__, __LINE__);
  }
  if (part->quantity < minimum) {
    VRELStringAsciiCharUtil const name(part->name, true);
    VRELWarning::Printf("only %d of %s", part->quantity, static_cast<char const*>(name));
    return VREL_S_PARTIAL;
  }
  return VREL_S_OK;
}

// Counts warnings and errors.
class ProblemCounter : public VRELEventListener {
 public:
  void HandleEvent(VRELEvent& event) override {
    if (event.IsA("VRELErrorEvent")) ++errors;
    if (event.IsA("VRELWarningEvent")) ++warnings;
  }

  int errors = 0;
  int warnings = 0;
};

// Reads one part per line: its name, its quantity and its position.
VRINResult ReadList(VRELFilePath const& path, PartList& parts) {
  if (!path.DoesFileExist()) return VREL_E_FILE_NOT_FOUND;
  VRELFileInputStream file(path);
  Gk_PacketInputStream input(&file, 4096);
  Gk_Source source(&input);
  source.setWhiteSpace(" \n");
  while (!source.isEmpty()) {
    VRELString const name(source.next());
    int quantity = 0;
    source >> quantity;
    PartHandle const part(new Part(name, quantity));
    source >> part->position[0] >> part->position[1] >> part->position[2];
    parts.add(part);
  }
  return parts.size() > 0 ? VREL_S_OK : VREL_S_NO_ENTITY;
}

// Writes the title, and the parts below it.
void Write(VRELStreamFormatter& out, VRELString const& title, PartList const& parts) {
  out << out.margin() << title << out.endline();
  out.margin()->incr();
  for (PartHandle const& part : parts) {
    out << out.margin() << part->name << out.space() << part->quantity << out.endline();
  }
  out.margin()->decr();
}

// Returns the box around the parts in millimetres, rotated by a right angle about z.
VRELBox3D BoxAround(PartList const& parts, VRELUnit unit) {
  double metres = 0.0;
  GetUnitScaleFactor(unit, metres);
  VRELMorph3D rotation(VRELPoint3D(0.0, 0.0, 1.0), VRELPIBY2);
  rotation.setScale(metres * 1000.0);
  VRELBox3D box;
  for (PartHandle const& part : parts) {
    VRELPoint3D corner = part->position;
    corner.Transform(rotation, false);
    box.ExtendTo(corner);
  }
  return box;
}

// Returns the mass of all parts in grams.
VRINResult Weigh(PartList const& parts, double& grams) {
  VRELBrivetLibrary weights(L"TourWeights", L"StartWeights", L"StopWeights");
  void* function = nullptr;
  VRINResult const result = weights.GetFunction(L"GramsOf", function);
  if (result.IsFailure()) return result;
  auto const gramsOf = reinterpret_cast<double (*)(char const*)>(function);
  grams = 0.0;
  for (PartHandle const& part : parts) {
    grams += part->quantity * gramsOf(VRELStringAsciiCharUtil(part->name, true));
  }
  return VREL_S_OK;
}

int main() {
  VRELLogFileWrapper const log(VRELFilePath("bill.log"));
  ProblemCounter problems;
  VRELEventBus::GetEventBus()->AddListener(&problems);

  VRELOptions options;
  options.ReadFromFile(L"bill.cfg");
  PartList parts;
  VRINResult total = ReadList(VRELFilePath("placed.txt"), parts);
  int const minimum = Setting(options, L"Bill.MinimumQuantity", 0);
  for (PartHandle const& part : parts) total &= Check(part, minimum);

  VRELStreamFormatter out(&VRELFileOutputStream::console);
  Write(out, Setting(options, L"Bill.Title", VRELString()), parts);

  VRELUnit unit = VRELUnitMillimeter;
  VRELUnitValue::GetUnitFromString(unit, Setting(options, L"Bill.Unit", VRELString()));
  VRELBox3D const box = BoxAround(parts, unit);
  out.SetTrailingZerosRemovalFormat(VREL_TRAILING_ZEROS_REMOVED);
  out << "from " << box.low()[0] << ", " << box.low()[1] << ", " << box.low()[2] << out.endline();
  out << "to " << box.high()[0] << ", " << box.high()[1] << ", " << box.high()[2] << out.endline();

  double grams = 0.0;
  total &= Weigh(parts, grams);
  out << grams << " g" << out.endline();
  VRELLibraryManager::FreeLibraries();

  VRELEventBus::GetEventBus()->RemoveListener(&problems);
  out << problems.warnings << " warnings, " << problems.errors << " errors: " << total.GetMessage() << out.endline();
}

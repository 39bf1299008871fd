#include "VRELStartProductEvent.h"

#include "VRELEnvironment.h"
#include "VRELOption.h"
#include "VRELStreamFormatter.h"
#include "VRELStringAsciiCharUtil.h"

namespace {

template <class Value>
void WriteField(VRELStreamFormatter& formatter, char const* name, Value const& value) {
  formatter << formatter.format("%-20s : ", name) << value << formatter.endline();
}

void WriteOptions(VRELStreamFormatter& formatter, VRELOptions const& options) {
  VRELOption* option = nullptr;
  options.InitEnumeration();
  while (options.GetNext(option).IsSuccess()) {
    VRELString name;
    VRELValue value;
    option->GetName(name);
    option->GetValue(value);
    WriteField(formatter, VRELStringAsciiCharUtil(name, false), value);
  }
}

bool IsEnvironmentDumpRequested() {
  VRELString traces;
  return VRELEnvironment::GetVariable(L"VRELTrace", traces).IsSuccess() &&
         traces.view().find(u"UserEnv") != std::u16string_view::npos;
}

void WriteEnvironment(VRELStreamFormatter& formatter, VRELProperties& environment) {
  formatter << "=== Environment Variables ===" << formatter.endline();
  formatter << environment << formatter.endline();
  formatter << "=============================" << formatter.endline();
}

}  // namespace

VRELStartProductEvent::VRELStartProductEvent(char const* product, char const* application)
    : VRELStartTaskEvent("Start Product", "Product", VREL_LEVEL_INFO),
      productName(product),
      applicationName(application) {}

VRELStartProductEvent::VRELStartProductEvent(VRELStartProductEvent const& other)
    : VRELStartTaskEvent(other),
      productName(other.productName),
      applicationName(other.applicationName),
      addedOptions(other.addedOptions.copy()) {
  for (int i = 0; i + 1 < addedOptions.size(); i += 2) options.AddOption(addedOptions[i], addedOptions[i + 1]);
}

void VRELStartProductEvent::GetFormattedDescription(VRELOutputStream* stream) {
  VRELStreamFormatter formatter(stream);
  if (productName.length() > 0) WriteField(formatter, "Product", productName);
  if (applicationName.length() > 0) WriteField(formatter, "Application", applicationName);
  WriteOptions(formatter, options);
  if (IsEnvironmentDumpRequested()) WriteEnvironment(formatter, *VRELEnvironment::GetEnv());
}

VRINResult VRELStartProductEvent::AddOption(char const* name, char const* value) {
  VRELString const wideName(name);
  VRELString const wideValue(value);
  options.AddOption(wideName, wideValue);
  addedOptions.add(wideName);
  addedOptions.add(wideValue);
  return VREL_S_OK;
}

// An option store, one option, the vocabulary, and a configuration file.
#include <cstdlib>
#include <iostream>

#include "VRELCfgFile.h"
#include "VRELFilePath.h"
#include "VRELOption.h"
#include "VRELOptionName.h"
#include "VRELOptions.h"
#include "VRINResult.h"

void PrintOption(VRELOptions const& options, VRELString const& name) {
  VRELOption* option = nullptr;
  bool convert = false;
  if (options.GetOption(name, option).IsSuccess()) option->GetValue(convert);
  std::cout << name << " " << (convert ? "On" : "Off") << "\n";
}

void Store() {
  VRELOptions options;
  options.AddOption(L"ConvertAttributes", true);
  options.AddOption(L"Step.*.Reader.ConvertAttributes", false);
  PrintOption(options, L"Iges.Assembly.Reader.ConvertAttributes");
  PrintOption(options, L"step.assembly.reader.convertattributes");
}

void OneOption() {
  VRELOptions options;
  options.AddOptionParseValue(L"Step.SewTolerance", L"0.01");
  VRELOption* tolerance = nullptr;
  options.GetOption(L"Step.SewTolerance", tolerance);
  VRINResult const result = tolerance->SetValue(L"fine");
  std::cout << result.GetMessage() << "\n";

  setenv("VRELStep.SewTolerance", "0.5", 1);
  double stored = 0.0;
  double overridden = 0.0;
  tolerance->GetValue(stored);
  tolerance->GetValue(overridden, true);
  std::cout << stored << ", from the environment " << overridden << "\n";
}

void Names() {
  std::cout << VRELOptionName::IsValid(L"ConvertAttributes").GetMessage() << ", "
            << VRELOptionName::IsValid(L"ConvertAtributes").GetMessage() << "\n";
}

void Sections() {
  VRELCfgFile file;
  file.Load(VRELFilePath("settings.cfg"));
  int layer = 0;
  bool sew = true;
  file.GetInt("layers", layer, 2, "Import");
  int const found = file.GetBool("sew", sew, 0, "Import");
  std::cout << "layer " << layer << ", sew " << found << ", " << file.GetErrorCount() << " error\n";
}

int main() {
  Store();
  OneOption();
  Names();
  Sections();
}

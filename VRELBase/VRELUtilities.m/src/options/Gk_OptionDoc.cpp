#include "Gk_OptionDoc.h"

#include <string>
#include <string_view>
#include <vector>

#include "Gk_Nest.h"
#include "Gk_Option.h"
#include "VRELNarrowText.h"
#include "VRELOptions.h"
#include "VRELRoloTraits.h"

namespace {

template <class Value>
Gk_Option* Add(VRELString const& path, Value const& value, char const* remark) {
  Gk_Option* const option = Gk_Option::fetch(path, true);
  if (option != nullptr) option->set(value, remark);
  return option;
}

void AddToStore(Gk_Option& option, std::u16string const& folder, VRELOptions& store) {
  VRELValue::VRELValueType kind = VRELValue::UnknownType;
  if (option.GetValueType(kind).IsFailure()) return;
  VRELString const name(std::u16string_view(folder + VRELWideText(option.getValue()).toUtf16()));
  switch (kind) {
    case VRELValue::IntType:
      store.AddOption(name, option.count());
      break;
    case VRELValue::DoubleType:
      store.AddOption(name, option.value());
      break;
    case VRELValue::BoolType:
      store.AddOption(name, option.on());
      break;
    case VRELValue::StringType:
      store.AddOption(name, option.string());
      break;
    default:
      break;
  }
}

// Depth-first traversal of folders in the order of their children. It has its own stack, because the tree can be as
// deep as memory allows.
class FolderTraversal {
 public:
  FolderTraversal(std::u16string_view start, VRELOptions& theStore) : folder(start), store(theStore) {}

  void Visit(VRELRoloNode& start) {
    AddOptionsOf(start);
    while (!pending.empty()) {
      Step const step = pending.back();
      pending.pop_back();
      folder.resize(step.parentLength);
      folder.append(VRELWideText(step.node->getValue()).view());
      folder += u'/';
      AddOptionsOf(*step.node);
    }
  }

 private:
  struct Step {
    VRELRoloNode* node;
    std::size_t parentLength;
  };

  // Adds the options of a node, and schedules its children.
  void AddOptionsOf(VRELRoloNode& node) {
    if (auto const* const nest = dynamic_cast<Gk_Nest*>(&node)) {
      for (Gk_Option* option : nest->getOptions()) AddToStore(*option, folder, store);
    }
    VRELDynamicArray<VRELRoloNode*> const& children = node.getChildren();
    for (int i = children.size() - 1; i >= 0; --i) {
      if (children[i] != nullptr) pending.push_back({children[i], folder.size()});
    }
  }

  std::u16string folder;
  VRELOptions& store;
  std::vector<Step> pending;
};

}  // namespace

Gk_Option* Gk_OptionDoc::fetchOption(VRELString const& path) {
  return Gk_Option::fetch(path, false);
}

Gk_Option* Gk_OptionDoc::addOption(VRELString const& path, VRELString const& value, char const* remark) {
  return Add(path, value, remark);
}

Gk_Option* Gk_OptionDoc::addOption(VRELString const& path, bool value, char const* remark) {
  return Add(path, value, remark);
}

Gk_Option* Gk_OptionDoc::addOption(VRELString const& path, double value, char const* remark) {
  return Add(path, value, remark);
}

Gk_Option* Gk_OptionDoc::addOption(VRELString const& path, int value, char const* remark) {
  return Add(path, value, remark);
}

VRELDynamicArray<Gk_Option*> Gk_OptionDoc::fetchOptions(Gk_ROString const& /*path*/) {
  return VRELDynamicArray<Gk_Option*>();
}

void Gk_OptionDoc::FetchAllComponentOptions(Gk_ROString const& folder, VRELOptions& store) {
  Gk_ROString rest(folder);
  VRELString path;
  GetAllOptionsUnderNode(VRELRoloTraits::fetch(&rest, false, true), path, store);
}

void Gk_OptionDoc::SynchOptionsBetweenComponents(VRELString const& source, VRELString const& target) {
  VRELOptions options;
  FetchAllComponentOptions(VRELNarrowText(source).dataStr(), options);
  VRELOption* option = nullptr;
  options.InitEnumeration();
  while (options.GetNext(option).IsSuccess()) {
    VRELString name;
    option->GetName(name);
    Gk_Option* const targetOption = fetchOption(target + name);
    VRELValue value;
    if (targetOption != nullptr && option->GetValue(value).IsSuccess()) targetOption->SetValue(value);
  }
}

void GetAllOptionsUnderNode(VRELRoloNode* node, VRELString& path, VRELOptions& store) {
  path = path + VRELString(L"/");
  if (node != nullptr) FolderTraversal(path.view(), store).Visit(*node);
}

#include "VRELWildcardChain.h"

#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "Gk_StringParser.h"
#include "VRELCfgFileKey.h"
#include "VRELStringConversions.h"

namespace {

constexpr std::size_t kMaxLength = 0xFFFF;

}  // namespace

VRELOption VRELParseOption(VRELString const& name, VRELString const& text) {
  VRELOption option(name);
  Gk_StringParser parser(text);
  bool truth = false;
  if (parser.isInteger(0)) {
    option.SetValue(parser.intValue());
  } else if (parser.isReal(0)) {
    option.SetValue(parser.realValue());
  } else if (VRELStringToBool(text, truth).IsSuccess()) {
    option.SetValue(truth);
  } else {
    VRELString unquoted;
    RemoveDoubleQuotesAtStartAndEndOf(text, unquoted);
    option.SetValue(unquoted);
  }
  return option;
}

VRELString VRELConfiguredValue(std::string const& bytes) {
  if (bytes.find(',') == bytes.npos) return VRELString(bytes.c_str());
  VRELCfgFileKey key("");
  std::size_t start = 0;
  for (std::size_t end = bytes.find(','); end != bytes.npos; end = bytes.find(',', start)) {
    key.AppendValue(bytes.substr(start, end - start).c_str());
    start = end + 1;
  }
  key.AppendValue(bytes.c_str() + start);
  return key.GetAllValues();
}

std::unique_ptr<VRELWildcardChain> VRELWildcardChain::Make(int levels, std::unique_ptr<VRELOption> option) {
  void* const memory = ::operator new(sizeof(VRELWildcardChain));
  return std::unique_ptr<VRELWildcardChain>(new (memory) VRELWildcardChain(levels, option.release()));
}

std::unique_ptr<VRELWildcardChain> VRELWildcardChain::Make(int levels, std::string_view name, std::string_view value) {
  void* const memory = ::operator new(sizeof(VRELWildcardChain) + name.size() + value.size());
  std::unique_ptr<VRELWildcardChain> chain(new (memory) VRELWildcardChain(levels, nullptr));
  chain->nameLength = static_cast<unsigned short>(name.size());
  chain->valueLength = static_cast<unsigned short>(value.size());
  char* const bytes = reinterpret_cast<char*>(chain.get() + 1);
  std::memcpy(bytes, name.data(), name.size());
  if (!value.empty()) std::memcpy(bytes + name.size(), value.data(), value.size());
  return chain;
}

bool VRELWildcardChain::CanDefer(std::string_view name, std::string_view value) noexcept {
  if (name.empty() || name.size() > kMaxLength || value.size() > kMaxLength) return false;
  bool const isNumeric = value.find_first_not_of("0123456789.+-eE") == value.npos;
  return !isNumeric || value.find('.') == value.npos;
}

VRELOption VRELWildcardChain::Parse() const {
  return VRELParseOption(Name(), VRELConfiguredValue(ValueBytes()));
}

VRELOption* VRELWildcardChain::Option() {
  if (option != nullptr) return option;
  int const failures = VRELString::getFailureCount();
  auto parsed = std::make_unique<VRELOption>(Parse());
  // A string that could not be allocated is no exception.
  if (VRELString::getFailureCount() != failures) throw std::bad_alloc();
  option = parsed.release();
  return option;
}

VRELOption* VRELWildcardChain::ReleaseOption() noexcept {
  return std::exchange(option, nullptr);
}

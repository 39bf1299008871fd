#include "RunReport.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

constexpr int kOptionStatus = 1;  // of an option that a module cannot use

void AppendEscape(std::string& json, unsigned int unit) {
  char escape[16];
  std::snprintf(escape, sizeof escape, "\\u%04x", unit);
  json += escape;
}

// Escapes control characters, quotes, backslashes and bytes that are not valid UTF-8.
std::string Quoted(std::string_view text) {
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(text.data());
  std::string json = "\"";
  for (std::size_t at = 0; at < text.size();) {
    std::size_t const begin = at;
    UChar32 code = 0;
    U8_NEXT(bytes, at, text.size(), code);
    if (code < 0) {
      for (std::size_t i = begin; i < at; ++i) AppendEscape(json, 0xDC00U + bytes[i]);
    } else if (code == '"' || code == '\\') {
      json += '\\';
      json += static_cast<char>(code);
    } else if (code < 0x20 || (code >= 0x7F && code < 0xA0)) {
      AppendEscape(json, static_cast<unsigned int>(code));
    } else {
      json += text.substr(begin, at - begin);
    }
  }
  return json + "\"";
}

std::string ToJson(Loss const& loss) {
  std::string json = "{\"line\":" + std::to_string(loss.firstLine) + ",\"lastLine\":" + std::to_string(loss.lastLine) +
                     ",\"instances\":[";
  for (std::size_t i = 0; i < loss.instances.size(); ++i) json += (i != 0 ? "," : "") + Quoted(loss.instances[i]);
  return json + "],\"reason\":" + Quoted(loss.reason) + "}";
}

}  // namespace

int ExitStatusOf(VRINResult result) {
  if (result == VREL_E_INVALID_ARGUMENT) return kOptionStatus;
  return result == VREL_S_PARTIAL ? kPartialStatus : static_cast<int>(result.GetReturnCode());
}

std::string RunReport::ToJson() const {
  std::string const status = exitStatus == 0 ? "success" : exitStatus == kPartialStatus ? "partial" : "failure";
  std::string json = "{\"input\":" + Quoted(input) + ",\"output\":" + (output.empty() ? "null" : Quoted(output)) +
                     ",\"status\":\"" + status + "\",\"exit\":" + std::to_string(exitStatus) +
                     ",\"instances\":" + std::to_string(instances) + ",\"lost\":[";
  for (std::size_t i = 0; i < lost.size(); ++i) json += (i != 0 ? "," : "") + ::ToJson(lost[i]);
  char time[32];
  std::snprintf(time, sizeof time, "%.3f", seconds);
  // The locale may have another decimal point.
  for (char& byte : time) {
    if (byte == ',') byte = '.';
  }
  return json + "],\"dangling\":" + std::to_string(dangling) + ",\"seconds\":" + time +
         ",\"bytes\":" + std::to_string(bytes) + "}\n";
}

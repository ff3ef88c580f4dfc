#include "samplers/SysctlHelper.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "core/Utf8.h"

namespace korvantis::SysctlHelper {
namespace {

/// Unicode's whitespace and newlines, as UTF-8.
constexpr std::array<std::string_view, 25> whitespace{" ",
                                                      "\t",
                                                      "\n",
                                                      "\v",
                                                      "\f",
                                                      "\r",
                                                      "\xC2\x85",
                                                      "\xC2\xA0",
                                                      "\xE1\x9A\x80",
                                                      "\xE2\x80\x80",
                                                      "\xE2\x80\x81",
                                                      "\xE2\x80\x82",
                                                      "\xE2\x80\x83",
                                                      "\xE2\x80\x84",
                                                      "\xE2\x80\x85",
                                                      "\xE2\x80\x86",
                                                      "\xE2\x80\x87",
                                                      "\xE2\x80\x88",
                                                      "\xE2\x80\x89",
                                                      "\xE2\x80\x8A",
                                                      "\xE2\x80\xA8",
                                                      "\xE2\x80\xA9",
                                                      "\xE2\x80\xAF",
                                                      "\xE2\x81\x9F",
                                                      "\xE3\x80\x80"};

std::string_view trimmed(std::string_view text) {
  const auto startsText = [&](std::string_view blank) { return text.starts_with(blank); };
  const auto endsText = [&](std::string_view blank) { return text.ends_with(blank); };
  for (auto blank = whitespace.begin(); blank != whitespace.end();) {
    blank = std::find_if(whitespace.begin(), whitespace.end(), startsText);
    if (blank != whitespace.end()) text.remove_prefix(blank->size());
  }
  for (auto blank = whitespace.begin(); blank != whitespace.end();) {
    blank = std::find_if(whitespace.begin(), whitespace.end(), endsText);
    if (blank != whitespace.end()) text.remove_suffix(blank->size());
  }
  return text;
}

template <typename Number>
std::optional<Number> number(const SysctlCalls& calls, const char* name) {
  Number value = 0;
  std::size_t size = sizeof value;
  if (calls.sysctlbyname(name, &value, &size) != 0) return std::nullopt;
  return value;
}

}  // namespace

std::optional<std::string> string(const SysctlCalls& calls, const char* name) {
  std::size_t size = 0;
  if (calls.sysctlbyname(name, nullptr, &size) != 0 || size < 1) return std::nullopt;
  std::string buffer(size, '\0');
  if (calls.sysctlbyname(name, buffer.data(), &size) != 0) return std::nullopt;
  return std::string(trimmed(repairedUtf8(buffer.substr(0, buffer.find('\0')))));
}

std::optional<std::int32_t> int32(const SysctlCalls& calls, const char* name) {
  return number<std::int32_t>(calls, name);
}

std::optional<std::int64_t> int64(const SysctlCalls& calls, const char* name) {
  return number<std::int64_t>(calls, name);
}

}  // namespace korvantis::SysctlHelper

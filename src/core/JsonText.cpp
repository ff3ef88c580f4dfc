#include "core/JsonText.h"

#include <cmath>
#include <vector>

namespace korvantis {

namespace {

/// Whether all numbers inside are finite. Without recursion: the depth is the caller's choice.
bool isFinite(const nlohmann::ordered_json& value) {
  std::vector<const nlohmann::ordered_json*> pending{&value};
  while (!pending.empty()) {
    const nlohmann::ordered_json& next = *pending.back();
    pending.pop_back();
    if (next.is_number_float() && !std::isfinite(next.get<double>())) return false;
    if (!next.is_structured()) continue;
    for (const nlohmann::ordered_json& child : next) pending.push_back(&child);
  }
  return true;
}

}  // namespace

std::optional<std::string> jsonText(const nlohmann::ordered_json& value) {
  using nlohmann::detail::error_handler_t;
  if (!isFinite(value)) return std::nullopt;
  return value.dump(-1, ' ', false, error_handler_t::replace);
}

}  // namespace korvantis

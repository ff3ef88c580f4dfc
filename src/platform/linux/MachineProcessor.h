#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// How many physical cores there are of each kind.
struct CoreKinds {
  std::int32_t performance = 0;
  std::int32_t efficiency = 0;

  bool operator==(const CoreKinds&) const = default;
};

/// The numbers of a list such as "0-3,8"; empty when it is damaged.
std::vector<int> parseProcessorList(std::string_view text);

/// The name of the processor, or of the board where that has none; absent when neither is told.
/// `root` is the folder above `/proc` and `/sys`. Any thread.
std::optional<std::string> readProcessorName(const std::string& root);

/// The logical processors that are online; absent when the system does not tell. Any thread.
std::optional<std::int32_t> readLogicalCores(const std::string& root);

/// The physical cores by kind. Where all are alike they all are performance cores, with no
/// efficiency core. Absent when the system does not tell how processors share cores. Any thread.
std::optional<CoreKinds> readCoreKinds(const std::string& root);

}  // namespace korvantis

#pragma once

#include <string>

namespace korvantis {

/// How one channel fared with a brief.
struct BriefDelivery {
  /// The text was handed over.
  bool delivered = false;
  /// One line on that for the user.
  std::string status;

  bool operator==(const BriefDelivery&) const = default;
};

}  // namespace korvantis

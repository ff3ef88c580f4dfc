#pragma once

#include <optional>
#include <string>

#include "core/HelperRole.h"

namespace korvantis {

/// What the texts of a process tell about the application that it belongs to.
struct ApplicationFacts {
  /// The outermost bundle in its own path.
  std::optional<std::string> ownBundle;
  /// The key of its group if it belongs to no bundle at all.
  std::string loneKey;
  /// The role that its words give away, if it is a helper.
  std::optional<HelperRole> roleOfWords;
};

}  // namespace korvantis

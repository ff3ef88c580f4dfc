#pragma once

#include <optional>
#include <string>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Reads a property list file whose top level is a map; absent otherwise. Any thread.
std::optional<PropertyMap> readPropertyListFile(const std::string& path);

}  // namespace korvantis

#pragma once

#include <optional>
#include <string>

#include "platform/PropertyValue.h"

namespace korvantis {

/// Reads a property list in XML or binary form whose top level is a map.
///
/// Whole numbers above the signed 64-bit range become real numbers. A date comes out for the
/// years 1933 to 2068 only. Values without a form of their own (archiver references, dates
/// outside those years) are left out of their map or list. Of a key that stands twice the last
/// counts.
///
/// Absent when the file is missing, unreadable, no regular file (it never waits for a pipe),
/// larger than 4 MiB, damaged, nested deeper than 128 levels or unreasonably large once unfolded.
/// Any thread; prints nothing.
std::optional<PropertyMap> readPropertyListFile(const std::string& path);

}  // namespace korvantis

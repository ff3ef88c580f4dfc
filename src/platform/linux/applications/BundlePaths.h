#pragma once

#include <string>
#include <string_view>

#include "platform/PropertyValue.h"
#include "platform/linux/applications/ApplicationRules.h"
#include "platform/linux/applications/ProcessEvidence.h"

namespace korvantis {

/// Desktop applications in the form in which applications are told apart everywhere above: bundles
/// with their main program and their helpers in folders of their own. Nothing of it is on disk.
/// Any thread.
namespace BundlePaths {

/// Whether the process is the application itself, as opposed to a helper of it.
bool isMain(const ApplicationMatch& match, ProcessEvidence& process);

/// The path at which the bundle of `entry` holds the process.
std::string executable(const IndexedEntry& entry, bool isMainProgram, ProcessEvidence& process);

/// Where a program that belongs to the desktop session is shown to lie.
std::string sessionComponent(const ProcessEvidence& process);

/// Whether every bundle has something at `relative`, a path that begins with a slash or
/// is empty for the bundle itself.
bool holds(std::string_view relative);

/// What the bundle's property list says.
PropertyMap propertyList(const IndexedEntry& entry);

}  // namespace BundlePaths

}  // namespace korvantis

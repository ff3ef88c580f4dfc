#pragma once

namespace korvantis {

/// The kinds of evidence by which a process is known as part of an application.
enum class ApplicationRule {
  sandbox,
  appImage,
  entryExecutable,
  executableLocation,
  interpreterScript,
  launchEnvironment,
  busName,
  controlGroup,
  sharedHelper,
};

}  // namespace korvantis

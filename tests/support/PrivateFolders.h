#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/PlatformCalls.h"
#include "support/TemporaryFolder.h"

namespace korvantis::test {

/// Puts the folders in which the program keeps and exports things into a new one, so that no test
/// reaches those of the user who runs it; what is kept is really written there. It is removed with
/// the last copy of the operations.
inline void usePrivateFolders(PlatformCalls& platform) {
  const auto folder = std::make_shared<TemporaryFolder>();
  folder->folderAt("downloads");
  folder->folderAt("temporary");
  platform.files.applicationSupportDirectories = [folder] {
    return std::vector<std::string>{folder->path("support")};
  };
  platform.files.downloadsDirectories = [folder] {
    return std::vector<std::string>{folder->path("downloads")};
  };
  platform.files.temporaryDirectory = [folder] { return folder->path("temporary"); };
  const FileManagerCalls system = systemFileManagerCalls();
  platform.files.createDirectory = system.createDirectory;
  platform.files.writeAtomically = system.writeAtomically;
}

}  // namespace korvantis::test

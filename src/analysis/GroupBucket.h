#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/AppGroup.h"
#include "core/AppGroupKind.h"
#include "core/HelperRole.h"
#include "core/ProcessSample.h"

namespace korvantis {

/// A process of a group, and the role that its words give away; refers to the tick's list.
struct GroupMember {
  const ProcessSample* process;
  std::optional<HelperRole> role;
};

/// The processes of one group while a tick is being sorted out; refers to the tick's list.
struct GroupBucket {
  /// The key under which the bucket stands.
  std::string id;
  std::string name;
  AppGroupKind kind = AppGroupKind::other;
  std::optional<std::string> bundlePath;
  std::optional<std::string> bundleIdentifier;
  /// In the order of the tick's list.
  std::vector<GroupMember> members;

  /// What tells this bucket from others.
  const std::string& key() const { return id; }

  /// The pid of the process that stands for the application itself: one that lies where the
  /// bundle keeps its main program goes over one that doesn't, then the lower pid counts. -1 for
  /// an empty bucket.
  std::int32_t rootPID() const;

  /// The group made of this bucket, with sums, shares and roles. `installedMemory`, in bytes and
  /// above 0, is what its memory is a share of.
  AppGroup folded(double installedMemory) const;
};

}  // namespace korvantis

#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/Field.h"
#include "core/Instant.h"

namespace korvantis {

/// A forgotten local development server.
struct IdleServer {
  std::int32_t pid = 0;
  std::string name;
  std::string projectName;
  std::string projectPath;
  std::vector<std::uint16_t> ports;
  std::uint64_t memoryBytes = 0;
  double cpuPercent = 0;
  Instant startedAt;
  /// How long it has been quiet.
  double idleSeconds = 0;

  bool operator==(const IdleServer&) const = default;

  /// What tells one of these from another in a list.
  std::int32_t identity() const { return pid; }

  /// The fields in JSON order.
  static constexpr auto fields() {
    return std::tuple{Field{"pid", &IdleServer::pid},
                      Field{"name", &IdleServer::name},
                      Field{"projectName", &IdleServer::projectName},
                      Field{"projectPath", &IdleServer::projectPath},
                      Field{"ports", &IdleServer::ports},
                      Field{"memoryBytes", &IdleServer::memoryBytes},
                      Field{"cpuPercent", &IdleServer::cpuPercent},
                      Field{"startedAt", &IdleServer::startedAt},
                      Field{"idleSeconds", &IdleServer::idleSeconds}};
  }
};

}  // namespace korvantis

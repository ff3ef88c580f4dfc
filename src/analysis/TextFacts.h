#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/ProcessSample.h"

namespace korvantis {

/// What the texts of each process of one tick tell: its name, path and arguments, and the role
/// that it has. Texts hardly ever change, and reading hundreds of command lines costs far more than
/// comparing them, so one tick's facts hand on to the next what they know. One thread.
template <typename Facts>
class TextFacts {
 public:
  /// Facts of no process.
  TextFacts() = default;

  /// The facts of `processes`: those in `previous` where texts and role are the same, else what
  /// `find` makes of the process. Such a function looks at nothing else.
  template <typename Find>
  TextFacts(const std::vector<ProcessSample>& processes, TextFacts previous, const Find& find) {
    rows.reserve(processes.size());
    indexByPID.reserve(processes.size());
    for (const ProcessSample& process : processes) {
      indexByPID.insert_or_assign(process.pid, rows.size());
      Row* const known = previous.rowOf(process);
      rows.push_back(known != nullptr ? std::move(*known) : Row(process, find(process)));
      if (known != nullptr) known->isThere = false;
    }
  }

  /// The facts of the process at `index` of the list.
  const Facts& operator[](std::size_t index) const { return rows[index].facts; }

  /// Where in the list the process `pid` stands, the last one if it does so twice; absent when it
  /// is not there.
  std::optional<std::size_t> indexOf(std::int32_t pid) const {
    const auto found = indexByPID.find(pid);
    return found == indexByPID.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  struct Row {
    Row(const ProcessSample& process, Facts known)
        : name(process.name),
          executablePath(process.executablePath),
          arguments(process.arguments),
          role(process.helperRole),
          facts(std::move(known)) {}

    bool isOf(const ProcessSample& process) const {
      return isThere && role == process.helperRole && name == process.name &&
             executablePath == process.executablePath && arguments == process.arguments;
    }

    std::string name;
    std::string executablePath;
    std::string arguments;
    HelperRole role;
    Facts facts;
    /// False once the next tick's facts have taken it.
    bool isThere = true;
  };

  Row* rowOf(const ProcessSample& process) {
    const std::optional<std::size_t> index = indexOf(process.pid);
    return index && rows[*index].isOf(process) ? &rows[*index] : nullptr;
  }

  std::vector<Row> rows;
  std::unordered_map<std::int32_t, std::size_t> indexByPID;
};

}  // namespace korvantis

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvantis {

/// A program that was started (`NSTask`), with a fresh pipe on its standard error and another one
/// on its standard output, which nobody reads: who writes too much there waits. One thread at a
/// time. What still runs when the last copy goes runs on, unwatched.
struct RunningTask {
  /// Whether it has not ended yet.
  std::function<bool()> isRunning;
  /// Asks it to end; does not wait for that.
  std::function<void()> terminate;
  /// Once it has ended: its exit status, or the number of the signal that ended it.
  std::function<int()> terminationStatus;
  /// All that it and its children wrote to standard error; waits until they have all closed it
  /// (`readDataToEndOfFile`). Bytes as they are.
  std::function<std::string()> readStandardErrorToEndOfFile;
};

/// What became of an attempt to start a program.
struct TaskLaunch {
  /// Absent when it could not be started.
  std::optional<RunningTask> task;
  /// Why not, in the system's own words.
  std::string error;
};

/// Other programs (`NSTask`). Any thread.
struct TaskCalls {
  /// Starts the program at `executable`, an absolute path, with these arguments
  /// (`setExecutableURL:`, `setArguments:`, `launchAndReturnError:`). No shell is involved.
  std::function<TaskLaunch(const std::string& executable,
                           const std::vector<std::string>& arguments)>
      launch = [](const std::string&, const std::vector<std::string>&) {
        return TaskLaunch{.task = {}, .error = "No programs can be started."};
      };
};

/// The operating system's own answers.
TaskCalls systemTaskCalls();

}  // namespace korvantis

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace korvantis {

/// What becomes of a program's standard output and error.
enum class ProgramOutput { discarded, piped };

/// A program started by this one, with nothing on its standard input. One thread at a time. When
/// the object goes while the program runs, the program runs on and is reaped when it ends.
class SpawnedProgram {
 public:
  /// Starts `executable` (looked up on PATH when it holds no slash) with these arguments; null
  /// with the reason in `error` when that fails.
  static std::unique_ptr<SpawnedProgram> start(const std::string& executable,
                                               const std::vector<std::string>& arguments,
                                               ProgramOutput output, std::string& error);

  SpawnedProgram(const SpawnedProgram&) = delete;
  SpawnedProgram& operator=(const SpawnedProgram&) = delete;
  ~SpawnedProgram();

  /// Whether it has not ended yet.
  bool isRunning();
  /// Waits for its end, at most `seconds`; whether it has ended.
  bool waitUntilEnd(double seconds);
  /// Sends SIGTERM, unless it has ended.
  void terminate();
  /// Its exit status, or the signal that ended it; 0 while it runs.
  int terminationStatus() const { return status_; }
  /// What comes on its standard output up to the end of file, for at most `seconds`; empty when
  /// that is discarded.
  std::string readOutput(double seconds);
  /// The same for standard error.
  std::string readError(double seconds);

 private:
  SpawnedProgram(pid_t pid, FileDescriptor output, FileDescriptor error);
  void noteEnd(int waitStatus);

  pid_t pid_;
  bool hasEnded_ = false;
  int status_ = 0;
  FileDescriptor output_;
  FileDescriptor error_;
};

}  // namespace korvantis

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/VolumeCalls.h"
#include "platform/linux/hardware/MountList.h"

namespace korvantis {

/// Asks for the space of volumes whose servers may never answer. Each question has a thread of its
/// own; the last answer is handed over at once. Any thread.
class UnhurriedVolumes {
 public:
  using Ask = std::function<std::optional<VolumeResourceValues>(const std::string& path)>;

  /// `ask` may block for ever, and may still run when this object has gone.
  UnhurriedVolumes(std::function<double()> monotonicSeconds, Ask ask);

  /// What the volume that is mounted there last answered; absent before its first answer and once
  /// that is older than 30 seconds. Asks again when the last question is 10 seconds old and was
  /// answered: a volume that hangs holds one thread, not many. Another volume at the same path
  /// starts anew.
  std::optional<VolumeResourceValues> values(const MountedFileSystem& mount);

 private:
  struct Answer {
    MountedFileSystem mount;
    bool asking = false;
    bool isNew = false;
    std::optional<double> askedAt;
    std::optional<double> answeredAt;
    std::optional<VolumeResourceValues> values;
  };
  struct Answers {
    /// The place for the answers of this volume; null when another one is at its path by now.
    Answer* of(const MountedFileSystem& mount);

    std::mutex lock;
    std::map<std::string, Answer> byPath;
  };

  bool begin(const MountedFileSystem& mount);
  void startAsking(const MountedFileSystem& mount);

  const std::function<double()> monotonicSeconds;
  const Ask ask;
  /// Outlives this object for as long as a question is open.
  const std::shared_ptr<Answers> answers = std::make_shared<Answers>();
};

}  // namespace korvantis

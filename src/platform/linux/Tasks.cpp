#include <limits>
#include <memory>
#include <utility>

#include "platform/TaskCalls.h"
#include "platform/linux/SpawnedProgram.h"

namespace korvantis {
namespace {

TaskLaunch launch(const std::string& executable, const std::vector<std::string>& arguments) {
  TaskLaunch result;
  const std::shared_ptr<SpawnedProgram> program =
      SpawnedProgram::start(executable, arguments, ProgramOutput::piped, result.error);
  if (!program) return result;
  result.task = RunningTask{
      .isRunning = [program] { return program->isRunning(); },
      .terminate = [program] { program->terminate(); },
      .terminationStatus = [program] { return program->terminationStatus(); },
      .readStandardErrorToEndOfFile =
          [program] { return program->readError(std::numeric_limits<double>::infinity()); }};
  return result;
}

}  // namespace

TaskCalls systemTaskCalls() {
  return {launch};
}

}  // namespace korvantis

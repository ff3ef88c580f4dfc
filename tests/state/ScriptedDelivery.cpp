#include "state/ScriptedDelivery.h"

namespace korvantis::test {

UserDefaultsCalls ScriptedDefaults::calls() {
  const auto set = [this](const std::string& key, Value value) {
    writes.emplace_back(key, value);
    values[key] = std::move(value);
  };
  UserDefaultsCalls calls;
  calls.stringForKey = [this](const std::string& key) -> std::optional<std::string> {
    const auto found = values.find(key);
    if (found == values.end() || !std::holds_alternative<std::string>(found->second))
      return std::nullopt;
    return std::get<std::string>(found->second);
  };
  calls.setString = [set](const std::string& key, const std::string& value) { set(key, value); };
  calls.boolForKey = [this](const std::string& key) {
    const auto found = values.find(key);
    return found != values.end() && found->second == Value(true);
  };
  calls.setBool = [set](const std::string& key, bool value) { set(key, value); };
  calls.integerForKey = [this](const std::string& key) {
    const auto found = values.find(key);
    const auto* const number =
        found != values.end() ? std::get_if<std::int64_t>(&found->second) : nullptr;
    return number != nullptr ? *number : 0;
  };
  calls.setInteger = [set](const std::string& key, std::int64_t value) { set(key, value); };
  calls.hasObjectForKey = [this](const std::string& key) { return values.contains(key); };
  return calls;
}

BriefDeliveryCalls ScriptedDelivery::calls() {
  BriefDeliveryCalls calls;
  calls.clock.now = [this] { return now; };
  calls.mainRunLoop.async = [this](std::function<void()> task) {
    if (holdsMainTasks) {
      mainTasks.push_back(std::move(task));
    } else {
      task();
    }
  };
  calls.background.detached = [this](std::function<void()> task) {
    backgroundTasks.push_back(std::move(task));
  };
  calls.background.sleep = [this](double seconds) {
    ++sleeps;
    now += seconds;
  };
  calls.http.dataForRequest = [this](const HTTPRequest& request) {
    requests.push_back(request);
    return answer;
  };
  calls.workspace.openURL = [this](const std::string& url,
                                   const std::function<void(bool)>& completion) {
    opened.push_back(url);
    const bool isOpened = opens.empty() || opens.front();
    if (!opens.empty()) opens.pop_front();
    completion(isOpened);
  };
  calls.tasks.launch = [this](const std::string& executable,
                              const std::vector<std::string>& arguments) {
    launches.emplace_back(executable, arguments);
    if (launchError) return TaskLaunch{.task = {}, .error = *launchError};
    const double end = now + runsSeconds;
    return TaskLaunch{
        .task = RunningTask{.isRunning = [this, end] { return now < end; },
                            .terminate = [this] { ++terminations; },
                            .terminationStatus = [this] { return terminationStatus; },
                            .readStandardErrorToEndOfFile = [this] { return standardError; }},
        .error = {}};
  };
  return calls;
}

void ScriptedDelivery::runBackground() {
  while (!backgroundTasks.empty()) {
    const auto task = std::move(backgroundTasks.front());
    backgroundTasks.pop_front();
    task();
  }
}

void ScriptedDelivery::runMain() {
  while (!mainTasks.empty()) {
    const auto task = std::move(mainTasks.front());
    mainTasks.pop_front();
    task();
  }
}

}  // namespace korvantis::test

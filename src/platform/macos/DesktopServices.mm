#import <AppKit/AppKit.h>
#include <chrono>
#include <pthread.h>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/BackgroundCalls.h"
#include "platform/TaskCalls.h"
#include "platform/WorkspaceCalls.h"

namespace korvantis {
namespace {

NSString* textOf(const std::string& text) {
  return [NSString stringWithUTF8String:text.c_str()] ?: @"";
}

std::string bytesOf(NSData* data) {
  return std::string(static_cast<const char*>(data.bytes), data.length);
}

TaskLaunch launch(const std::string& executable, const std::vector<std::string>& arguments) {
  @autoreleasepool {
    NSMutableArray<NSString*>* const words = [NSMutableArray array];
    for (const std::string& argument : arguments) [words addObject:textOf(argument)];
    NSTask* const task = [[NSTask alloc] init];
    NSPipe* const errorPipe = [NSPipe pipe];
    task.executableURL = [NSURL fileURLWithPath:textOf(executable)];
    task.arguments = words;
    task.standardError = errorPipe;
    task.standardOutput = [NSPipe pipe];
    NSError* error = nil;
    if (![task launchAndReturnError:&error]) {
      return {.task = {}, .error = error.localizedDescription.UTF8String ?: ""};
    }
    return {.task = RunningTask{.isRunning = [task] { return task.isRunning == YES; },
                                .terminate = [task] { [task terminate]; },
                                .terminationStatus = [task] { return task.terminationStatus; },
                                .readStandardErrorToEndOfFile =
                                    [errorPipe] {
                                      NSFileHandle* const end = errorPipe.fileHandleForReading;
                                      return bytesOf([end readDataToEndOfFile]);
                                    }},
            .error = {}};
  }
}

void revealInFileManager(const std::vector<std::string>& paths) {
  @autoreleasepool {
    NSMutableArray<NSURL*>* const urls = [NSMutableArray array];
    for (const std::string& path : paths) {
      NSString* const text = [NSString stringWithUTF8String:path.c_str()];
      if (text != nil) [urls addObject:[NSURL fileURLWithPath:text]];
    }
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:urls];
  }
}

void openURL(const std::string& url, std::function<void(bool)> completion) {
  @autoreleasepool {
    NSURL* const target = [NSURL URLWithString:textOf(url)];
    completion(target != nil && [NSWorkspace.sharedWorkspace openURL:target]);
  }
}

void detached(std::function<void()> task) {
  try {
    std::thread([task = std::move(task)] {
      pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0);
      task();
    }).detach();
  } catch (const std::system_error&) {
    // The machine has no thread to give: the work is dropped, the program goes on.
  }
}

void sleepFor(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

}  // namespace

TaskCalls systemTaskCalls() {
  return {launch};
}

WorkspaceCalls systemWorkspaceCalls() {
  return {openURL, revealInFileManager};
}

BackgroundCalls systemBackgroundCalls() {
  return {detached, sleepFor};
}

}  // namespace korvantis

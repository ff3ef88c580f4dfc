/// idle_processes N: starts N idle processes that look like a developer's, prints "READY", and
/// ends them when its standard input closes. They have long command lines, folders of their own,
/// some descriptors and threads, and a few listening ports on loopback, so that every part of a
/// tick has its usual work.

#include <arpa/inet.h>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int listeners = 20;
constexpr int heavyEvery = 5;
constexpr int heavyThreads = 8;
constexpr std::size_t heavyBytes = std::size_t{8} << 20;

void listenOnLoopback() {
  const int server = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);  // port 0: the system picks a free one
  sockaddr generic{};
  static_assert(sizeof generic == sizeof address);
  __builtin_memcpy(&generic, &address, sizeof address);
  if (bind(server, &generic, sizeof generic) != 0 || listen(server, 16) != 0) _exit(1);
}

/// Memory that is really there, and threads that sleep.
void weighHeavy() {
  void* memory =
      mmap(nullptr, heavyBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) _exit(1);
  auto* bytes = static_cast<volatile char*>(memory);
  for (std::size_t offset = 0; offset < heavyBytes; offset += 4096) bytes[offset] = 1;
  for (int count = 1; count < heavyThreads; ++count) {
    std::thread([] {
      for (;;) pause();
    }).detach();
  }
}

/// What a child does once it runs this program anew: readies itself, says so, sleeps.
[[noreturn]] void idle(int index, int readyDescriptor) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (int count = 0; count < 2 + index % 6; ++count) {
    if (open("/dev/null", O_RDONLY) < 0) _exit(1);
  }
  if (index < listeners) listenOnLoopback();
  if (index % heavyEvery == 0) weighHeavy();
  const char ready = 1;
  if (write(readyDescriptor, &ready, 1) != 1) _exit(1);
  close(readyDescriptor);
  for (;;) pause();
}

pid_t start(const std::string& self, const std::filesystem::path& folder, int index, int ready) {
  std::vector<std::string> words{self,
                                 "--idle",
                                 std::to_string(index),
                                 std::to_string(ready),
                                 "node_modules/.bin/dev-server --watch --config",
                                 "./config/development.json"};
  const std::filesystem::path project = folder / ("project-" + std::to_string(index % 16));
  std::filesystem::create_directories(project);
  const pid_t child = fork();
  if (child != 0) return child;
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  if (chdir(project.c_str()) != 0) _exit(1);
  const int null = open("/dev/null", O_RDWR);
  for (int standard = 0; standard < 3; ++standard) dup2(null, standard);
  execv(self.c_str(), arguments.data());
  _exit(1);
}

int run(int count) {
  const std::string self = std::filesystem::read_symlink("/proc/self/exe");
  std::string pattern = std::filesystem::temp_directory_path() / "idle-processes-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  int ready[2];
  if (pipe(ready) != 0) return 1;

  std::vector<pid_t> children;
  for (int index = 0; index < count; ++index) {
    children.push_back(start(self, pattern, index, ready[1]));
  }
  close(ready[1]);
  int running = 0;
  for (char byte = 0; running < count && read(ready[0], &byte, 1) == 1;) ++running;
  std::printf("READY %d\n", running);
  std::fflush(stdout);

  for (char byte = 0; read(STDIN_FILENO, &byte, 1) > 0;) {
  }
  for (const pid_t child : children) kill(child, SIGKILL);
  for (const pid_t child : children) waitpid(child, nullptr, 0);
  std::filesystem::remove_all(pattern);
  return running == count ? 0 : 1;
}

}  // namespace

int main(int count, char** words) {
  if (count > 3 && std::string(words[1]) == "--idle")
    idle(std::atoi(words[2]), std::atoi(words[3]));
  return run(count > 1 ? std::atoi(words[1]) : 400);
}

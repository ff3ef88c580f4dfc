#include <condition_variable>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <sched.h>
#include <sys/mount.h>
#include <thread>
#include <unistd.h>

#include "platform/hardware/HardwareTree.h"
#include "platform/linux/MachineCalls.h"
#include "platform/linux/hardware/LinuxVolumes.h"
#include "support/ChildProcess.h"

namespace korvantis {
namespace {

using test::ChildProcess;
using test::HardwareTree;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::Optional;

std::vector<std::string> pathsOf(const std::string& mountinfo) {
  std::vector<std::string> paths;
  for (const auto& mount : parseMountList(mountinfo)) paths.push_back(mount.path);
  return paths;
}

std::string line(const std::string& number, const std::string& path, const std::string& type,
                 const std::string& source = "none") {
  return "20 1 " + number + " / " + path + " rw,relatime shared:1 - " + type + " " + source +
         " rw\n";
}

TEST(Volumes, IntelLaptopHasRootStickAndNetworkMounts) {
  const HardwareTree tree("intel-laptop");
  EXPECT_THAT(
      tree.calls.volumes.mountedVolumePaths(),
      Optional(ElementsAre("/", "/run/media/ann/Data Stick", "/mnt/team", "/home/ann/far")));
  const auto root = tree.calls.volumes.resourceValues("/");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->name, "root") << "the label of the mapping";
  EXPECT_EQ(root->isInternal, true) << "the disk below the mapping";
  EXPECT_EQ(root->isRemovable, false);
  EXPECT_EQ(root->totalCapacity, 1000);
  EXPECT_EQ(root->availableCapacityForImportantUsage, 400);
  const auto stick = tree.calls.volumes.resourceValues("/run/media/ann/Data Stick");
  ASSERT_TRUE(stick);
  EXPECT_EQ(stick->name, "Data Stick");
  EXPECT_EQ(stick->isInternal, false);
  EXPECT_EQ(stick->isRemovable, true);
}

TEST(Volumes, SubvolumesOfOneFileSystemAreOneVolume) {
  const HardwareTree tree("amd-laptop");
  EXPECT_THAT(tree.calls.volumes.mountedVolumePaths(), Optional(ElementsAre("/")));
  EXPECT_EQ(tree.calls.volumes.resourceValues("/")->isInternal, true)
      << "found by what is mounted, since such a file system has no device number";
}

TEST(Volumes, DesktopBoardVirtualMachineAndContainerHaveTheirOwn) {
  EXPECT_THAT(HardwareTree("nvidia-desktop").calls.volumes.mountedVolumePaths(),
              Optional(ElementsAre("/", "/data", "/mnt/scratch")));
  EXPECT_THAT(HardwareTree("arm-board").calls.volumes.mountedVolumePaths(),
              Optional(ElementsAre("/")));
  EXPECT_THAT(HardwareTree("virtual-machine").calls.volumes.mountedVolumePaths(),
              Optional(ElementsAre("/")));
  const HardwareTree container("bare-container");
  EXPECT_THAT(container.calls.volumes.mountedVolumePaths(), Optional(ElementsAre("/")));
  const auto root = container.calls.volumes.resourceValues("/");
  ASSERT_TRUE(root);
  EXPECT_EQ(root->name, std::nullopt);
  EXPECT_EQ(root->isInternal, std::nullopt);
}

TEST(Volumes, NoListIsNoReply) {
  const HardwareTree tree;
  EXPECT_EQ(tree.calls.volumes.mountedVolumePaths(), std::nullopt);
  EXPECT_EQ(tree.calls.volumes.resourceValues("/")->totalCapacity, 1000);
}

TEST(Volumes, SystemFoldersAndFileSystemsAreLeftOut) {
  std::string list = line("0:1", "/", "overlay");
  int minor = 2;
  for (const char* const path : {"/boot", "/boot/efi", "/efi", "/var/lib/docker", "/snap/x",
                                 "/run/user/1000/doc", "/var/snap/y"}) {
    list += line("8:" + std::to_string(minor++), path, "ext4");
  }
  for (const char* const type : {"squashfs", "overlay", "fuse.portal", "fuse", "proc", "cgroup2",
                                 "devtmpfs", "autofs", "nsfs"}) {
    list += line("0:" + std::to_string(minor++), "/mnt/" + std::string(type), type);
  }
  for (const char* const path : {"/tmp", "/run", "/dev/shm", "/run/lock"}) {
    list += line("0:" + std::to_string(minor++), path, "tmpfs");
  }
  EXPECT_THAT(pathsOf(list), ElementsAre("/"));
  EXPECT_THAT(pathsOf(list + line("8:90", "/bootleg", "ext4")), ElementsAre("/", "/bootleg"));
}

TEST(Volumes, RootComesFirstWhereverItStands) {
  EXPECT_THAT(pathsOf(line("8:2", "/data", "ext4") + line("8:1", "/", "ext4")),
              ElementsAre("/", "/data"));
}

TEST(Volumes, OnlyTheLastMountOnAPathIsSeen) {
  const std::string disk = line("0:1", "/", "ext4") + line("8:1", "/data", "ext4");
  EXPECT_THAT(pathsOf(disk + line("0:9", "/data", "overlay")), ElementsAre("/"));
  const auto mounts = parseMountList(disk + line("0:9", "/data", "nfs4", "server:/x"));
  ASSERT_EQ(mounts.size(), 2U);
  EXPECT_EQ(mounts[1].source, "server:/x");
  EXPECT_TRUE(mounts[1].remote);
}

TEST(Volumes, OctalInPathsIsDecoded) {
  EXPECT_THAT(pathsOf(line("8:1", R"(/a\040b\011c\134d)", "ext4")), ElementsAre("/a b\tc\\d"));
  EXPECT_THAT(pathsOf(line("8:1", R"(/end\04)", "ext4")), ElementsAre(R"(/end\04)"));
  EXPECT_THAT(pathsOf(line("8:1", R"(/no\999)", "ext4")), ElementsAre(R"(/no\999)"));
}

TEST(Volumes, DamagedLinesArePassedOver) {
  EXPECT_THAT(pathsOf("nonsense\n\n - ext4 x rw\n20 1 8:1 / /x rw\n" + line("8:1", "/", "ext4")),
              ElementsAre("/"));
}

TEST(Volumes, TenThousandMountsAreUnderstoodAgainOnlyWhenTheyChanged) {
  HardwareTree tree;
  std::string list = line("8:1", "/", "ext4");
  for (int index = 0; index < 10'000; ++index) {
    list += line("0:" + std::to_string(index), "/var/lib/containers/" + std::to_string(index),
                 "overlay");
  }
  tree.write("proc/self/mountinfo", list + line("8:2", "/data", "ext4"));
  EXPECT_THAT(tree.calls.volumes.mountedVolumePaths(), Optional(ElementsAre("/", "/data")));
  tree.write("proc/self/mountinfo", list);
  for (int tick = 0; tick < 100; ++tick) {
    ASSERT_THAT(tree.calls.volumes.mountedVolumePaths(), Optional(ElementsAre("/", "/data")));
  }
  EXPECT_EQ(tree.mountQuestions, 100);
  tree.mountsChanged = true;
  EXPECT_THAT(tree.calls.volumes.mountedVolumePaths(), Optional(ElementsAre("/")));
}

TEST(Volumes, AListThatChangesAllTheTimeIsReadEveryFiveSeconds) {
  HardwareTree tree;
  const std::string root = line("8:1", "/", "ext4");
  tree.write("proc/self/mountinfo", root);
  const auto count = [&] { return tree.calls.volumes.mountedVolumePaths()->size(); };
  const auto mount = [&](const std::string& list, double later) {
    tree.write("proc/self/mountinfo", list);
    tree.mountsChanged = true;
    tree.seconds = tree.seconds + later;
  };
  EXPECT_EQ(count(), 1U);
  mount(root + line("8:2", "/a", "ext4"), 2);
  EXPECT_EQ(count(), 2U) << "the first change at once";
  mount(root + line("8:2", "/a", "ext4") + line("8:3", "/b", "ext4"), 4.9);
  EXPECT_EQ(count(), 2U);
  tree.seconds = tree.seconds + 0.2;
  EXPECT_EQ(count(), 3U) << "a change is not forgotten";
}

TEST(Volumes, ConcurrentTicksMayReadTheListInTheBackground) {
  HardwareTree tree;
  const std::string root = line("8:1", "/", "ext4");
  tree.write("proc/self/mountinfo", root + line("8:2", "/data", "ext4"));
  tree.sources.inBackground = true;
  tree.open();
  const auto tick = [&] {
    for (int tries = 0; tries < 200; ++tries) {
      const auto paths = tree.calls.volumes.mountedVolumePaths();
      ASSERT_THAT(paths, Optional(ElementsAre("/", "/data")));
      ASSERT_TRUE(tree.calls.volumes.resourceValues("/data"));
      tree.mountsChanged = true;
      tree.seconds.fetch_add(1);
    }
  };
  std::thread other(tick);
  tick();
  other.join();
}

/// A network volume whose server answers when the test says so.
class SlowServer {
 public:
  std::optional<VolumeResourceValues> ask(const std::string& path) {
    std::unique_lock guard(lock);
    ++asked;
    changed.notify_all();
    if (path != "/") changed.wait(guard, [this] { return answering; });
    ++answered;
    changed.notify_all();
    VolumeResourceValues values;
    values.totalCapacity = 7;
    return values;
  }
  void answer(bool yes) {
    const std::scoped_lock guard(lock);
    answering = yes;
    changed.notify_all();
  }
  void waitForAnswers(int count) {
    std::unique_lock guard(lock);
    changed.wait(guard, [&] { return answered >= count; });
  }
  int questions() {
    const std::scoped_lock guard(lock);
    return asked;
  }

 private:
  std::mutex lock;
  std::condition_variable changed;
  bool answering = false;
  int asked = 0;
  int answered = 0;
};

/// The answer is put down right after the server has given it.
std::optional<VolumeResourceValues> eventually(LinuxVolumes& volumes, const std::string& path) {
  for (;;) {
    if (const auto values = volumes.values(path)) return values;
    std::this_thread::yield();
  }
}

TEST(Volumes, ANetworkMountThatDoesNotAnswerHoldsNobody) {
  HardwareTree tree("intel-laptop");
  const auto server = std::make_shared<SlowServer>();
  LinuxVolumes volumes(tree.sources,
                       [server](const std::string& path) { return server->ask(path); });
  ASSERT_TRUE(volumes.paths());
  EXPECT_EQ(volumes.values("/")->totalCapacity, 7) << "asked at once";
  for (int tick = 0; tick < 50; ++tick) {
    EXPECT_EQ(volumes.values("/mnt/team"), std::nullopt);
    tree.seconds = tree.seconds + 2;
  }
  EXPECT_LE(server->questions(), 2) << "one question is open, not one a tick";
  server->answer(true);
  server->waitForAnswers(2);
  const auto values = eventually(volumes, "/mnt/team");
  EXPECT_EQ(values->totalCapacity, 7);
  EXPECT_EQ(values->name, "team");
  EXPECT_EQ(values->isInternal, false);
  server->answer(false);
  tree.seconds = tree.seconds + 29;
  EXPECT_TRUE(volumes.values("/mnt/team"))
      << "the last answer stands while the next one is awaited";
  tree.seconds = tree.seconds + 2;
  EXPECT_EQ(volumes.values("/mnt/team"), std::nullopt) << "but not for ever";
  server->answer(true);
  server->waitForAnswers(3);
  EXPECT_TRUE(eventually(volumes, "/mnt/team"));
}

TEST(Volumes, AnotherVolumeAtTheSamePathDoesNotHaveTheFiguresOfTheLastOne) {
  HardwareTree tree;
  const std::string root = line("8:1", "/", "ext4");
  const std::string head = "40 29 0:50 / /mnt/team rw,relatime shared:36 - nfs4 server:/";
  tree.write("proc/self/mountinfo", root + head + "team rw\n");
  const auto server = std::make_shared<SlowServer>();
  server->answer(true);
  LinuxVolumes volumes(tree.sources,
                       [server](const std::string& path) { return server->ask(path); });
  ASSERT_TRUE(volumes.paths());
  EXPECT_EQ(eventually(volumes, "/mnt/team")->totalCapacity, 7);
  server->answer(false);
  tree.write("proc/self/mountinfo", root + head + "other rw\n");
  tree.mountsChanged = true;
  ASSERT_TRUE(volumes.paths());
  EXPECT_EQ(volumes.values("/mnt/team"), std::nullopt) << "not yet asked";
  server->answer(true);
  EXPECT_TRUE(eventually(volumes, "/mnt/team"));
}

TEST(Volumes, ARealMountTurnsUpAndGoes) {
  const TemporaryFolder outside;
  const std::string answer = ChildProcess::answerOf([&]() -> std::string {
    if (::unshare(CLONE_NEWNS) != 0) return "not permitted";
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return "not permitted";
    PlatformCalls calls;
    addMachineCalls(calls, systemMachineSources());
    HardwareSources sources = systemHardwareSources();
    sources.inBackground = false;
    double seconds = 0;
    sources.monotonicSeconds = [&seconds] { return seconds += 6; };
    LinuxVolumes volumes(sources, calls.volumes.resourceValues);
    const std::string place = "/mnt/korvantis test " + std::to_string(::getpid());
    const auto isListed = [&] {
      const auto paths = volumes.paths().value_or(std::vector<std::string>());
      return std::count(paths.begin(), paths.end(), place) == 1;
    };
    std::string text = isListed() ? "listed too early" : "";
    if (::mount("none", "/mnt", "tmpfs", 0, "size=64k") != 0 || ::mkdir(place.c_str(), 0700) != 0 ||
        ::mount("none", place.c_str(), "tmpfs", 0, "size=1m") != 0) {
      return "not permitted";
    }
    text += isListed() ? "listed " : "missing ";
    const auto values = volumes.values(place);
    text += values ? std::to_string(*values->totalCapacity) + " " + values->name.value_or("") : "?";
    ::umount(place.c_str());
    text += isListed() ? " stayed" : " gone";
    return text;
  });
  if (answer == "not permitted") GTEST_SKIP() << "nothing may be mounted here";
  EXPECT_TRUE(answer.starts_with("listed 1048576 korvantis test ")) << answer;
  EXPECT_TRUE(answer.ends_with(" gone")) << answer;
}

}  // namespace
}  // namespace korvantis

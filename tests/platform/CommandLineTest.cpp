#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "platform/linux/CommandLine.h"
#include "platform/linux/ProcessName.h"

namespace korvantis {
namespace {

using namespace std::string_literals;

TEST(CommandLine, TheProgramIsTheFirstWord) {
  EXPECT_EQ(CommandLine::program("/bin/ls\0-l\0"s), "/bin/ls");
  EXPECT_EQ(CommandLine::program("/bin/a --b\0-l\0"s), "/bin/a --b");
  EXPECT_EQ(CommandLine::program(""), "");
  EXPECT_EQ(CommandLine::program("\0"s), "");
}

TEST(CommandLine, ACommandLineWrittenAsOneWordIsCutBeforeItsFirstOption) {
  EXPECT_EQ(CommandLine::program("/opt/a b/web --type=renderer --x\0"s), "/opt/a b/web");
  EXPECT_EQ(CommandLine::program("/opt/web --type=renderer"), "/opt/web");
  EXPECT_EQ(CommandLine::program("/opt/web --type=gpu\0\0\0"s), "/opt/web");
  EXPECT_EQ(CommandLine::program("/opt/web file\0"s), "/opt/web file");
}

TEST(CommandLine, TheBlockIsTheCountThePathAndTheWords) {
  const std::string block = CommandLine::argumentBlock("/bin/ls", "ls\0-l\0"s);
  EXPECT_EQ(block, "\2\0\0\0/bin/ls\0ls\0-l\0"s);
}

TEST(CommandLine, ALastWordWithoutItsZeroByteGetsOne) {
  EXPECT_EQ(CommandLine::argumentBlock("/b", "one"), "\1\0\0\0/b\0one\0"s);
  EXPECT_EQ(CommandLine::argumentBlock("/b", "a\0b"s), "\2\0\0\0/b\0a\0b\0"s);
}

TEST(CommandLine, WithoutWordsThereIsNoBlock) {
  EXPECT_EQ(CommandLine::argumentBlock("/bin/ls", ""), "");
}

TEST(CommandLine, AnUnknownExecutableLeavesAnEmptyPath) {
  EXPECT_EQ(CommandLine::argumentBlock("", "a\0"s), "\1\0\0\0\0a\0"s);
}

TEST(ProcessName, ACutNameIsMendedFromTheExecutable) {
  EXPECT_EQ(longProcessName("chrome_crashpad", "/opt/x/chrome_crashpad_handler", ""),
            "chrome_crashpad_handler");
}

TEST(ProcessName, ACutNameIsMendedFromTheFirstArgumentWhenTheExecutableIsAnother) {
  EXPECT_EQ(longProcessName("gnome-terminal-", "/usr/bin/python3.11",
                            "/usr/libexec/gnome-terminal-server"),
            "gnome-terminal-server");
}

TEST(ProcessName, ANameThatTheProgramChoseStays) {
  EXPECT_EQ(longProcessName("Web Content", "/usr/lib/firefox/firefox", "firefox"), "Web Content");
  EXPECT_EQ(longProcessName("Isolated Web Co", "/usr/lib/firefox/firefox", ""), "Isolated Web Co");
  EXPECT_EQ(longProcessName("short", "/usr/bin/shorter-than", ""), "short");
  EXPECT_EQ(longProcessName("", "/usr/bin/x", "x"), "");
}

TEST(ProcessName, NoNameIsLongerThan31Bytes) {
  const std::string base = "fifteen_bytes__and_many_more_than_thirty_one";
  EXPECT_EQ(longProcessName("fifteen_bytes__", "/bin/" + base, ""), base.substr(0, 31));
}

TEST(ProcessName, ANameOfExactly15BytesThatWasNotCutStays) {
  EXPECT_EQ(longProcessName("exactly15bytes_", "/bin/exactly15bytes_", ""), "exactly15bytes_");
}

}  // namespace
}  // namespace korvantis

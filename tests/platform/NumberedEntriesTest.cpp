#include <fcntl.h>
#include <gmock/gmock.h>

#include "platform/linux/FileText.h"
#include "platform/linux/NumberedEntries.h"
#include "support/TemporaryFolder.h"

namespace korvantis {
namespace {

using testing::SizeIs;
using testing::UnorderedElementsAre;

TEST(NumberedEntries, OnlyNamesThatAreWholeNumbersCount) {
  const test::TemporaryFolder root;
  for (const char* name : {"1", "0", "2147483647", "2147483648", "01", "-1", "+1", "1a", "self",
                           "99999999999999999999", " 1"}) {
    root.write(name, "");
  }
  const auto numbers = numberedEntries(AT_FDCWD, root.path());
  ASSERT_TRUE(numbers);
  EXPECT_THAT(*numbers, UnorderedElementsAre(0, 1, 2147483647));
}

TEST(NumberedEntries, ManyEntriesAreAllFoundAndLimitsKept) {
  const test::TemporaryFolder root;
  for (int number = 0; number < 3000; ++number) root.write(std::to_string(number), "");
  EXPECT_THAT(*numberedEntries(AT_FDCWD, root.path()), SizeIs(3000));
  for (const std::size_t limit : {0U, 1U, 128U, 2999U, 3000U}) {
    EXPECT_THAT(*numberedEntries(AT_FDCWD, root.path(), limit), SizeIs(limit));
  }
}

TEST(NumberedEntries, AMissingFolderOrAFileIsAbsent) {
  const test::TemporaryFolder root;
  EXPECT_FALSE(numberedEntries(AT_FDCWD, root.path("missing")));
  EXPECT_FALSE(numberedEntries(AT_FDCWD, root.write("file", "")));
}

TEST(FileText, ReadsWholeFilesUpToTheLimitAndTellsErrors) {
  const test::TemporaryFolder root;
  const std::string big(100'000, 'x');
  EXPECT_EQ(readFileText(AT_FDCWD, root.write("big", big)).text, big);
  EXPECT_EQ(readFileText(AT_FDCWD, root.path("big"), 20'000).text.size(), 20'000U);
  EXPECT_TRUE(readFileText(AT_FDCWD, root.write("empty", "")));
  EXPECT_EQ(readFileText(AT_FDCWD, root.path("missing")).error, ENOENT);
  EXPECT_EQ(readFileText(AT_FDCWD, root.path()).error, EISDIR);
}

TEST(FileText, LinksAreReadWhole) {
  const test::TemporaryFolder root;
  const std::string target(4000, 'x');
  root.link("link", target);
  EXPECT_EQ(readLinkText(AT_FDCWD, root.path("link")), target);
  EXPECT_EQ(readLinkText(AT_FDCWD, root.path("missing")), std::nullopt);
}

}  // namespace
}  // namespace korvantis

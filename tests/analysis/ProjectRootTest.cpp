#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "analysis/ProjectLocator.h"
#include "support/ScriptedFiles.h"

namespace korvantis {
namespace {

using test::ScriptedFiles;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A locator over scripted files; what was asked while it was made is forgotten.
struct Place {
  ScriptedFiles files;
  std::optional<ProjectLocator> made;

  ProjectLocator& locator() {
    if (!made) {
      made.emplace(files.calls());
      files.takeQuestions();
    }
    return *made;
  }

  std::optional<std::string> root(const std::string& path) {
    return locator().locateProjectRoot(path);
  }

  /// The folders in which markers were looked for since the last call, in order, each once.
  std::vector<std::string> foldersTested() {
    std::vector<std::string> folders;
    for (std::string question : files.takeQuestions()) {
      question.erase(0, question.find('/'));
      question.erase(question.rfind('/'));
      if (folders.empty() || folders.back() != question) folders.push_back(question);
    }
    return folders;
  }
};

TEST(ProjectRoot, AbsentAndEmptyPathsHaveNone) {
  Place place;
  EXPECT_EQ(place.locator().locateProjectRoot(std::nullopt), std::nullopt);
  EXPECT_EQ(place.root(""), std::nullopt);
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

TEST(ProjectRoot, MarkersAreTheseEighteenNames) {
  auto names = ProjectLocator::markerNames;
  std::sort(names.begin(), names.end());
  EXPECT_THAT(names,
              ElementsAre(".git", "CMakeLists.txt", "Cargo.toml", "Gemfile", "Makefile",
                          "Package.swift", "build.gradle", "build.gradle.kts", "compose.yaml",
                          "composer.json", "docker-compose.yml", "flake.nix", "go.mod", "mix.exs",
                          "package.json", "pom.xml", "pyproject.toml", "requirements.txt"));
}

TEST(ProjectRoot, EveryMarkerAloneMakesAFolderARoot) {
  for (const std::string_view name : ProjectLocator::markerNames) {
    Place place;
    place.files.existing = {"/code/shop/" + std::string(name)};
    EXPECT_EQ(place.root("/code/shop"), "/code/shop") << name;
    EXPECT_EQ(place.root("/code"), std::nullopt) << name;
  }
}

TEST(ProjectRoot, NoOtherNameMakesAFolderARoot) {
  Place place;
  for (const std::string name :
       {"git", ".gitignore", "package-lock.json", "makefile", "GNUmakefile", "cargo.toml",
        "setup.py", "docker-compose.yaml", "compose.yml"}) {
    place.files.existing.insert("/code/shop/" + name);
  }
  EXPECT_EQ(place.root("/code/shop"), std::nullopt);
}

TEST(ProjectRoot, NearestMarkerWins) {
  Place place;
  place.files.existing = {"/code/shop/.git", "/code/shop/packages/api/package.json"};
  EXPECT_EQ(place.root("/code/shop/packages/api/src"), "/code/shop/packages/api");
  EXPECT_EQ(place.root("/code/shop/packages"), "/code/shop");
  EXPECT_EQ(place.root("/code/shop/packages/web"), "/code/shop");
}

TEST(ProjectRoot, ExcludedPathsHaveNoneAndAskForNoFile) {
  Place place;
  for (const std::string path :
       {"/", "/tmp", "/var", "/home/ada", "/System/Library", "/System/", "/Applications/Foo.app",
        "/Applications/", "/Library/Developer", "/Library/"}) {
    place.files.existing.insert(path + "/.git");
    EXPECT_EQ(place.root(path), std::nullopt) << path;
  }
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

TEST(ProjectRoot, GitBelowApplicationsSystemAndLibraryCountsForNothing) {
  Place place;
  place.files.existing = {"/Applications/Foo.app/.git", "/System/a/.git", "/Library/a/b/.git"};
  EXPECT_EQ(place.root("/Applications/Foo.app"), std::nullopt);
  EXPECT_EQ(place.root("/System/a"), std::nullopt);
  EXPECT_EQ(place.root("/Library/a/b"), std::nullopt);
}

TEST(ProjectRoot, ExclusionsCompareThePathAsItWasGiven) {
  // These mean an excluded folder, but are not written like one: the walk decides.
  Place place;
  place.files.existing = {"/tmp/.git", "/var/.git", "/Library/.git", "/Applications/x/.git"};
  EXPECT_EQ(place.root("/tmp/"), "/tmp");
  EXPECT_EQ(place.root("/tmp/."), "/tmp");
  EXPECT_EQ(place.root("/var/log/.."), "/var");
  EXPECT_EQ(place.root("/Library"), "/Library");
  EXPECT_EQ(place.root("//Applications/x"), "/Applications/x");
  EXPECT_EQ(place.root("/home/../tmp"), "/tmp");
}

TEST(ProjectRoot, WalkPassesThroughFoldersThatAreExcludedAsInputs) {
  Place place;
  place.files.existing = {"/tmp/Makefile", "/Library/go.mod", "/Applications/.git"};
  EXPECT_EQ(place.root("/tmp"), std::nullopt);
  EXPECT_EQ(place.root("/tmp/a/b"), "/tmp");
  EXPECT_EQ(place.root("/srv/../Library/a"), "/Library");
  EXPECT_EQ(place.root("/srv/../Applications/a"), "/Applications");
}

TEST(ProjectRoot, TmpIsExcludedAsInputEvenAfterAWalkFoundARootThere) {
  Place place;
  place.files.existing = {"/tmp/Makefile"};
  EXPECT_EQ(place.root("/tmp/a"), "/tmp");
  EXPECT_EQ(place.root("/tmp"), std::nullopt);
}

TEST(ProjectRoot, WalkEndsAtTheHomeFolderWithoutLookingIntoIt) {
  Place place;
  place.files.existing = {"/home/ada/.git", "/home/.git", "/.git"};
  EXPECT_EQ(place.root("/home/ada/docs/letters"), std::nullopt);
  EXPECT_THAT(place.foldersTested(), ElementsAre("/home/ada/docs/letters", "/home/ada/docs"));
}

TEST(ProjectRoot, HomeFolderWrittenInAnotherWayEndsTheWalkAtOnce) {
  Place place;
  place.files.existing = {"/home/ada/.git"};
  EXPECT_EQ(place.root("/home/ada/"), std::nullopt);
  EXPECT_EQ(place.root("/home/./ada"), std::nullopt);
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

TEST(ProjectRoot, FolderBesideTheHomeFolderIsNotPartOfIt) {
  Place place;
  place.files.existing = {"/home/adam/.git", "/home/.git"};
  EXPECT_EQ(place.root("/home/adam"), "/home/adam");
  EXPECT_EQ(place.root("/home/bob"), "/home");
}

TEST(ProjectRoot, WalkEndsAtUsersAndAtTheTopWithoutLookingIntoThem) {
  Place place;
  place.files.existing = {"/Users/.git", "/.git"};
  EXPECT_EQ(place.root("/Users/Shared/x"), std::nullopt);
  EXPECT_EQ(place.root("/Users"), std::nullopt);
  EXPECT_EQ(place.root("/opt"), std::nullopt);
  EXPECT_THAT(place.foldersTested(), ElementsAre("/Users/Shared/x", "/Users/Shared", "/opt"));
}

TEST(ProjectRoot, HomeFolderIsAskedForOnceWhenTheLocatorIsMade) {
  ScriptedFiles files;
  ProjectLocator locator(files.calls());
  EXPECT_THAT(files.takeQuestions(), ElementsAre("home"));
  files.home = "/home/bob";
  files.existing = {"/home/ada/.git"};
  EXPECT_EQ(locator.locateProjectRoot("/home/ada"), std::nullopt);
  EXPECT_EQ(locator.locateProjectRoot("/home/ada/x"), std::nullopt);
  EXPECT_THAT(files.questions(), ::testing::Not(Contains("home")));
}

TEST(ProjectRoot, HomeFolderThatIsNoTextIsKnownInTheFormThatWorkingDirectoriesHave) {
  Place place;
  place.files.home = "/home/\xFF";
  EXPECT_EQ(place.root("/home/\uFFFD"), std::nullopt);
  EXPECT_EQ(place.root("/home/\uFFFD/a"), std::nullopt);
  EXPECT_THAT(place.foldersTested(), ElementsAre("/home/\uFFFD/a"));
}

TEST(ProjectRoot, MarkerInTheEighthFolderIsFoundAndInTheNinthNot) {
  Place place;
  place.files.existing = {"/m/.git"};
  EXPECT_EQ(place.root("/m/1/2/3/4/5/6/7"), "/m");
  EXPECT_EQ(place.root("/m/a/b/c/d/e/f/g/h"), std::nullopt);
}

TEST(ProjectRoot, MarkerNineLevelsUpLeavesEightRememberedFailuresAndTheNinthFolderWalksAfresh) {
  Place place;
  place.files.existing = {"/m/.git"};
  EXPECT_EQ(place.root("/m/1/2/3/4/5/6/7/8"), std::nullopt);
  EXPECT_THAT(place.foldersTested(), SizeIs(8));
  // The oddity of this: even the folder right below the marker belongs to no project now.
  EXPECT_EQ(place.root("/m/1"), std::nullopt);
  EXPECT_EQ(place.root("/m/1/2/3/4"), std::nullopt);
  EXPECT_THAT(place.files.questions(), IsEmpty());
  EXPECT_EQ(place.root("/m"), "/m");
  EXPECT_THAT(place.foldersTested(), ElementsAre("/m"));
}

TEST(ProjectRoot, LaterWalkThroughARememberedFailureReplacesIt) {
  Place place;
  place.files.existing = {"/m/.git"};
  EXPECT_EQ(place.root("/m/1/2/3/4/5/6/7/8"), std::nullopt);
  EXPECT_EQ(place.root("/m/1/other"), "/m");
  EXPECT_EQ(place.root("/m/1"), "/m");
  EXPECT_EQ(place.root("/m/1/2"), std::nullopt);
}

TEST(ProjectRoot, FirstWalkCostsAtMostEightTimesEighteenQuestions) {
  Place place;
  EXPECT_EQ(place.root("/1/2/3/4/5/6/7/8/9/10"), std::nullopt);
  EXPECT_THAT(place.files.questions(), SizeIs(8 * 18));
}

TEST(ProjectRoot, KnownFoldersAskForNoFile) {
  Place place;
  place.files.existing = {"/code/shop/.git"};
  EXPECT_EQ(place.root("/code/shop/src/app"), "/code/shop");
  EXPECT_EQ(place.root("/opt/tools/bin"), std::nullopt);
  place.files.takeQuestions();
  for (int tick = 0; tick < 3; ++tick) {
    EXPECT_EQ(place.root("/code/shop/src/app"), "/code/shop");
    EXPECT_EQ(place.root("/code/shop/src"), "/code/shop");
    EXPECT_EQ(place.root("/code/shop"), "/code/shop");
    EXPECT_EQ(place.root("/opt/tools/bin"), std::nullopt);
    EXPECT_EQ(place.root("/opt/tools"), std::nullopt);
    EXPECT_EQ(place.root("/opt"), std::nullopt);
  }
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

TEST(ProjectRoot, WalkLooksAtFoldersThatItKnowsAsAtAnyOther) {
  Place place;
  place.files.existing = {"/code/shop/.git"};
  EXPECT_EQ(place.root("/code/shop/src"), "/code/shop");
  place.files.takeQuestions();
  EXPECT_EQ(place.root("/code/shop/src/new"), "/code/shop");
  EXPECT_THAT(place.foldersTested(),
              ElementsAre("/code/shop/src/new", "/code/shop/src", "/code/shop"));
}

TEST(ProjectRoot, FolderThatGetsItsMarkerAfterAWalkStaysWithoutAProject) {
  Place place;
  EXPECT_EQ(place.root("/code/new"), std::nullopt);
  place.files.existing = {"/code/new/.git"};
  EXPECT_EQ(place.root("/code/new"), std::nullopt);
}

TEST(ProjectRoot, FolderThatLosesItsMarkerKeepsItsProject) {
  Place place;
  place.files.existing = {"/code/old/.git"};
  EXPECT_EQ(place.root("/code/old"), "/code/old");
  place.files.existing.clear();
  EXPECT_EQ(place.root("/code/old"), "/code/old");
}

TEST(ProjectRoot, PathWithDotsWalksEachTimeAndIsStoredInItsStandardForm) {
  Place place;
  place.files.existing = {"/code/shop/.git"};
  for (const std::string path : {"/code/shop/./src", "/code/x/../shop/src", "/code/shop/src/",
                                 "/code//shop/src", "/../code/shop/src"}) {
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(place.root(path), "/code/shop") << path;
      EXPECT_THAT(place.foldersTested(), ElementsAre("/code/shop/src", "/code/shop")) << path;
    }
  }
  EXPECT_EQ(place.root("/code/shop/src"), "/code/shop");
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

TEST(ProjectRoot, WalkOfAPathWithDotsRenewsWhatIsRemembered) {
  Place place;
  EXPECT_EQ(place.root("/code/new"), std::nullopt);
  place.files.existing = {"/code/new/.git"};
  EXPECT_EQ(place.root("/code/./new"), "/code/new");
  EXPECT_EQ(place.root("/code/new"), "/code/new");
}

TEST(ProjectRoot, RelativePathHasNoneAndAsksForNoFile) {
  Place place;
  place.files.existing = {"shop/.git", "/shop/.git", "./.git", "C:\\shop/.git"};
  for (const std::string path : {"shop", "./shop", "../shop", ".", "C:\\shop"}) {
    EXPECT_EQ(place.root(path), std::nullopt) << path;
  }
  EXPECT_THAT(place.files.questions(), IsEmpty());
}

}  // namespace
}  // namespace korvantis

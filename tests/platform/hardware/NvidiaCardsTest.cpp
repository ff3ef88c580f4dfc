#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/hardware/HardwareTree.h"

namespace korvantis {
namespace {

using test::HardwareTree;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

/// The stand-in of the driver's library, held open so that its figures outlive each opening.
class FakeLibrary {
 public:
  FakeLibrary() : handle(::dlopen(KORVANTIS_FAKE_NVIDIA, RTLD_NOW)) {
    if (handle == nullptr) throw std::runtime_error("no stand-in library");
    samples(0, 0);
    fail(false);
  }
  FakeLibrary(const FakeLibrary&) = delete;
  FakeLibrary& operator=(const FakeLibrary&) = delete;
  ~FakeLibrary() { ::dlclose(handle); }

  void samples(unsigned long long stamp, unsigned share) const {
    function<void(unsigned long long, unsigned)>("fakeSamples")(stamp, share);
  }
  void fail(bool on) const { function<void(int)>("fakeFailure")(on ? 1 : 0); }
  int starts() const { return function<int()>("fakeStarts")(); }
  int stops() const { return function<int()>("fakeStops")(); }

 private:
  template <typename Function>
  Function* function(const char* name) const {
    return reinterpret_cast<Function*>(::dlsym(handle, name));
  }
  void* handle;
};

PropertyMap statistics(double percent, std::int64_t bytes) {
  return {{"Device Utilization %", PropertyValue{percent}},
          {"In use system memory", PropertyValue{bytes}}};
}

PropertyValue named(const char* model) {
  return PropertyValue{std::string(model)};
}

class NvidiaCards : public testing::Test {
 protected:
  void SetUp() override {
    tree.sources.nvidiaLibrary = KORVANTIS_FAKE_NVIDIA;
    tree.open();
  }
  std::map<std::string, std::int64_t> clientsAfter(double seconds) {
    tree.seconds = tree.seconds + seconds;
    return tree.graphicsClients();
  }

  const FakeLibrary library;
  HardwareTree tree{"nvidia-desktop"};
};

TEST_F(NvidiaCards, TellNameCoresLoadAndMemory) {
  const PropertyMap memoryAlone{{"In use system memory", PropertyValue{std::int64_t{1000}}}};
  EXPECT_THAT(tree.services("IOAccelerator"),
              ElementsAre(PropertyMap{{"model", named("NVIDIA GeForce RTX 3070")},
                                      {"gpu-core-count", PropertyValue{std::int64_t{5888}}},
                                      {"PerformanceStatistics",
                                       PropertyValue{statistics(64, 3'221'225'472)}}},
                          PropertyMap{{"PerformanceStatistics", PropertyValue{memoryAlone}}}));
}

TEST_F(NvidiaCards, TemperatureStandsInForAGraphicsSensor) {
  EXPECT_EQ(tree.key("Tg05"), std::nullopt) << "nobody has asked the library yet";
  tree.services("IOAccelerator");
  tree.seconds = tree.seconds + 1;
  EXPECT_EQ(tree.key("Tg05"), 71);
  tree.seconds = tree.seconds + 11;
  EXPECT_EQ(tree.key("Tg05"), std::nullopt) << "an old figure";
}

TEST_F(NvidiaCards, SharesOfTheIntervalAddUpByProgram) {
  EXPECT_THAT(clientsAfter(0), IsEmpty()) << "nothing found means that nothing worked";
  library.samples(1000, 40);
  EXPECT_THAT(clientsAfter(2), UnorderedElementsAre(Pair("pid 812, trainer", 1'000'000'000),
                                                    Pair("pid 813, desktop", 100'000'000)));
  // The same samples once more are old.
  EXPECT_THAT(clientsAfter(2), testing::Contains(Pair("pid 812, trainer", 1'000'000'000)));
  library.samples(2000, 80);
  EXPECT_THAT(clientsAfter(1), testing::Contains(Pair("pid 812, trainer", 1'900'000'000)));
}

TEST_F(NvidiaCards, AProgramThatHasBeenIdleForLongIsForgotten) {
  clientsAfter(0);
  library.samples(1000, 40);
  EXPECT_EQ(clientsAfter(2).size(), 2U);
  library.samples(0, 0);
  EXPECT_EQ(clientsAfter(59).size(), 2U);
  EXPECT_THAT(clientsAfter(2), IsEmpty());
}

TEST_F(NvidiaCards, LibraryThatFailsIsStartedAnewAtASlowPace) {
  const int starts = library.starts();
  tree.services("IOAccelerator");
  EXPECT_EQ(library.starts(), starts + 1);
  library.fail(true);
  tree.seconds = tree.seconds + 11;
  EXPECT_THAT(tree.services("IOAccelerator"),
              ElementsAre(PropertyMap{{"model", named("NVIDIA GeForce RTX 3070")}}))
      << "the driver's own folder still tells its name";
  library.fail(false);
  tree.seconds = tree.seconds + 40;
  tree.services("IOAccelerator");
  EXPECT_EQ(library.starts(), starts + 1);
  tree.seconds = tree.seconds + 20;
  EXPECT_EQ(tree.services("IOAccelerator").size(), 2U);
  EXPECT_EQ(library.starts(), starts + 2);
}

TEST_F(NvidiaCards, IsStoppedInTheEnd) {
  const int stops = library.stops();
  tree.services("IOAccelerator");
  tree.sources.nvidiaLibrary = "";
  tree.open();
  EXPECT_EQ(library.stops(), stops + 1);
}

TEST_F(NvidiaCards, ACardThatSleepsIsNotWoken) {
  const int starts = library.starts();
  const std::string status = "sys/bus/pci/devices/0000:01:00.0/power/runtime_status";
  tree.write(status, "suspended\n");
  const PropertyMap nameAlone{{"model", named("NVIDIA GeForce RTX 3070")}};
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(nameAlone));
  EXPECT_EQ(library.starts(), starts);
  tree.write(status, "active\n");
  tree.seconds = tree.seconds + 2;
  EXPECT_EQ(tree.services("IOAccelerator").size(), 2U);
  tree.write(status, "suspending\n");
  tree.seconds = tree.seconds + 11;
  EXPECT_THAT(tree.services("IOAccelerator"), ElementsAre(nameAlone))
      << "nor once the library has started";
}

TEST_F(NvidiaCards, MissingLibraryLeavesTheNameThatTheDriverTells) {
  tree.sources.nvidiaLibrary = "libkorvantis-no-such-library.so.1";
  tree.open();
  EXPECT_THAT(tree.services("IOAccelerator"),
              ElementsAre(PropertyMap{{"model", named("NVIDIA GeForce RTX 3070")}}));
}

TEST_F(NvidiaCards, ALibraryWithoutItsFunctionsIsNone) {
  tree.sources.nvidiaLibrary = "libm.so.6";
  tree.open();
  EXPECT_EQ(tree.services("IOAccelerator").size(), 1U);
}

TEST_F(NvidiaCards, WithoutTheDriverTheLibraryIsNotLookedFor) {
  const int starts = library.starts();
  HardwareTree other("intel-laptop");
  other.sources.nvidiaLibrary = KORVANTIS_FAKE_NVIDIA;
  other.open();
  EXPECT_EQ(other.services("IOAccelerator").size(), 1U);
  EXPECT_EQ(library.starts(), starts);
}

TEST_F(NvidiaCards, InTheBackgroundTheFirstTickHasTheNameAndALaterOneTheFigures) {
  tree.sources.inBackground = true;
  tree.open();
  for (int tries = 0; tries < 1000 && tree.services("IOAccelerator").size() < 2; ++tries) {
    ASSERT_TRUE(tree.services("IOAccelerator").at(0).contains("model"));
    ::usleep(10'000);
    tree.seconds = tree.seconds + 1;
  }
  EXPECT_EQ(tree.services("IOAccelerator").size(), 2U);
}

}  // namespace
}  // namespace korvantis

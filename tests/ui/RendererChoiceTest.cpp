#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "ui/RendererChoice.h"

namespace korvantis {
namespace {

/// A folder of graphics devices.
class RendererChoiceTest : public testing::Test {
 protected:
  QTemporaryDir folder;

  void addDevice(const QString& name, const QString& driver) {
    const QString device = folder.filePath(name + QStringLiteral("/device"));
    ASSERT_TRUE(QDir().mkpath(device));
    ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere/drivers/") + driver,
                            device + QStringLiteral("/driver")));
  }
};

TEST_F(RendererChoiceTest, WithoutARenderDeviceThereIsNoRealGPU) {
  EXPECT_FALSE(hasRealGPU(folder.path()));
  EXPECT_FALSE(hasRealGPU(folder.filePath(QStringLiteral("missing"))));
  addDevice(QStringLiteral("card0"), QStringLiteral("i915"));
  EXPECT_FALSE(hasRealGPU(folder.path()));
}

TEST_F(RendererChoiceTest, DriversThatOnlyPretendAreNoRealGPU) {
  addDevice(QStringLiteral("renderD128"), QStringLiteral("vgem"));
  addDevice(QStringLiteral("renderD129"), QStringLiteral("virtio_gpu"));
  EXPECT_FALSE(hasRealGPU(folder.path()));
}

TEST_F(RendererChoiceTest, ARenderDeviceOfAnyOtherDriverIsARealGPU) {
  addDevice(QStringLiteral("renderD128"), QStringLiteral("vgem"));
  addDevice(QStringLiteral("renderD129"), QStringLiteral("amdgpu"));
  EXPECT_TRUE(hasRealGPU(folder.path()));
}

}  // namespace
}  // namespace korvantis

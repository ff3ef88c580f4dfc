#include "ui/RendererChoice.h"

#include <QDir>
#include <QFileInfo>
#include <QQuickWindow>
#include <QStringList>
#include <algorithm>

namespace korvantis {

namespace {

/// Drivers that offer a render device without a processor behind it.
bool isPretending(const QString& driver) {
  static const QStringList drivers{QStringLiteral("vgem"), QStringLiteral("vkms"),
                                   QStringLiteral("virtio_gpu"), QStringLiteral("virtio-pci")};
  return drivers.contains(driver);
}

}  // namespace

bool hasRealGPU(const QString& devices) {
  const QDir folder(devices);
  const QStringList names = folder.entryList({QStringLiteral("renderD*")}, QDir::AllEntries);
  return std::any_of(names.begin(), names.end(), [&folder](const QString& name) {
    const QFileInfo driver(folder.filePath(name + QStringLiteral("/device/driver")));
    return driver.isSymLink() && !isPretending(QFileInfo(driver.symLinkTarget()).fileName());
  });
}

void chooseRenderer() {
#ifdef Q_OS_LINUX
  if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
    return;
  if (hasRealGPU(QStringLiteral("/sys/class/drm"))) return;
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
#endif
}

}  // namespace korvantis

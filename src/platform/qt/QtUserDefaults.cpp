#include "platform/qt/QtUserDefaults.h"

#include <QMetaType>
#include <QSettings>
#include <QStandardPaths>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>

namespace korvantis {

namespace {

std::optional<std::string> storedText(const QSettings& settings, const std::string& key) {
  const QVariant value = settings.value(QString::fromStdString(key));
  // A line edited by hand can also hold a list or an encoded object, which is no text.
  if (value.typeId() != QMetaType::QString) return std::nullopt;
  return value.toString().toStdString();
}

}  // namespace

UserDefaultsCalls qtUserDefaultsCalls() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return qtUserDefaultsCalls((folder + "/Korvantis/Korvantis.conf").toStdString());
}

UserDefaultsCalls qtUserDefaultsCalls(const std::string& path) {
  const auto settings =
      std::make_shared<QSettings>(QString::fromStdString(path), QSettings::IniFormat);
  return {[settings](const std::string& key) { return storedText(*settings, key); },
          [settings](const std::string& key, const std::string& value) {
            settings->setValue(QString::fromStdString(key), QString::fromStdString(value));
            settings->sync();
          }};
}

}  // namespace korvantis

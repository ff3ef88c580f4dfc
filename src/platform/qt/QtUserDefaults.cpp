#include "platform/qt/QtUserDefaults.h"

#include <QStandardPaths>
#include <QString>
#include <QVariant>
#include <charconv>
#include <memory>
#include <optional>

#include "platform/qt/SettingsFile.h"

namespace korvantis {

namespace {

/// A line edited by hand can also hold a list or an encoded object, which is no text.
std::optional<QString> textOf(const QVariant& value) {
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? "true" : "false";
  if (value.typeId() == QMetaType::LongLong) return QString::number(value.toLongLong());
  if (value.typeId() != QMetaType::QString) return std::nullopt;
  return value.toString();
}

/// The number that a text begins with, blanks before it passed over; 0 when it begins with none.
std::int64_t leadingInteger(const QString& text) {
  const std::string trimmed = text.trimmed().toStdString();
  const char* first = trimmed.data();
  const char* const last = first + trimmed.size();
  if (first != last && *first == '+') ++first;
  std::int64_t value = 0;
  const auto parsed = std::from_chars(first, last, value);
  if (parsed.ec == std::errc::result_out_of_range) return *first == '-' ? INT64_MIN : INT64_MAX;
  return value;
}

bool isTrue(const QString& text) {
  const QString word = text.trimmed().toLower();
  return word == QLatin1String("true") || word == QLatin1String("yes") || leadingInteger(word) != 0;
}

}  // namespace

UserDefaultsCalls qtUserDefaultsCalls() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return qtUserDefaultsCalls((folder + "/Korvantis/Korvantis.conf").toStdString());
}

UserDefaultsCalls qtUserDefaultsCalls(const std::string& path) {
  const auto file = std::make_shared<SettingsFile>(QString::fromStdString(path));
  const auto text = [file](const std::string& key) {
    return textOf(file->value(QString::fromStdString(key)));
  };
  const auto set = [file](const std::string& key, const QVariant& value) {
    file->setValue(QString::fromStdString(key), value);
  };
  UserDefaultsCalls calls;
  calls.stringForKey = [text](const std::string& key) -> std::optional<std::string> {
    const auto stored = text(key);
    return stored ? std::optional(stored->toStdString()) : std::nullopt;
  };
  calls.setString = [set](const std::string& key, const std::string& value) {
    set(key, QString::fromStdString(value));
  };
  calls.boolForKey = [text](const std::string& key) {
    const auto stored = text(key);
    return stored && isTrue(*stored);
  };
  calls.setBool = [set](const std::string& key, bool value) { set(key, value); };
  calls.integerForKey = [text](const std::string& key) {
    const auto stored = text(key);
    return stored ? leadingInteger(*stored) : 0;
  };
  calls.setInteger = [set](const std::string& key, std::int64_t value) {
    set(key, static_cast<qlonglong>(value));
  };
  calls.hasObjectForKey = [file](const std::string& key) {
    return file->value(QString::fromStdString(key)).isValid();
  };
  return calls;
}

}  // namespace korvantis

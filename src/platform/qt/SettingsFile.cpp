#include "platform/qt/SettingsFile.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>
#include <QThread>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace korvantis {

namespace {

/// Keeps other copies of this program from writing into a folder at the same time. One that is
/// stopped in the middle of a write is waited for only so long: a setting must not hang the
/// program.
class FolderLock {
 public:
  explicit FolderLock(const QString& folder)
      : descriptor_(
            ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    const QDeadlineTimer patience(200);
    while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
      if (patience.hasExpired()) return;
      QThread::msleep(1);
    }
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

 private:
  int descriptor_;
};

/// The bytes of a file, none when it is not there; absent when they can't be read.
std::optional<QByteArray> contentsOf(const QString& path) {
  if (!QFileInfo::exists(path)) return QByteArray();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.readAll();
}

/// Where a file really lies when a link, or a chain of them, stands at its path.
QString targetOf(const QString& path) {
  const QFileInfo facts(path);
  if (!facts.isSymLink()) return path;
  const QString end = facts.canonicalFilePath();
  return end.isEmpty() ? facts.symLinkTarget() : end;
}

/// A new file with those bytes beside the one at `path`; empty when it can't be made.
QString writtenBeside(const QString& path, const QByteArray& bytes) {
  QTemporaryFile copy(path + QStringLiteral(".XXXXXX"));
  if (!copy.open() || copy.write(bytes) != bytes.size() || !copy.flush()) return {};
  copy.setAutoRemove(false);
  return copy.fileName();
}

/// Whether a file has that value already: writing waits for the disk, and every start writes back
/// what it has read.
bool holds(const QString& path, const QString& key, const QVariant& value) {
  const QVariant stored = QSettings(path, QSettings::IniFormat).value(key);
  return stored.typeId() == QMetaType::QString && stored.toString() == value.toString();
}

/// Changes one key of an INI file that nobody else knows of.
bool changeKey(const QString& path, const QString& key, const QVariant& value) {
  QSettings settings(path, QSettings::IniFormat);
  settings.setValue(key, value);
  settings.sync();
  return settings.status() != QSettings::AccessError;
}

}  // namespace

SettingsFile::SettingsFile(QString path) : path_(std::move(path)) {}

QVariant SettingsFile::value(const QString& key) const {
  const auto unwritten = unwritten_.find(key);
  if (unwritten != unwritten_.end()) return *unwritten;
  return QSettings(path_, QSettings::IniFormat).value(key);
}

void SettingsFile::setValue(const QString& key, const QVariant& value) {
  if (write(key, value)) {
    unwritten_.remove(key);
  } else {
    unwritten_[key] = value;
  }
}

bool SettingsFile::write(const QString& key, const QVariant& value) const {
  const QString target = targetOf(path_);
  const QString folder = QFileInfo(target).absolutePath();
  if (!QDir().mkpath(folder)) return false;
  const FolderLock lock(folder);
  if (holds(target, key, value)) return true;
  const auto before = contentsOf(target);
  if (!before || (QFileInfo::exists(target) && !QFileInfo(target).isWritable())) return false;
  const QString copy = writtenBeside(target, *before);
  if (copy.isEmpty()) return false;
  const bool isWritten =
      changeKey(copy, key, value) &&
      std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(target).constData()) == 0;
  if (!isWritten) QFile::remove(copy);
  return isWritten;
}

}  // namespace korvantis

#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace korvantis {

/// A file of settings in INI form, shared with other copies of this program. Each write takes the
/// file as it is at that moment, changes one key, and puts the whole new file in its place in one
/// step: nobody ever sees half a file, and keys that somebody else has written meanwhile stay. The
/// file is readable by its owner alone, since it can hold secrets. Main thread.
class SettingsFile {
 public:
  explicit SettingsFile(QString path);

  /// The value under `key`, as text unless it could not be written; invalid when there is none.
  QVariant value(const QString& key) const;

  /// Writes a value at once. One that can't be written lasts until the program ends.
  void setValue(const QString& key, const QVariant& value);

 private:
  bool write(const QString& key, const QVariant& value) const;

  QString path_;
  /// What could not be written.
  QMap<QString, QVariant> unwritten_;
};

}  // namespace korvantis

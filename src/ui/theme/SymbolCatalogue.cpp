#include "ui/theme/SymbolCatalogue.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

namespace korvantis::SymbolCatalogue {

namespace {

QMap<QString, QString> readList() {
  QMap<QString, QString> paths;
  QFile file(QStringLiteral(":/korvantis/symbols.txt"));
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return paths;
  static const QRegularExpression blanks(QStringLiteral(" +"));
  QTextStream lines(&file);
  for (QString line = lines.readLine(); !line.isNull(); line = lines.readLine()) {
    const QStringList words = line.split(blanks);
    if (line.startsWith(u'#') || words.size() != 2) continue;
    paths.insert(words[0], QStringLiteral(":/korvantis/") + words[1]);
  }
  return paths;
}

}  // namespace

const QMap<QString, QString>& glyphPaths() {
  static const QMap<QString, QString> paths = readList();
  return paths;
}

QString glyphPath(const QString& symbolName) {
  return glyphPaths().value(symbolName);
}

}  // namespace korvantis::SymbolCatalogue

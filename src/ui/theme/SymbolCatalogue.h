#pragma once

#include <QMap>
#include <QString>

/// Which glyph stands for which system symbol. Read once from the list built into the program.
/// Main thread.
namespace korvantis::SymbolCatalogue {

/// The resource path of a symbol's SVG file; empty for a symbol that is not in the list.
QString glyphPath(const QString& symbolName);

/// All symbols with the resource paths of their files.
const QMap<QString, QString>& glyphPaths();

}  // namespace korvantis::SymbolCatalogue

#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace korvantis::test {

/// A text in one colour on a ground in another.
struct ColourPair {
  QString text;
  QString ground;
  bool isDark = true;
  /// To one decimal.
  QString ratio;

  bool operator==(const ColourPair&) const = default;
};

/// How clearly `text` stands out on `ground`, both opaque: 1 (not at all) to 21 (black on white),
/// by relative luminance.
double contrast(const QColor& text, const QColor& ground);

/// The ratio as the document shows it.
QString ratioText(double ratio);

/// `above` painted over the opaque `below`.
QColor painted(const QColor& above, const QColor& below);

/// A colour of the theme by name in the theme that is set, or a mixed one such as
/// "safeGreen 16% on cardBackground"; invalid for any other name.
QColor colourNamed(const QString& name);

/// The names of the colours of texts, and of the plain grounds.
const std::vector<QString>& textColourNames();
const std::vector<QString>& groundNames();

/// The rows of the table under that heading of docs/look.md, as they stand.
QStringList documentedRows(const QString& heading);

/// A row of the table of plain grounds: the ratio on each ground, or "-" where it is high enough.
/// Absent when it is high enough on all. Leaves that theme set.
std::optional<QString> plainRow(const QString& text, bool isDark);

/// The pairs of the table of mixed grounds.
std::vector<ColourPair> documentedMixedPairs();

/// A row of that table.
QString mixedRow(const ColourPair& pair);

/// The least ratio at which a text counts as easy to read.
inline constexpr double enoughContrast = 4.5;

}  // namespace korvantis::test

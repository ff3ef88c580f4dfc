#include "ui/quality/ContrastTable.h"

#include <QFile>
#include <QMetaProperty>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "core/FixedDecimals.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis::test {

namespace {

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

}  // namespace

double contrast(const QColor& text, const QColor& ground) {
  const double one = luminance(text) + 0.05;
  const double other = luminance(ground) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

QString ratioText(double ratio) {
  // Down, so that a ratio just short of a bound is not shown as that bound.
  return QString::fromStdString(fixedDecimals(std::floor(ratio * 10) / 10, 1));
}

QColor painted(const QColor& above, const QColor& below) {
  const auto mixed = [&](double one, double other) {
    return static_cast<float>(one * above.alphaF() + other * (1 - above.alphaF()));
  };
  return QColor::fromRgbF(mixed(above.redF(), below.redF()), mixed(above.greenF(), below.greenF()),
                          mixed(above.blueF(), below.blueF()));
}

QColor colourNamed(const QString& name) {
  if (name == QStringLiteral("white")) return Qt::white;
  static const QRegularExpression mixed(QStringLiteral("^(\\w+) (\\d+)% on (.+)$"));
  const auto match = mixed.match(name);
  if (match.hasMatch()) {
    QColor above = colourNamed(match.captured(1));
    above.setAlphaF(match.captured(2).toFloat() / 100);
    return painted(above, colourNamed(match.captured(3)));
  }
  const OstrelTheme theme;
  return theme.property(name.toUtf8().constData()).value<QColor>();
}

const std::vector<QString>& textColourNames() {
  static const std::vector<QString> names = [] {
    std::vector<QString> all;
    const QMetaObject& theme = OstrelTheme::staticMetaObject;
    for (int index = theme.propertyOffset(); index < theme.propertyCount(); ++index) {
      const QString name = QString::fromUtf8(theme.property(index).name());
      const auto& grounds = groundNames();
      const bool isLine =
          name == QStringLiteral("hairline") || name == QStringLiteral("subtleBorder");
      // Two accents have a second name.
      const bool isAlias =
          name == QStringLiteral("amberWarning") || name == QStringLiteral("safeGreen");
      if (!isLine && !isAlias && std::find(grounds.begin(), grounds.end(), name) == grounds.end())
        all.push_back(name);
    }
    return all;
  }();
  return names;
}

const std::vector<QString>& groundNames() {
  static const std::vector<QString> names{
      QStringLiteral("canvas"), QStringLiteral("cardBackground"), QStringLiteral("elevatedCard"),
      QStringLiteral("rowHover")};
  return names;
}

QStringList documentedRows(const QString& heading) {
  QFile file(QStringLiteral(KORVANTIS_LOOK_DOCUMENT));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList rows;
  bool isBelowHeading = false;
  const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
  for (const QString& line : lines) {
    if (line.startsWith(u'#')) isBelowHeading = line.endsWith(u' ' + heading);
    if (isBelowHeading && line.startsWith(u'|')) rows += line;
  }
  // Without the head and the line below it.
  return rows.mid(2);
}

std::optional<QString> plainRow(const QString& text, bool isDark) {
  OstrelTheme::setIsDark(isDark);
  bool isFaint = false;
  QString row = QStringLiteral("| %1 | %2 |")
                    .arg(text, isDark ? QStringLiteral("dark") : QStringLiteral("light"));
  for (const QString& ground : groundNames()) {
    const double ratio = contrast(colourNamed(text), colourNamed(ground));
    isFaint = isFaint || ratio < enoughContrast;
    row += u' ' + (ratio < enoughContrast ? ratioText(ratio) : QStringLiteral("-")) +
           QStringLiteral(" |");
  }
  return isFaint ? std::optional(row) : std::nullopt;
}

std::vector<ColourPair> documentedMixedPairs() {
  std::vector<ColourPair> pairs;
  for (const QString& row : documentedRows(QStringLiteral("Mixed grounds"))) {
    const QStringList cells = row.split(u'|');
    if (cells.size() != 6) continue;
    pairs.push_back({cells.at(1).trimmed(), cells.at(2).trimmed(),
                     cells.at(3).trimmed() == QStringLiteral("dark"), cells.at(4).trimmed()});
  }
  return pairs;
}

QString mixedRow(const ColourPair& pair) {
  return QStringLiteral("| %1 | %2 | %3 | %4 |")
      .arg(pair.text, pair.ground, pair.isDark ? QStringLiteral("dark") : QStringLiteral("light"),
           pair.ratio);
}

}  // namespace korvantis::test

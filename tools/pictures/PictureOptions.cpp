#include "pictures/PictureOptions.h"

#include <QCommandLineParser>
#include <algorithm>

#include "state/ObservableField.h"
#include "state/OstrelPane.h"

namespace korvantis::pictures {
namespace {

QStringList everyPane() {
  QStringList names;
  for (const OstrelPane pane : allCases<OstrelPane>()) names += caseText(pane);
  return names;
}

/// The values of an option, of which "all" or "both" means every one of `known`; absent when one
/// is not known.
std::optional<QStringList> chosen(const QStringList& values, const QStringList& known) {
  if (values.contains(QStringLiteral("all")) || values.contains(QStringLiteral("both"))) {
    return known;
  }
  const bool areKnown = std::all_of(values.begin(), values.end(), [&known](const QString& value) {
    return known.contains(value);
  });
  return areKnown ? std::optional(values) : std::nullopt;
}

std::optional<QSize> readSize(const QString& text) {
  const QStringList parts = text.split(u'x');
  if (parts.size() != 2) return std::nullopt;
  const QSize size(parts[0].toInt(), parts[1].toInt());
  const bool isSensible =
      size.width() >= 100 && size.height() >= 100 && size.width() <= 8000 && size.height() <= 8000;
  return isSensible ? std::optional(size) : std::nullopt;
}

}  // namespace

std::optional<PictureOptions> readOptions(const QStringList& words, QString& error) {
  const QCommandLineOption pane(QStringLiteral("pane"), {}, QStringLiteral("NAME"));
  const QCommandLineOption theme(QStringLiteral("theme"), {}, QStringLiteral("THEME"));
  const QCommandLineOption size(QStringLiteral("size"), {}, QStringLiteral("WxH"));
  const QCommandLineOption scale(QStringLiteral("scale"), {}, QStringLiteral("N"),
                                 QStringLiteral("1"));
  const QCommandLineOption popover(QStringLiteral("popover"));
  const QCommandLineOption settings(QStringLiteral("settings"), {}, QStringLiteral("TAB"));
  const QCommandLineOption out(QStringLiteral("out"), {}, QStringLiteral("FOLDER"),
                               QStringLiteral("."));
  QCommandLineParser parser;
  parser.addOptions({pane, theme, size, scale, popover, settings, out});
  if (!parser.parse(words)) {
    error = parser.errorText();
    return std::nullopt;
  }
  const auto panes = chosen(parser.values(pane), everyPane());
  const auto themes =
      chosen(parser.values(theme), {QStringLiteral("dark"), QStringLiteral("light")});
  const auto wanted = readSize(parser.value(size));
  const double factor = parser.value(scale).toDouble();
  if (!panes)
    error = QStringLiteral("the panes are all, ") + everyPane().join(QStringLiteral(", "));
  if (!themes) error = QStringLiteral("the themes are dark, light and both");
  if (parser.isSet(size) && !wanted) error = QStringLiteral("a size is written as 1220x790");
  if (factor < 0.5 || factor > 4) error = QStringLiteral("a scale lies between 0.5 and 4");
  if (!parser.positionalArguments().isEmpty()) error = QStringLiteral("there are options only");
  if (!error.isEmpty()) return std::nullopt;
  return PictureOptions{
      *panes,           *themes, wanted, factor, parser.isSet(popover), parser.value(settings),
      parser.value(out)};
}

}  // namespace korvantis::pictures

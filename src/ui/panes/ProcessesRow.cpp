#include "ui/panes/ProcessesRow.h"

#include "core/QuitSafetyVerdictKind.h"
#include "ui/views/ModelText.h"

namespace korvantis {

namespace {

QString badgeTextOf(const QString& verdict) {
  const auto kind = fromRawValue<QuitSafetyVerdictKind>(verdict.toStdString());
  return kind ? textOf(badgeText(*kind)) : QString();
}

}  // namespace

QString ProcessesRow::kindName() const {
  return textOf(rawValue(kind));
}

QString ProcessesRow::description() const {
  QStringList words;
  const auto add = [&words](const QString& word, const QString& figure) {
    if (!figure.isEmpty()) words.append(word + figure);
  };
  add({}, title);
  add({}, countText);
  add({}, badgeTextOf(verdict));
  add({}, pidText);
  add({}, roleText);
  add(QStringLiteral("ports "), ports.join(u' '));
  add({}, idleText);
  // The figures of some rows say themselves what they are of.
  add(cpuText.endsWith(QStringLiteral("CPU")) ? QString() : QStringLiteral("CPU "), cpuText);
  add(QStringLiteral("memory "), memoryText);
  add(QStringLiteral("energy "), energyText);
  add(QStringLiteral("network "), networkText);
  add({}, subtitle);
  return words.join(QStringLiteral(", "));
}

}  // namespace korvantis

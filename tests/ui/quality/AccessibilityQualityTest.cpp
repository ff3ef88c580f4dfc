// What a screen reader is told: every control has a name and a role, and every word and figure is
// said by itself or by what it belongs to.

#include <QAccessible>
#include <QSet>
#include <QStringList>
#include <gtest/gtest.h>
#include <vector>

#include "ui/quality/ItemWalk.h"
#include "ui/quality/ScreenStage.h"

namespace korvantis::test {
namespace {

constexpr CrowdedMachine worstMachine{.applications = 24, .processes = 80, .hasLongNames = true};

/// Everything that a screen reader finds from the window down.
QSet<QObject*> exposedObjects(QQuickWindow& window) {
  QSet<QObject*> exposed;
  std::vector<QAccessibleInterface*> waiting{QAccessible::queryAccessibleInterface(&window)};
  while (!waiting.empty()) {
    QAccessibleInterface* const next = waiting.back();
    waiting.pop_back();
    if (!next || !next->isValid()) continue;
    exposed.insert(next->object());
    for (int child = 0; child < next->childCount(); ++child) waiting.push_back(next->child(child));
  }
  return exposed;
}

QString said(QQuickItem* item) {
  QAccessibleInterface* const found = QAccessible::queryAccessibleInterface(item);
  if (!found) return {};
  return found->text(QAccessible::Name) + u'\n' + found->text(QAccessible::Description) + u'\n' +
         found->text(QAccessible::Value);
}

QAccessible::Role roleOf(QQuickItem* item) {
  QAccessibleInterface* const found = QAccessible::queryAccessibleInterface(item);
  return found ? found->role() : QAccessible::NoRole;
}

bool isSaidByControl(const QString& words, QQuickItem* item, const QSet<QObject*>& exposed) {
  return isControl(item) && exposed.contains(item) &&
         said(item).contains(words, Qt::CaseInsensitive);
}

bool isSaid(QQuickItem* item, const QSet<QObject*>& exposed) {
  const QString words = textOf(item).trimmed();
  for (QQuickItem* above = item; above; above = above->parentItem()) {
    if (exposed.contains(above) && said(above).contains(words, Qt::CaseInsensitive)) return true;
  }
  // A caption beside its picker or field is said as that one's name. A field may have a frame.
  for (QQuickItem* const neighbour : item->parentItem()->childItems()) {
    if (isSaidByControl(words, neighbour, exposed)) return true;
    for (QQuickItem* const inner : neighbour->childItems()) {
      if (isSaidByControl(words, inner, exposed)) return true;
    }
  }
  return false;
}

/// Whether the item is what of a list's row is clicked: it is told as that row.
bool isFaceOfRow(QQuickItem* item, const QSet<QObject*>& exposed) {
  QQuickItem* row = nullptr;
  return listAround(item, &row) && row && item->parentItem() == row && exposed.contains(row) &&
         !said(row).trimmed().isEmpty();
}

class AccessibilityQuality : public testing::TestWithParam<Screen> {
 protected:
  AccessibilityQuality() : stage(worstMachine, {}) {
    stage.show(GetParam());
    stage.tick();
    stage.settle();
    exposed = exposedObjects(stage.window());
    items = shownItems(stage.shown());
  }

  ScreenStage stage;
  QSet<QObject*> exposed;
  std::vector<ShownItem> items;
};

TEST_P(AccessibilityQuality, EveryControlHasANameAndARole) {
  QStringList faults;
  int controls = 0;
  for (const ShownItem& shown : items) {
    if (!isControl(shown.item) || isFaceOfRow(shown.item, exposed)) continue;
    ++controls;
    const QAccessible::Role role = roleOf(shown.item);
    if (!exposed.contains(shown.item)) {
      faults += QStringLiteral("hidden from screen readers: ") + described(shown.item);
    } else if (role == QAccessible::NoRole || role == QAccessible::Client) {
      faults += QStringLiteral("without a role: ") + described(shown.item);
    } else if (said(shown.item).section(u'\n', 0, 0).trimmed().isEmpty()) {
      faults += QStringLiteral("without a name: ") + described(shown.item);
    }
  }
  faults.removeDuplicates();
  EXPECT_GE(controls, 3);
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

/// The role that the screen's own code gives the item; a plain number, since the attached object's
/// class is Qt's own secret.
int givenRole(QQuickItem* item) {
  for (QObject* const child : item->children()) {
    if (child->inherits("QQuickAccessibleAttached")) return child->property("role").toInt();
  }
  return QAccessible::NoRole;
}

TEST_P(AccessibilityQuality, AScreenReaderIsToldTheRoleThatTheControlWasGiven) {
  QStringList faults;
  for (const ShownItem& shown : items) {
    if (!isControl(shown.item)) continue;
    const int given = givenRole(shown.item);
    if (given == QAccessible::NoRole || roleOf(shown.item) == given) continue;
    // The looks in the bar are told as plain buttons that are checked or not.
    if (shown.item->objectName().startsWith(QStringLiteral("theme-"))) continue;
    faults += QStringLiteral("%1 is told as %2: %3")
                  .arg(given)
                  .arg(int(roleOf(shown.item)))
                  .arg(described(shown.item));
  }
  faults.removeDuplicates();
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

TEST_P(AccessibilityQuality, EveryWordAndFigureIsSaid) {
  QStringList faults;
  int texts = 0;
  for (const ShownItem& shown : items) {
    if (!isText(shown.item) || textOf(shown.item).trimmed().isEmpty()) continue;
    // An example in an empty field.
    if (shown.item->inherits("QQuickPlaceholderText")) continue;
    ++texts;
    if (!isSaid(shown.item, exposed)) faults += described(shown.item);
  }
  faults.removeDuplicates();
  EXPECT_GE(texts, 3);
  EXPECT_TRUE(faults.isEmpty()) << "never said:\n" << faults.join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, AccessibilityQuality, testing::ValuesIn(allScreens()),
                         [](const auto& screen) { return testNameOf(screen.param); });

}  // namespace
}  // namespace korvantis::test

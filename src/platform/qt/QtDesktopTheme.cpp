#include "platform/qt/QtDesktopTheme.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QStandardPaths>
#include <QVariant>
#include <utility>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace korvantis {

namespace {

const auto portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const auto colorSchemeKey = QStringLiteral("color-scheme");
const auto settingsSchema = QStringLiteral("org.gnome.desktop.interface");

/// A connection of our own, so that nothing that others do with theirs touches it.
QDBusConnection connectionTo(const QString& address) {
  static int count = 0;
  const QString name = QStringLiteral("korvantis-theme-%1").arg(++count);
  return address.isEmpty() ? QDBusConnection(name) : QDBusConnection::connectToBus(address, name);
}

/// Portals wrap the value once more than they should.
std::optional<bool> isDarkScheme(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  bool isNumber = false;
  const unsigned scheme = value.toUInt(&isNumber);
  return isNumber ? std::optional(scheme == 1) : std::nullopt;
}

bool isTimeout(const QDBusMessage& reply) {
  const QDBusError error(reply);
  return error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout ||
         error.type() == QDBusError::TimedOut;
}

/// A helper program must not outlive us.
void endWithParent(QProcess& process) {
#ifdef Q_OS_LINUX
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
#else
  Q_UNUSED(process);
#endif
}

}  // namespace

DesktopThemeSources DesktopThemeSources::ofSession() {
  DesktopThemeSources sources;
  sources.busAddress = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  // Nothing is started for want of a bus: only one that is there is used.
  const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
  if (sources.busAddress.isEmpty() && QFileInfo::exists(socket))
    sources.busAddress = QStringLiteral("unix:path=") + socket;
  return sources;
}

QtDesktopTheme::QtDesktopTheme(DesktopThemeSources sources, QObject* parent)
    : QObject(parent), sources_(std::move(sources)), bus_(connectionTo(sources_.busAddress)) {
  askPortal();
}

QtDesktopTheme::~QtDesktopTheme() {
  for (QProcess* const process : {&query_, &monitor_}) {
    process->disconnect(this);
    process->kill();
    process->waitForFinished(1000);
  }
  QDBusConnection::disconnectFromBus(bus_.name());
}

void QtDesktopTheme::observe(std::function<void()> changed) {
  observers_.push_back(std::move(changed));
}

void QtDesktopTheme::setIsDark(bool isDark) {
  if (isDark_ == isDark) return;
  isDark_ = isDark;
  // A copy, since an observer may add another.
  for (const auto& changed : std::vector(observers_)) changed();
}

void QtDesktopTheme::askPortal() {
  if (!bus_.isConnected()) {
    askSettings();
    return;
  }
  // The bus library finds the slot by the names of its types, which must be known by then.
  qRegisterMetaType<QDBusVariant>("QDBusVariant");
  bus_.connect(QString(), portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
               SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
  QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath, portalInterface,
                                                         QStringLiteral("Read"));
  question << appearanceGroup << colorSchemeKey;
  const QDBusMessage reply = bus_.call(question, QDBus::Block, sources_.patienceMilliseconds);
  if (reply.type() == QDBusMessage::ErrorMessage && isTimeout(reply)) {
    askPortalAgain(question);
  } else {
    takePortalAnswer(reply);
  }
}

void QtDesktopTheme::askPortalAgain(const QDBusMessage& question) {
  auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    takePortalAnswer(watcher->reply());
    watcher->deleteLater();
  });
}

void QtDesktopTheme::takePortalAnswer(const QDBusMessage& reply) {
  std::optional<bool> answer;
  if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
    answer = isDarkScheme(reply.arguments().constFirst());
  if (answer) {
    setIsDark(*answer);
  } else {
    askSettings();
  }
}

void QtDesktopTheme::portalSettingChanged(const QString& group, const QString& key,
                                          const QDBusVariant& value) {
  if (group != appearanceGroup || key != colorSchemeKey) return;
  if (const auto answer = isDarkScheme(value.variant())) setIsDark(*answer);
}

void QtDesktopTheme::askSettings() {
  if (QStandardPaths::findExecutable(sources_.settingsProgram).isEmpty()) return;
  endWithParent(query_);
  connect(&query_, &QProcess::finished, this, &QtDesktopTheme::takeSettingsAnswer);
  query_.start(sources_.settingsProgram, {QStringLiteral("get"), settingsSchema, colorSchemeKey});
  // A late answer comes by the same way.
  query_.waitForFinished(sources_.patienceMilliseconds);
}

void QtDesktopTheme::takeSettingsAnswer() {
  if (query_.exitStatus() != QProcess::NormalExit || query_.exitCode() != 0) return;
  setIsDark(query_.readAllStandardOutput().contains("'prefer-dark'"));
  followSettings();
}

void QtDesktopTheme::followSettings() {
  endWithParent(monitor_);
  connect(&monitor_, &QProcess::readyReadStandardOutput, this, [this] {
    while (monitor_.canReadLine()) setIsDark(monitor_.readLine().contains("'prefer-dark'"));
  });
  monitor_.start(sources_.settingsProgram,
                 {QStringLiteral("monitor"), settingsSchema, colorSchemeKey});
}

}  // namespace korvantis

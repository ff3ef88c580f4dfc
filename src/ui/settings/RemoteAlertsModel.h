#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "state/MonitorStore.h"

namespace korvantis {

/// What the settings of the phone briefs say, and their test buttons. Each property notifies only
/// when it really changes. Main thread.
class RemoteAlertsModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QString previewText READ previewText NOTIFY previewTextChanged FINAL)
  Q_PROPERTY(QString cooldownText READ cooldownText NOTIFY cooldownTextChanged FINAL)
  Q_PROPERTY(int cooldownMinutes READ cooldownMinutes NOTIFY cooldownTextChanged FINAL)
  Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged FINAL)
  Q_PROPERTY(QString testIMessageText READ testIMessageText NOTIFY testTextsChanged FINAL)
  Q_PROPERTY(QString testWhatsAppText READ testWhatsAppText NOTIFY testTextsChanged FINAL)

 public:
  using QObject::QObject;

  MonitorStore* store() const { return store_; }
  /// The store that is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// The brief that would go out now.
  const QString& previewText() const { return previewText_; }
  /// Such as "Cooldown: 30 min".
  const QString& cooldownText() const { return cooldownText_; }
  /// The same as a number; a stored one that is out of the range of `int` is held to it.
  int cooldownMinutes() const;
  /// How the last brief fared; empty when there is nothing to tell, and while one is on its way.
  const QString& statusText() const { return statusText_; }
  /// The words on the test buttons: while a brief is on its way the one that was pressed says so,
  /// and both do when it was neither.
  QString testIMessageText() const;
  QString testWhatsAppText() const;

  /// Sends a brief of the last tick over one channel now.
  Q_INVOKABLE void testIMessage();
  Q_INVOKABLE void testWhatsApp();

 signals:
  void storeChanged();
  void previewTextChanged();
  void cooldownTextChanged();
  void statusTextChanged();
  void testTextsChanged();

 private:
  void takeSnapshot();
  void takeCooldown();
  void takeStatus();
  void takeSending();
  void test(bool iMessage, bool whatsApp);
  bool saysSending(bool isPressed) const;

  MonitorStore* store_ = nullptr;
  QString previewText_;
  QString cooldownText_;
  QString statusText_;
  /// Which tests were pressed since the last brief went out.
  bool isIMessagePressed_ = false;
  bool isWhatsAppPressed_ = false;
};

}  // namespace korvantis

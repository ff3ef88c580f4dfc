#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <limits>

#include "state/MonitorStore.h"
#include "ui/panes/AudioStreamListModel.h"
#include "ui/views/Choice.h"

namespace korvantis {

/// What the sound pane says: the devices to choose from, the master volume and the applications
/// of the mixer. Each property notifies only when it really changes. Main thread.
class SoundPaneModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      korvantis::MonitorStore* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
  Q_PROPERTY(QList<korvantis::Choice> outputs READ outputs NOTIFY outputsChanged FINAL)
  Q_PROPERTY(int outputIndex READ outputIndex NOTIFY outputIndexChanged FINAL)
  Q_PROPERTY(QList<korvantis::Choice> inputs READ inputs NOTIFY inputsChanged FINAL)
  Q_PROPERTY(int inputIndex READ inputIndex NOTIFY inputIndexChanged FINAL)
  Q_PROPERTY(QString masterText READ masterText NOTIFY masterTextChanged FINAL)
  Q_PROPERTY(QAbstractItemModel* streams READ streams CONSTANT FINAL)
  Q_PROPERTY(int streamCount READ streamCount NOTIFY streamCountChanged FINAL)
  Q_PROPERTY(int firstStream READ firstStream WRITE setFirstStream NOTIFY streamRangeChanged FINAL)
  Q_PROPERTY(int lastStream READ lastStream WRITE setLastStream NOTIFY streamRangeChanged FINAL)
  Q_PROPERTY(QString keptStream READ keptStream WRITE setKeptStream NOTIFY keptStreamChanged FINAL)

 public:
  explicit SoundPaneModel(QObject* parent = nullptr);

  MonitorStore* store() const { return store_; }
  /// The store whose mixer is shown; it must outlive the model.
  void setStore(MonitorStore* store);

  /// The devices, each named by its id.
  const QList<Choice>& outputs() const { return outputs_; }
  const QList<Choice>& inputs() const { return inputs_; }
  /// The place of the selected device; -1 when it is not in the list.
  int outputIndex() const { return outputIndex_; }
  int inputIndex() const { return inputIndex_; }
  /// The master volume in whole percent, such as "75%".
  const QString& masterText() const { return masterText_; }
  /// The applications from place `firstStream` to `lastStream`, and `keptStream`: hundreds of them
  /// may play, and a view shows a few.
  AudioStreamListModel* streams() { return &streams_; }
  /// How many applications the mixer has.
  int streamCount() const { return streamCount_; }
  int firstStream() const { return firstStream_; }
  void setFirstStream(int place);
  int lastStream() const { return lastStream_; }
  void setLastStream(int place);
  /// The id of the application that stays wherever it stands, as its slider is held; may be empty.
  const QString& keptStream() const { return keptStream_; }
  void setKeptStream(const QString& appID);

 signals:
  void storeChanged();
  void outputsChanged();
  void outputIndexChanged();
  void inputsChanged();
  void inputIndexChanged();
  void masterTextChanged();
  void streamCountChanged();
  void streamRangeChanged();
  void keptStreamChanged();

 private:
  void updateOutputs();
  void updateInputs();
  void updateMaster();
  void updateStreams();

  MonitorStore* store_ = nullptr;
  QList<Choice> outputs_;
  int outputIndex_ = -1;
  QList<Choice> inputs_;
  int inputIndex_ = -1;
  QString masterText_;
  AudioStreamListModel streams_;
  int streamCount_ = 0;
  int firstStream_ = 0;
  int lastStream_ = std::numeric_limits<int>::max();
  QString keptStream_;
};

}  // namespace korvantis

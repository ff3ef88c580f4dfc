#pragma once

#include <vector>

#include "ui/panes/AudioStreamRow.h"
#include "ui/panes/RowListModel.h"

namespace korvantis {

/// The applications of the mixer, for a view. Main thread.
class AudioStreamListModel : public RowListModel<AudioStreamRow> {
 public:
  enum Role {
    AppID = Qt::UserRole + 1,
    AppName,
    BundlePath,
    StatusText,
    IsMuted,
    Volume,
    VolumeText,
    /// The whole row in one sentence, for those who can't see it.
    Description,
    /// The place among all applications of the mixer.
    Place,
  };

  using RowListModel::RowListModel;

  /// Shows these rows from now on. What shows a place goes on showing that place, whoever stands
  /// there, since ranks change with every tick and making rows anew is dear; what shows the
  /// application named `kept` goes with it.
  void show(std::vector<AudioStreamRow> wanted, const QString& kept);

  QHash<int, QByteArray> roleNames() const override;

 protected:
  QVariant valueOf(const AudioStreamRow& row, int role) const override;

 private:
  void giveSlots(std::vector<AudioStreamRow>& wanted, const QString& kept);

  int nextSlot_ = 0;
};

}  // namespace korvantis

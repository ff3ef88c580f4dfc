#pragma once

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
  };

  using RowListModel::RowListModel;

  QHash<int, QByteArray> roleNames() const override;

 protected:
  QVariant valueOf(const AudioStreamRow& row, int role) const override;
};

}  // namespace korvantis

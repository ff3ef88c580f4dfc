#include "ui/panes/AudioStreamListModel.h"

namespace korvantis {

QHash<int, QByteArray> AudioStreamListModel::roleNames() const {
  return {{AppID, "appID"},           {AppName, "appName"},        {BundlePath, "bundlePath"},
          {StatusText, "statusText"}, {IsMuted, "isMuted"},        {Volume, "volume"},
          {VolumeText, "volumeText"}, {Description, "description"}};
}

QVariant AudioStreamListModel::valueOf(const AudioStreamRow& row, int role) const {
  switch (role) {
    case AppID: return row.appID;
    case Qt::DisplayRole:
    case AppName: return row.appName;
    case BundlePath: return row.bundlePath;
    case StatusText: return row.statusText;
    case IsMuted: return row.isMuted;
    case Volume: return row.volume;
    case VolumeText: return row.volumeText;
    case Description:
      return QStringLiteral("%1, %2, %3").arg(row.appName, row.statusText, row.volumeText);
    default: return {};
  }
}

}  // namespace korvantis

#include "ui/panes/AudioStreamListModel.h"

#include <optional>
#include <unordered_map>
#include <utility>

namespace korvantis {

void AudioStreamListModel::show(std::vector<AudioStreamRow> wanted, const QString& kept) {
  giveSlots(wanted, kept);
  setRows(std::move(wanted));
}

void AudioStreamListModel::giveSlots(std::vector<AudioStreamRow>& wanted, const QString& kept) {
  std::unordered_map<int, int> slotAt;
  std::optional<int> keptSlot;
  for (const AudioStreamRow& row : rows()) {
    if (!keptSlot && row.appID == kept) {
      keptSlot = row.slot;
    } else {
      slotAt[row.place] = row.slot;
    }
  }
  for (AudioStreamRow& row : wanted) {
    if (keptSlot && row.appID == kept) {
      row.slot = *std::exchange(keptSlot, std::nullopt);
      continue;
    }
    const auto found = slotAt.find(row.place);
    row.slot = found == slotAt.end() ? nextSlot_++ : found->second;
  }
}

QHash<int, QByteArray> AudioStreamListModel::roleNames() const {
  return {{AppID, "appID"},           {AppName, "appName"},         {BundlePath, "bundlePath"},
          {StatusText, "statusText"}, {IsMuted, "isMuted"},         {Volume, "volume"},
          {VolumeText, "volumeText"}, {Description, "description"}, {Place, "place"}};
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
    case Place: return row.place;
    default: return {};
  }
}

}  // namespace korvantis

#pragma once

#include <QColor>

#include "state/HistoryMetricKind.h"
#include "ui/theme/OstrelTheme.h"

namespace korvantis {

/// The colour in which a metric is charted.
inline QColor color(HistoryMetricKind metric) {
  switch (metric) {
    case HistoryMetricKind::cpu: return OstrelTheme::cpu();
    case HistoryMetricKind::memory: return OstrelTheme::memory();
    case HistoryMetricKind::gpu: return OstrelTheme::gpu();
    case HistoryMetricKind::neuralEngine: return OstrelTheme::neural();
    case HistoryMetricKind::temperature: return OstrelTheme::heat();
    case HistoryMetricKind::fans: return OstrelTheme::network();
    case HistoryMetricKind::power: return OstrelTheme::disk();
  }
  return {};
}

}  // namespace korvantis

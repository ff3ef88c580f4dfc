#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "core/Insight.h"

namespace korvantis {

/// The findings, for a view. It follows a new list by identity and tells the view only what
/// changed. Main thread.
class InsightListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("InsightsPaneModel owns it")

 public:
  enum Role { IconName = Qt::UserRole + 1, Title, MetricText, Detail, Description };

  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Shows these findings from now on.
  void setInsights(std::vector<Insight> insights);

 private:
  std::vector<Insight> insights_;
};

}  // namespace korvantis

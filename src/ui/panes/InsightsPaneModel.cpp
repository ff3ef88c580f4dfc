#include "ui/panes/InsightsPaneModel.h"

#include "ui/views/ModelText.h"

namespace korvantis {

InsightsPaneModel::InsightsPaneModel(QObject* parent) : QObject(parent), insights_(this) {}

void InsightsPaneModel::setStore(MonitorStore* store) {
  if (store_ == store) return;
  if (store_) {
    store_->disconnect(this);
    store_->look()->disconnect(this);
  }
  store_ = store;
  emit storeChanged();
  if (!store_) return;
  connect(store_, &MonitorStore::snapshotChanged, this, &InsightsPaneModel::updateHeadline);
  connect(store_->look(), &LookStore::temperatureUnitChanged, this,
          &InsightsPaneModel::updateHeadline);
  connect(store_, &MonitorStore::insightsChanged, this, &InsightsPaneModel::updateInsights);
  updateHeadline();
  updateInsights();
}

void InsightsPaneModel::updateHeadline() {
  updateField(this, headline_, store_->whatsWrongHeadline(), &InsightsPaneModel::headlineChanged);
}

void InsightsPaneModel::updateInsights() {
  updateField(this, findingsTitle_,
              QStringLiteral("ACTIVE & RECENT INSIGHTS (%1)").arg(store_->insights().size()),
              &InsightsPaneModel::findingsTitleChanged);
  insights_.setInsights(store_->insights());
}

}  // namespace korvantis

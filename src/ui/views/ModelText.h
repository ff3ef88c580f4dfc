#pragma once

#include <QString>
#include <string_view>
#include <utility>

namespace korvantis {

/// A text of the lower floors as the screens take it.
inline QString textOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Stores `value` in `field` of `model` and emits `changed` when it is another one: bindings
/// follow real changes only, so an idle screen repaints nothing.
template <typename Model, typename Value>
void updateField(Model* model, Value& field, Value value, void (Model::*changed)()) {
  if (field == value) return;
  field = std::move(value);
  emit(model->*changed)();
}

}  // namespace korvantis

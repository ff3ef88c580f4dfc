#pragma once

#include <QString>
#include <optional>
#include <type_traits>
#include <utility>

#include "state/CaseNames.h"

namespace korvantis {

/// Stores `value` in `field`, also when it is equal; whether that was a real change.
template <typename Value>
bool storeField(Value& field, std::type_identity_t<Value> value) {
  const bool isChange = !(field == value);
  field = std::move(value);
  return isChange;
}

/// The name of a case as QML gets it.
template <Tabled Enumeration>
QString caseText(Enumeration value) {
  const auto name = caseName(value);
  return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

/// The case whose name QML gave; absent when there is none of that name.
template <Tabled Enumeration>
std::optional<Enumeration> caseOfText(const QString& name) {
  return fromCaseName<Enumeration>(name.toStdString());
}

}  // namespace korvantis

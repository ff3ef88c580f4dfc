#pragma once

#include "core/AgentSession.h"
#include "core/PlanLimitStatus.h"
#include "ui/panes/AgentRows.h"

/// The words of the agents pane. Main thread.
namespace korvantis::AgentWords {

PlanCard planCard(const PlanLimitStatus& limit);
AgentSessionRow sessionRow(const AgentSession& session);

/// Whether `part` stands in `text`, whatever the case of their letters as the user's language sees
/// it: in Turkish "I" is the capital of "ı", so "LIMIT" contains "lımıt" and not "limit".
bool containsIgnoringCase(const QString& text, const QString& part);

/// A count with its thousands grouped as the user's language does. An environment without a
/// language groups as in English, the language of all other words.
QString groupedCount(qint64 count);

}  // namespace korvantis::AgentWords

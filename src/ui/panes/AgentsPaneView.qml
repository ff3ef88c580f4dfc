pragma ComponentBehavior: Bound

import QtQuick
import Korvantis.Screens

// The coding agents on the machine: the limits of their plans, and those that run.
PaneView {
    id: pane

    AgentsPaneModel {
        id: agents

        store: pane.store
    }

    PaneScroller {
        anchors.fill: parent
        focus: true
        name: "Agents"

        SectionCaption {
            objectName: "plansTitle"
            width: Math.min(implicitWidth, parent.width)
            text: "AI SUBSCRIPTION PLAN LIMITS & QUOTA WINDOWS"
        }
        Grid {
            id: plans

            objectName: "plans"
            width: parent.width
            columns: 3
            columnSpacing: 12
            rowSpacing: 12

            Repeater {
                model: agents.plans

                PlanLimitCardView {
                    required property planCard modelData

                    width: (plans.width - 24) / 3
                    plan: modelData
                }
            }
        }
        Rectangle {
            objectName: "hairline"
            width: parent.width
            height: 1
            color: OstrelTheme.hairline
        }
        SectionCaption {
            objectName: "sessionsTitle"
            width: Math.min(implicitWidth, parent.width)
            text: agents.sessionsTitle
        }
        Column {
            id: sessions

            objectName: "sessions"
            width: parent.width
            spacing: 8
            Accessible.role: Accessible.List
            Accessible.name: "Live coding agent sessions"

            Repeater {
                model: agents.sessions

                AgentSessionRowView {
                    width: sessions.width
                }
            }
        }
    }
}

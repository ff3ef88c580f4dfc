#include "ui/settings/IntegrationsModel.h"

namespace korvantis {

QString IntegrationsModel::socketPathText() {
  return QStringLiteral("Socket Path: ~/Library/Application Support/Korvantis/bridge.sock");
}

QString IntegrationsModel::configurationText() {
  return QStringLiteral(R"({
  "mcpServers": {
    "ostrel": {
      "command": "ostrel",
      "args": ["mcp"]
    }
  }
})");
}

}  // namespace korvantis

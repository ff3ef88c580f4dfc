#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include "ui/settings/IntegrationsModel.h"

namespace korvantis {
namespace {

TEST(IntegrationsModel, TheConfigurationIsEightLines) {
  EXPECT_EQ(IntegrationsModel::configurationText().split(u'\n'),
            QStringList({"{", "  \"mcpServers\": {", "    \"ostrel\": {",
                         "      \"command\": \"ostrel\",", "      \"args\": [\"mcp\"]", "    }",
                         "  }", "}"}));
}

TEST(IntegrationsModel, TheConfigurationIsJSONForAClient) {
  const auto document = QJsonDocument::fromJson(IntegrationsModel::configurationText().toUtf8());
  const QJsonValue entry = document["mcpServers"]["ostrel"];
  EXPECT_EQ(entry["command"].toString(), QStringLiteral("ostrel"));
  EXPECT_EQ(entry["args"][0].toString(), QStringLiteral("mcp"));
}

TEST(IntegrationsModel, NamesTheSocket) {
  EXPECT_EQ(IntegrationsModel::socketPathText(),
            QStringLiteral("Socket Path: ~/Library/Application Support/Korvantis/bridge.sock"));
}

}  // namespace
}  // namespace korvantis

#include "ui/ScreenEngine.h"

#include <QQmlEngine>
#include <memory>

#include "ui/theme/SymbolImageProvider.h"
#include "ui/views/AppIconCache.h"
#include "ui/views/AppIconProvider.h"

namespace korvantis {

void prepareScreens(QQmlEngine& engine) {
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  // The engine takes them over.
  engine.addImageProvider(QStringLiteral("symbol"),
                          std::make_unique<SymbolImageProvider>().release());
  engine.addImageProvider(QStringLiteral("appicon"),
                          std::make_unique<AppIconProvider>(AppIconCache::shared()).release());
}

}  // namespace korvantis

#include "ui/ScreenEngine.h"

#include <QQmlEngine>
#include <memory>

#include "ui/theme/SymbolImageProvider.h"

namespace korvantis {

void prepareScreens(QQmlEngine& engine) {
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  // The engine takes it over.
  engine.addImageProvider(QStringLiteral("symbol"),
                          std::make_unique<SymbolImageProvider>().release());
}

}  // namespace korvantis

#include "ViewTypes.h"

#include <QQuickWindow>
#include <QtQml>

#include "ChartItem.h"
#include "FiguresItem.h"
#include "SymbolItem.h"
#include "SystemAppearance.h"
#include "TypeScale.h"

namespace quorvex {

void registerViewTypes(QQmlEngine& engine) {
  static constexpr const char* module = "Quorvex.Items";
  static const bool isRegistered = [] {
    // Drawn by the processor: these windows are calm, and a graphics processor that wakes for them
    // would show in their own figures.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    qmlRegisterType<ChartItem>(module, 1, 0, "ChartItem");
    qmlRegisterType<FiguresItem>(module, 1, 0, "FiguresItem");
    qmlRegisterType<SymbolItem>(module, 1, 0, "SymbolItem");
    qmlRegisterSingletonType<SystemAppearance>(
        module, 1, 0, "SystemAppearance",
        [](QQmlEngine* owner, QJSEngine*) { return new SystemAppearance(owner); });
    qmlRegisterSingletonType<TypeScale>(
        module, 1, 0, "TypeScale",
        [](QQmlEngine* owner, QJSEngine*) { return new TypeScale(owner); });
    return true;
  }();
  static_cast<void>(isRegistered);
  engine.addImportPath(QStringLiteral("qrc:/qml"));
}

}  // namespace quorvex

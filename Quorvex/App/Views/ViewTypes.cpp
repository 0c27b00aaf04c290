#include "ViewTypes.h"

#include <QtQml>

#include "ChartItem.h"
#include "FiguresItem.h"
#include "SymbolItem.h"
#include "SystemAppearance.h"

namespace quorvex {

void registerViewTypes(QQmlEngine& engine) {
  static constexpr const char* module = "Quorvex.Items";
  static const bool isRegistered = [] {
    qmlRegisterType<ChartItem>(module, 1, 0, "ChartItem");
    qmlRegisterType<FiguresItem>(module, 1, 0, "FiguresItem");
    qmlRegisterType<SymbolItem>(module, 1, 0, "SymbolItem");
    qmlRegisterSingletonType<SystemAppearance>(
        module, 1, 0, "SystemAppearance",
        [](QQmlEngine* owner, QJSEngine*) { return new SystemAppearance(owner); });
    return true;
  }();
  static_cast<void>(isRegistered);
  engine.addImportPath(QStringLiteral("qrc:/qml"));
}

}  // namespace quorvex

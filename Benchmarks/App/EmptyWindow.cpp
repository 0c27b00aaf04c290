#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QUrl>

/// Opens an empty window of the size of the dropdown, in a module as the app's windows are. Its
/// engine lives as long as the process.
extern "C" __attribute__((visibility("default"))) QObject* openEmptyWindow() {
  auto* engine = new QQmlEngine;
  QQmlComponent component(engine);
  component.setData(
      "import QtQuick\nWindow { width: 350; height: 500; visible: true; Text { text: \"0\" } }",
      QUrl{});
  return component.create();
}

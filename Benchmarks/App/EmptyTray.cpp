#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

// The least program with an icon in the tray: what the app's memory and CPU at rest stand beside.

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  QPixmap picture(22, 22);
  picture.fill(Qt::black);
  QSystemTrayIcon icon{QIcon{picture}};
  icon.show();
  return QApplication::exec();
}

#include "Application.h"

#include <QApplication>
#include <cstdlib>

#include "AppRuntime.h"
#include "AppVersion.h"
#include "MachineSelection.h"
#include "Output.h"
#include "QuorvexApp.h"
#include "Shell.h"

namespace quorvex {

namespace {

bool isSet(const char* variable) {
  return !qEnvironmentVariableIsEmpty(variable);
}

/// Whether there is something to show windows on. The toolkit itself would end the process.
bool prepareDisplay() {
#ifdef __APPLE__
  return true;
#else
  if (isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM")) {
    return true;
  }
  StandardOutput output;
  if (!isRecordedMachineSelected()) {
    output.printError("There is no display to show the app on. Try: quorvex status");
    return false;
  }
  output.printError("There is no display; the windows are drawn off screen.");
  return qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
}

}  // namespace

int runApplication(int argumentCount, char** arguments, Machine& machine) {
  if (!prepareDisplay()) {
    return EXIT_FAILURE;
  }
  QCoreApplication::setApplicationName(QStringLiteral("Quorvex"));
  QCoreApplication::setApplicationVersion(QString::fromLatin1(AppVersion::shortText));
  QApplication application(argumentCount, arguments);
  AppRuntime runtime(machine.clock());
  QuorvexApp app(machine, runtime.context());
  Shell shell(app);
  shell.show();
  return QApplication::exec();
}

}  // namespace quorvex

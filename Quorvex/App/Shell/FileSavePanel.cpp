#include "FileSavePanel.h"

#include <QFileDialog>
#include <QPointer>
#include <memory>
#include <utility>

namespace quorvex {

SavePanel fileSavePanel() {
  return [open = std::make_shared<QPointer<QFileDialog>>()](
             const SaveRequest& request, std::function<void(const QString&)> chosen) {
    if (*open != nullptr) {
      (*open)->raise();
      (*open)->activateWindow();
      return;
    }
    auto* panel = new QFileDialog(nullptr, request.title);
    *open = panel;
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setFileMode(QFileDialog::AnyFile);
    panel->setNameFilter(
        QStringLiteral("%1 (*.%2)").arg(request.fileTypeName, request.fileExtension));
    panel->setDefaultSuffix(request.fileExtension);
    panel->selectFile(request.proposedName);
    QObject::connect(panel, &QFileDialog::fileSelected, panel, std::move(chosen));
    panel->open();
  };
}

}  // namespace quorvex

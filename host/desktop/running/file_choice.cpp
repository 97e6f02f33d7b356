#include "host/desktop/running/file_choice.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

namespace qorhost {

namespace {

/// One for the program, as a person works in one folder.
QString& Folder() {
  static QString folder;
  return folder;
}

QString Noted(const QString& file) {
  if (!file.isEmpty()) {
    Folder() = QFileInfo(file).absolutePath();
  }
  return file;
}

QString StoresAndAll() {
  return QCoreApplication::translate("FileChoice", "Stores (*.db);;All files (*)");
}

}  // namespace

QString AskForFile(QWidget* parent, const QString& title, const QString& filter) {
  return Noted(QFileDialog::getOpenFileName(parent, title, FolderOfFiles(), filter));
}

QString AskWhereTo(QWidget* parent, const QString& title, const QString& name,
                   const QString& filter, Existing existing) {
  const QString folder = FolderOfFiles();
  QFileDialog dialog(parent, title, folder, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, existing == Existing::kIsTaken);
  dialog.setDefaultSuffix(QFileInfo(name).suffix());
  dialog.selectFile(name);
  return dialog.exec() == QDialog::Accepted ? Noted(dialog.selectedFiles().value(0)) : QString();
}

QString AskForStore(QWidget* parent, const QString& title) {
  return AskForFile(parent, title, StoresAndAll());
}

QString AskForNewStore(QWidget* parent, const QString& title) {
  return AskWhereTo(parent, title, QStringLiteral("building.db"), StoresAndAll(),
                    Existing::kIsTaken);
}

QString FolderOfFiles() {
  return QFileInfo(Folder()).isDir() ? Folder() : QString();
}

void SetFolderOfFiles(const QString& folder) {
  Folder() = folder;
}

}  // namespace qorhost

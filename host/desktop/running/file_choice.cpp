#include "host/desktop/running/file_choice.h"

#include <QCoreApplication>
#include <QDir>
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

}  // namespace

QString AskForFile(QWidget* parent, const QString& title, const QString& filter) {
  return Noted(QFileDialog::getOpenFileName(parent, title, FolderOfFiles(), filter));
}

QString AskWhereTo(QWidget* parent, const QString& title, const QString& name,
                   const QString& filter, Existing existing) {
  const QString folder = FolderOfFiles();
  const QFileDialog::Options options =
      existing == Existing::kIsTaken ? QFileDialog::DontConfirmOverwrite : QFileDialog::Options();
  return Noted(QFileDialog::getSaveFileName(parent, title,
                                            folder.isEmpty() ? name : QDir(folder).filePath(name),
                                            filter, nullptr, options));
}

QString AskForNewStore(QWidget* parent, const QString& title) {
  return AskWhereTo(parent, title, QStringLiteral("building.db"),
                    QCoreApplication::translate("FileChoice", "Stores (*.db);;All files (*)"),
                    Existing::kIsTaken);
}

QString FolderOfFiles() {
  return QFileInfo(Folder()).isDir() ? Folder() : QString();
}

void SetFolderOfFiles(const QString& folder) {
  Folder() = folder;
}

}  // namespace qorhost

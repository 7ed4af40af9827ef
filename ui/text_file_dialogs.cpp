#include "ui/text_file_dialogs.h"

#include <QFileDialog>

#include "ui/text.h"

namespace touch {

namespace {

std::optional<std::filesystem::path> chosen(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.selectedFiles().value(0).toStdU16String();
}

}  // namespace

std::optional<std::filesystem::path> askTextFileToSave(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& proposed,
                                                       const QString& filter) {
  QFileDialog dialog(parent, title, shownText(proposed.parent_path().string()), filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("txt");
  dialog.selectFile(shownText(proposed.filename().string()));
  return chosen(dialog);
}

std::optional<std::filesystem::path> askTextFileToOpen(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& folder,
                                                       const QString& filter) {
  QFileDialog dialog(parent, title, shownText(folder.string()), filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return chosen(dialog);
}

}  // namespace touch

#include "ui/text_file_dialogs.h"

#include <QFileDialog>

#include "ui/text.h"

namespace touch {

namespace {

std::optional<std::filesystem::path> chosen(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return pathOf(dialog.selectedFiles().value(0));
}

}  // namespace

std::optional<std::filesystem::path> askFileToSave(QWidget* parent, const QString& title,
                                                   const std::filesystem::path& proposed,
                                                   const QString& filter, const QString& suffix) {
  QFileDialog dialog(parent, title, shownText(proposed.parent_path().string()), filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  // The dialog itself completes the name, so that it asks before it replaces the file that is
  // meant.
  dialog.setDefaultSuffix(suffix);
  dialog.selectFile(shownText(proposed.filename().string()));
  return chosen(dialog);
}

std::optional<std::filesystem::path> askFileToOpen(QWidget* parent, const QString& title,
                                                   const std::filesystem::path& folder,
                                                   const QString& filter) {
  QFileDialog dialog(parent, title, shownText(folder.string()), filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return chosen(dialog);
}

std::optional<std::filesystem::path> askFolder(QWidget* parent, const QString& title,
                                               const std::filesystem::path& folder) {
  QFileDialog dialog(parent, title, shownText(folder.string()));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return chosen(dialog);
}

std::optional<std::filesystem::path> askTextFileToSave(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& proposed,
                                                       const QString& filter) {
  return askFileToSave(parent, title, proposed, filter, "txt");
}

std::optional<std::filesystem::path> askTextFileToOpen(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& folder,
                                                       const QString& filter) {
  return askFileToOpen(parent, title, folder, filter);
}

}  // namespace touch

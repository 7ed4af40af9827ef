#pragma once

#include <QString>
#include <filesystem>
#include <optional>

class QWidget;

namespace touch {

/// The text file to save to, with `proposed` as the first choice, or nothing when the user cancelled. A name without an
/// ending gets ".txt" in the dialog itself, so that it asks before it replaces the file that is meant.
std::optional<std::filesystem::path> askTextFileToSave(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& proposed,
                                                       const QString& filter);
/// The text file to read, or nothing when the user cancelled.
std::optional<std::filesystem::path> askTextFileToOpen(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& folder,
                                                       const QString& filter);

}  // namespace touch

#pragma once

#include <QString>
#include <filesystem>
#include <optional>

class QWidget;

namespace touch {

/// Asks under which name a file is to be saved; `proposed` is offered, in its folder, and a name
/// without a suffix gets `suffix`. Asks before it replaces a file. Nothing when the user gave up.
std::optional<std::filesystem::path> askFileToSave(QWidget* parent, const QString& title,
                                                   const std::filesystem::path& proposed,
                                                   const QString& filter, const QString& suffix);
/// Asks which file of `folder`, or of another one, is to be read.
std::optional<std::filesystem::path> askFileToOpen(QWidget* parent, const QString& title,
                                                   const std::filesystem::path& folder,
                                                   const QString& filter);

/// Asks for a folder; `folder` is where the asking begins.
std::optional<std::filesystem::path> askFolder(QWidget* parent, const QString& title,
                                               const std::filesystem::path& folder);

/// The same for text files.
std::optional<std::filesystem::path> askTextFileToSave(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& proposed,
                                                       const QString& filter);
std::optional<std::filesystem::path> askTextFileToOpen(QWidget* parent, const QString& title,
                                                       const std::filesystem::path& folder,
                                                       const QString& filter);

}  // namespace touch

#pragma once

#include <QWidget>

#include "console/main/main_console.h"

class QLabel;

namespace touch {

/// The main window's first row: the user's picture, whether controllers are simulated, the version.
class frmHeader final : public QWidget {
  Q_OBJECT

 public:
  explicit frmHeader(bool simulated);

  /// Show the picture here, the icon as the window's.
  Pictures pictures();

 private:
  Result<void, std::string> showPicture(const std::filesystem::path& file);
  Result<void, std::string> showIcon(const std::filesystem::path& file);

  QLabel* picture_;
};

}  // namespace touch

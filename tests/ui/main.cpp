#include <QLocale>

#include "tests/doubles/test.h"
#include "ui/guarded_application.h"
#include "ui/style/colours.h"
#include "ui/style/face_style.h"
#include "ui/window_manners.h"

int main(int argc, char** argv) {
  // Real windows and real events, drawn where no screen is needed.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QLocale::setDefault(QLocale::c());  // whatever the machine writes numbers with
  testing::InitGoogleTest(&argc, argv);
  const touch::GuardedApplication app(argc, argv);
  QApplication::setStyle(new touch::FaceStyle);
  touch::applyTheme(false);
  const touch::WindowManners manners;
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}

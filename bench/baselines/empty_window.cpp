#include <QApplication>
#include <QWidget>

// The least that a program with a window can be; the window is as large as that of touchutility.
int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  QWidget window;
  window.resize(760, 640);
  window.show();
  return QApplication::exec();
}

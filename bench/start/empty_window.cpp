// The least that a program with a window can do: the floor of the desktop program's start.
#include <QApplication>

#include "bench/start/painted.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.resize(1040, 800);  // as large as the desktop program's
  new qorbench::EndWhenPainted(window);
  window.show();
  return QApplication::exec();
}

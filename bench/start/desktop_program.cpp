// The desktop program, which ends once its window has been painted.
#include "bench/start/painted.h"
#include "host/desktop/shell/program.h"

int main(int argc, char** argv) {
  return qorhost::RunProgram(
      argc, argv, [](qorhost::MainWindow& window) { new qorbench::EndWhenPainted(window); });
}

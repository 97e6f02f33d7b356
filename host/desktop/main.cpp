#include "host/desktop/shell/program.h"

int main(int argc, char** argv) {
  return qorhost::RunProgram(argc, argv);
}

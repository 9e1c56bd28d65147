#include "zovkpopup/CommandLine.h"

int main(int argc, char** argv) {
  return zovk::tool::runCommandLine(argc, argv);
}

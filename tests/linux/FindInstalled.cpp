// Says where it finds what is installed with the library.
#include <cstdio>

#include "platform/linux/system/Paths.h"

int main(int count, char** words) {
  if (count != 2) return 2;
  std::puts(zovk::findInstalled(words[1]).value_or("nothing").c_str());
  return 0;
}

// Where the search for inputs enters every fuzzer.
#include <cstdint>

#include "fuzz/Fuzz.h"
#include "logging/ZPLogger.h"

// Log lines go nowhere, but debug lines are made, so that making them is tried as well.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  zovk::LogEnvironment log;
  log.writeLine = [](std::string_view) {};
  log.infoFlag = [](std::string_view) { return true; };
  zovk::ZPLogger::setEnvironment(std::move(log));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zovk::fuzz({reinterpret_cast<const char*>(data), size});
  return 0;
}

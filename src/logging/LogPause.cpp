#include "logging/LogPause.h"

namespace zovk {
namespace {

thread_local int pauses = 0;

}  // namespace

LogPause::LogPause() {
  ++pauses;
}

LogPause::~LogPause() {
  --pauses;
}

bool LogPause::isOnForThisThread() {
  return pauses > 0;
}

}  // namespace zovk

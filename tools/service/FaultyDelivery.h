#pragma once

#include <optional>

#include <httplib.h>

#include "service/Answer.h"
#include "service/FaultBook.h"
#include "service/StopSignal.h"

namespace zovk::service {

/// Passes an answer to the HTTP library, unchanged or spoilt. Answers that take long end when the
/// service stops, so `stop` must outlive them. Does not handle kChanged, which is a different
/// answer.
void deliver(const httplib::Request& request, httplib::Response& response, Answer answer,
             const std::optional<Fault>& fault, StopSignal& stop);

}  // namespace zovk::service

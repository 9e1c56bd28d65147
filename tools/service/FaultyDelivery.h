#pragma once

#include <optional>

#include <httplib.h>

#include "service/Answer.h"
#include "service/FaultBook.h"
#include "service/StopSignal.h"

namespace zovk::service {

/// Hands an answer to the HTTP library, as it is or spoilt. Answers that take long end when the
/// service stops, so `stop` must outlive them. kChanged is not for here: it is another answer.
void deliver(const httplib::Request& request, httplib::Response& response, Answer answer,
             const std::optional<Fault>& fault, StopSignal& stop);

}  // namespace zovk::service

#pragma once

namespace zovk {

/// The host of the address by which the page's half of a bridge says that it has something.
inline constexpr const char* kQueueSignalHost = "__wvjb_queue_message__";

}  // namespace zovk

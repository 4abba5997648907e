// The count of messages in the calling thread's queue, for those who take messages past ThreadMessages.
#pragma once

namespace Platform {

void noteThreadMessageTaken() noexcept;

} // namespace Platform

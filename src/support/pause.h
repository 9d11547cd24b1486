// Pauses that give the processor away and last, whatever signal comes.
#pragma once

namespace platform {

void pause_ms(int milliseconds);  // none for 0 and less

}  // namespace platform

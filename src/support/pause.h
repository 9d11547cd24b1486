// Pauses that give the processor away.
#pragma once

namespace platform {

void pause_ms(int milliseconds);  // none for 0 and less

}  // namespace platform

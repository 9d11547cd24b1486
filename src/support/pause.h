// Pauses that give the processor away and last, whatever signal comes.
#pragma once

namespace platform {

void pause_ms(int milliseconds);  // by usleep(); none for 0 and less
void pause_seconds(int seconds);  // by sleep()

}  // namespace platform

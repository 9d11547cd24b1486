// Who answers the library's requests to the kernel.
#pragma once

namespace boardctl {

// From now on the drivers of the virtual board do, and pauses are noted instead of waited for.
void use_board_drivers();

}  // namespace boardctl

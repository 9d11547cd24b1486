/* Buttons and LEDs. */
#pragma once

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/* The run LED blinks under led_ctl's command on this board; starting and stopping it is 0. */
PLATFORM_API int stop_runled(void);

PLATFORM_END_DECLS

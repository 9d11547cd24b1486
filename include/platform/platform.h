/* Everything that the board platform library offers. */
#pragma once

#include "platform/flash.h"
#include "platform/frame.h"
#include "platform/gpio.h"
#include "platform/profile.h"
#include "platform/records.h"
#include "platform/switch.h"
#include "platform/wireless.h"
#include "platform/wlmap.h"
#include "platform/wps.h"

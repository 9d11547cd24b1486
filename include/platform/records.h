/* Every record that the host firmware and this library exchange. */
#pragma once

#include "platform/conf_records.h"
#include "platform/switch_records.h"
#include "platform/wireless_records.h"

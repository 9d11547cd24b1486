/*
 * Updates of the radios' driver profiles on disk. They follow every profile generation and may be
 * run on their own; the driver reads them when a radio is next brought up. A radio without a
 * profile path is passed over by the host's file functions. A text that holds a line feed ends
 * there as a value: the rest would be lines, with keys, of its own.
 */
#pragma once

#include "platform/export.h"

PLATFORM_BEGIN_DECLS

/*
 * Writes the WPS identity (WscManufacturer, WscModelName, WscDeviceName, WscModelNumber,
 * WscSerialNumber) into every radio's profile. The brand word and the character after it are
 * dropped from the model name; nothing remains of a name that is the brand word alone.
 */
PLATFORM_API void wsc_profile_update(void);

/*
 * Writes the vendor element (KDX_IE_AP) and the WPS identity and, when EasyMesh is enabled, the
 * settings that EasyMesh needs into the profiles.
 */
PLATFORM_API void mtk_profile_update_for_easymesh(void);

PLATFORM_END_DECLS

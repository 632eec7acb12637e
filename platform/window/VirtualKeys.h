// The framework's numbers for the toolkit's keys.
#pragma once

#include "platform/core/Types.h"

// The virtual key for a key number of the toolkit: letters, digits and the VK_ values; 0 for any other key.
UINT VirtualKeyOf(int toolkitKey);

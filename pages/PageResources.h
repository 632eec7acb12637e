// What the pages' dialogs are made from is registered under this handle while the library is loaded.
#pragma once

#include "platform/dialog/DialogResources.h"

HINSTANCE TavinModule();

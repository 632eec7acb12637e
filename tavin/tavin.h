// Everything that a host of the library includes.
#pragma once

#include "platform/core/CCriticalSection.h"
#include "platform/core/CPointEx.h"
#include "platform/core/CString.h"
#include "platform/core/MessageBox.h"
#include "platform/core/StringTable.h"
#include "platform/registry/CRegKey.h"
#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"
#include "platform/undo/KUndoManager.h"
#include "settings/ApplicationKey.h"
#include "settings/Configuration.h"
#include "settings/TavinProp.h"
#include "sources/IPointSource.h"
#include "sources/KPointSource.h"

// Everything that a host of the library includes.
#pragma once

#include "platform/core/CCriticalSection.h"
#include "platform/core/CPointEx.h"
#include "platform/core/CString.h"
#include "platform/core/MessageBox.h"
#include "platform/core/StringTable.h"
#include "platform/undo/KUndoManager.h"
#include "sources/IPointSource.h"
#include "sources/KPointSource.h"

// The framework's command numbers that the library, its views or the framework itself answer.
#pragma once

#include "platform/core/Types.h"

constexpr UINT ID_FILE_NEW = 57600;
constexpr UINT ID_FILE_OPEN = 57601;
constexpr UINT ID_FILE_CLOSE = 57602;
constexpr UINT ID_FILE_SAVE = 57603;
constexpr UINT ID_FILE_SAVE_AS = 57604;
constexpr UINT ID_FILE_PRINT = 57607;
constexpr UINT ID_FILE_PRINT_PREVIEW = 57609;
constexpr UINT ID_EDIT_UNDO = 57643;
constexpr UINT ID_EDIT_REDO = 57644;
constexpr UINT ID_WINDOW_CASCADE = 57650;
constexpr UINT ID_WINDOW_TILE_HORZ = 57651;
constexpr UINT ID_WINDOW_TILE_VERT = 57652;
constexpr UINT ID_APP_EXIT = 57665;
constexpr UINT ID_NEXT_PANE = 57680;
constexpr UINT ID_PREV_PANE = 57681;
constexpr UINT ID_VIEW_TOOLBAR = 59392;
constexpr UINT ID_VIEW_STATUS_BAR = 59393;

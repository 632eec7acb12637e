// The message box behind a seam: a windowed host installs a handler that shows it, a test or a batch run one
// that answers it. Without a handler the text goes to standard error and the answer is IDOK, so nothing ever
// waits.
#pragma once

#include <functional>

#include "platform/core/Types.h"

constexpr UINT MB_OK = 0x00;
constexpr UINT MB_YESNOCANCEL = 0x03;
constexpr UINT MB_YESNO = 0x04;
constexpr UINT MB_ICONSTOP = 0x10;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

using MessageBoxHandler = std::function<int(const char* text, UINT type)>;

// Installs `handler` (empty: none) and returns the one before it.
MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

// Shows `text` and returns the button chosen.
int AfxMessageBox(const char* text, UINT type = MB_OK);

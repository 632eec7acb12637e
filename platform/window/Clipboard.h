// What other programs paste.
#pragma once

#include "platform/core/CString.h"

class CBitmapEx;

// False without a windowed program, or for a picture that is empty.
bool CopyToClipboard(const CString& text);
bool CopyToClipboard(const CBitmapEx& picture);

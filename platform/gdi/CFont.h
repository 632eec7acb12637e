// What text is drawn with. A font without a handle draws in the default font.
#pragma once

#include <cstring>

#include "platform/gdi/CGdiObject.h"

class CFont : public CGdiObject {
  public:
    BOOL CreateFontIndirect(const LOGFONT* font) { return Attach(::CreateFontIndirect(font)); }
    // See LOGFONT.
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                    BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                    BYTE quality, BYTE pitchAndFamily, const char* face) {
        LOGFONT font{height,    width,   escapement,   orientation,   weight,  italic,         underline,
                     strikeOut, charSet, outPrecision, clipPrecision, quality, pitchAndFamily, {}};
        if (face) std::strncpy(font.lfFaceName, face, LF_FACESIZE - 1);
        return CreateFontIndirect(&font);
    }
    // Upright and of normal weight.
    BOOL CreateSimple(int height, const char* face = nullptr) {
        return CreateFont(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                          OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face);
    }
};

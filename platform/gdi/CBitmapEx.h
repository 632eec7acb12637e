// The off-screen picture. Whatever depth is asked for, it holds 32 bits per pixel (0xffRRGGBB, rows from the
// top, without padding): only there does drawing twice in XOR restore every pixel.
#pragma once

#include <memory>

#include "platform/core/Types.h"

class CDC;
struct Picture;

class CBitmapEx {
  public:
    // An empty picture, 0 by 0. The flag (4: device-independent), the depth and the number of colours are
    // what callers know; every picture is device-independent and deep enough.
    CBitmapEx(int flag, int bitsPerPixel, int colors);
    ~CBitmapEx();
    CBitmapEx(const CBitmapEx&) = delete;
    CBitmapEx& operator=(const CBitmapEx&) = delete;

    // Makes the picture cx by cy pixels, white. Non-zero when the size changed; zero and everything as before
    // when it is that size already, when a side is below 1, or when memory is short. A context that draws on
    // the picture draws on the new one from then on. The picture takes over the dots per inch of the context
    // given (may be null).
    int ReSize(CDC* reference, int cx, int cy);
    // Makes this a copy of the other picture, size included. Non-zero when done.
    int Copy(CDC* reference, CBitmapEx* other);

    // The first pixel of the top row; null when empty. Valid until the next change of size.
    void* GetBits();
    const void* GetBits() const;
    // Differs from an earlier answer when something was drawn in between.
    unsigned GetChanges() const;
    int GetWidth() const;
    int GetHeight() const;

    // 96 to begin with; a screen at scale 2 has 192. Only says how long a millimetre is, changes no pixel.
    int GetDotsPerInch() const;
    void SetDotsPerInch(int dotsPerInch);

    // Writes a PNG file. False when the picture is empty or the file cannot be written.
    bool SaveAsPng(const char* path) const;

  private:
    friend class CDC;
    std::shared_ptr<Picture> picture_;
};

// Helpers of the drawing tests: pictures and how they are compared.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CDC.h"

constexpr std::uint32_t kWhite = 0xffffffff;

inline std::unique_ptr<CBitmapEx> NewPicture(int width, int height) {
    auto picture = std::make_unique<CBitmapEx>(4, 16, 256);
    picture->ReSize(nullptr, width, height);
    return picture;
}

inline const std::uint32_t* Pixels(CBitmapEx& picture) {
    return static_cast<const std::uint32_t*>(picture.GetBits());
}

inline int DifferingPixels(CBitmapEx& a, CBitmapEx& b) {
    int differing = 0;
    for (int i = 0; i < a.GetWidth() * a.GetHeight(); ++i) differing += Pixels(a)[i] != Pixels(b)[i];
    return differing;
}

inline int PixelsUnlike(CBitmapEx& picture, std::uint32_t pixel) {
    int unlike = 0;
    for (int i = 0; i < picture.GetWidth() * picture.GetHeight(); ++i) unlike += Pixels(picture)[i] != pixel;
    return unlike;
}

// A free mapping.
struct MappedView {
    const char* name;
    CPoint windowOrg;
    CSize windowExt;
    CPoint viewportOrg;
    CSize viewportExt;
};

inline void UseView(CDC& dc, const MappedView& view) {
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowOrg(view.windowOrg.x, view.windowOrg.y);
    dc.SetWindowExt(view.windowExt.cx, view.windowExt.cy);
    dc.SetViewportOrg(view.viewportOrg.x, view.viewportOrg.y);
    dc.SetViewportExt(view.viewportExt.cx, view.viewportExt.cy);
}

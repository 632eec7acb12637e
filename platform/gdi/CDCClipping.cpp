// Where device contexts draw, and the transfer of pixels between them.
#include <cstring>

#include "platform/gdi/CDCState.h"

namespace {

CRect Intersection(const CRect& a, const CRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// Where pixels go and by how much their source lies aside.
struct Transfer {
    CRect target;
    std::int64_t dx, dy;  // source = target + d
};

// Only what both pictures have.
Transfer Clipped(const CRect& target, CPoint source, const CRect& visible, const Picture& from) {
    const std::int64_t dx = std::int64_t{source.x} - target.left, dy = std::int64_t{source.y} - target.top;
    const CRect present(SaturateToInt32(-dx), SaturateToInt32(-dy), SaturateToInt32(from.width - dx),
                        SaturateToInt32(from.height - dy));
    return {Intersection(Intersection(target, visible), present), dx, dy};
}

// Rows in the order in which none is overwritten before it is read, should both be the same picture.
void CopyPixels(const Canvas& canvas, const Picture& from, const Transfer& transfer) {
    const CRect& target = transfer.target;
    const auto bytes = static_cast<std::size_t>(target.Width()) * sizeof(std::uint32_t);
    const bool downwards = transfer.dy >= 0;
    for (LONG i = 0; i < target.Height(); ++i) {
        const std::int64_t y = downwards ? target.top + i : target.bottom - 1 - i;
        const std::uint32_t* source =
            from.pixels.data() + (y + transfer.dy) * from.width + target.left + transfer.dx;
        std::memmove(canvas.Row(y) + target.left, source, bytes);
    }
}

}  // namespace

std::optional<Canvas> CDC::State::Target() const {
    if (!picture || picture->pixels.empty()) return std::nullopt;
    const CRect whole(0, 0, picture->width, picture->height);
    const CRect visible = clip ? Intersection(*clip, whole) : whole;
    if (visible.IsRectEmpty()) return std::nullopt;
    ++picture->changes;
    return Canvas{picture->pixels.data(), picture->width, visible};
}

CRect CDC::State::ToDevice(const CRect& rect) const {
    const CPoint a = mapping.ToDevice({rect.left, rect.top}), b = mapping.ToDevice({rect.right, rect.bottom});
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

void CDC::IntersectClipRect(const CRect& rect) {
    const CRect added = state_->ToDevice(rect);
    state_->clip = Intersection(state_->clip.value_or(added), added);
}

int CDC::SelectClipRgn(const CRgn* region) {
    if (!region) {
        state_->clip.reset();
        return SIMPLEREGION;
    }
    const GdiRecord* record = region->GetSafeHandle();
    if (!record || record->kind != GdiKind::Region) return 0;
    state_->clip = record->region;
    return record->region.IsRectEmpty() ? NULLREGION : SIMPLEREGION;
}

int CDC::GetClipBox(RECT* box) const {
    if (!box) return 0;
    const CSize size = state_->DeviceSize();
    const CRect whole(0, 0, size.cx, size.cy);
    const CRect visible = state_->clip ? Intersection(*state_->clip, whole) : whole;
    if (visible.IsRectEmpty()) {
        *box = CRect();
        return NULLREGION;
    }
    const CPoint corner = state_->mapping.ToLogical({visible.left, visible.top});
    const CPoint opposite = state_->mapping.ToLogical({visible.right, visible.bottom});
    *box = CRect(corner.x, corner.y, opposite.x, opposite.y);
    return SIMPLEREGION;
}

BOOL CDC::BitBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY,
                 DWORD operation) {
    if (!source || operation != SRCCOPY) return FALSE;
    const std::shared_ptr<Picture> from = source->state_->picture;
    if (!from || from->pixels.empty()) return FALSE;
    const CRect target = state_->ToDevice({x, y, AddSaturated(x, width), AddSaturated(y, height)});
    const CRect origin = source->state_->ToDevice(
        {sourceX, sourceY, AddSaturated(sourceX, width), AddSaturated(sourceY, height)});
    if (Paper* page = state_->Page()) {
        const CRect whole(0, 0, from->width, from->height);
        if (Intersection(origin, whole) == origin) page->Image(target, *from, origin);
        return Intersection(origin, whole) == origin;
    }
    const auto canvas = state_->Target();
    if (!canvas) return TRUE;
    const Transfer transfer = Clipped(target, {origin.left, origin.top}, canvas->clip, *from);
    if (!transfer.target.IsRectEmpty()) CopyPixels(*canvas, *from, transfer);
    return TRUE;
}

#include "platform/gdi/CBitmapEx.h"

#include <QImage>
#include <QString>
#include <exception>

#include "platform/gdi/CDC.h"
#include "platform/gdi/Picture.h"
#include "platform/gdi/WholeFile.h"

namespace {

constexpr std::uint32_t kWhite = 0xffffffff;

}  // namespace

CBitmapEx::CBitmapEx(int, int, int) : picture_(std::make_shared<Picture>()) {}

CBitmapEx::~CBitmapEx() = default;

int CBitmapEx::ReSize(CDC* reference, int cx, int cy) {
    if (reference) SetDotsPerInch(reference->GetDeviceCaps(LOGPIXELSX));
    if (cx < 1 || cy < 1) return 0;
    if (cx == picture_->width && cy == picture_->height) return 0;
    try {
        std::vector<std::uint32_t> pixels(std::size_t(cx) * std::size_t(cy), kWhite);
        picture_->pixels.swap(pixels);
    } catch (const std::exception&) {
        return 0;
    }
    picture_->width = cx;
    picture_->height = cy;
    return 1;
}

int CBitmapEx::Copy(CDC*, CBitmapEx* other) {
    if (!other) return 0;
    if (other == this) return 1;
    try {
        picture_->pixels = other->picture_->pixels;
    } catch (const std::exception&) {
        return 0;
    }
    picture_->dotsPerInch = other->picture_->dotsPerInch;
    picture_->width = other->picture_->width;
    picture_->height = other->picture_->height;
    return 1;
}

void* CBitmapEx::GetBits() { return picture_->pixels.empty() ? nullptr : picture_->pixels.data(); }

const void* CBitmapEx::GetBits() const {
    return picture_->pixels.empty() ? nullptr : picture_->pixels.data();
}

unsigned CBitmapEx::GetChanges() const { return picture_->changes; }

int CBitmapEx::GetWidth() const { return picture_->width; }

int CBitmapEx::GetHeight() const { return picture_->height; }

int CBitmapEx::GetDotsPerInch() const { return picture_->dotsPerInch; }

void CBitmapEx::SetDotsPerInch(int dotsPerInch) {
    if (dotsPerInch > 0) picture_->dotsPerInch = dotsPerInch;
}

bool CBitmapEx::SaveAsPng(const char* path) const {
    if (!path || picture_->pixels.empty()) return false;
    const auto* bytes = reinterpret_cast<const uchar*>(picture_->pixels.data());
    QImage image(bytes, picture_->width, picture_->height, qsizetype{4} * picture_->width,
                 QImage::Format_RGB32);
    constexpr double kInchesPerMetre = 1 / 0.0254;
    image.setDotsPerMeterX(RoundHalfAway(GetDotsPerInch() * kInchesPerMetre));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    WholeFile file(path);
    return file.IsOpen() && image.save(&file.Bytes(), "PNG") && file.Commit();
}

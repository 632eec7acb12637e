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

CBitmapEx::CBitmapEx(int, int, int) : m_picture(std::make_shared<Picture>()) {}

CBitmapEx::~CBitmapEx() = default;

int CBitmapEx::ReSize(CDC* reference, int cx, int cy) {
    if (reference) SetDotsPerInch(reference->GetDeviceCaps(LOGPIXELSX));
    if (cx < 1 || cy < 1) return 0;
    if (cx == m_picture->width && cy == m_picture->height) return 0;
    try {
        std::vector<std::uint32_t> pixels(std::size_t(cx) * std::size_t(cy), kWhite);
        m_picture->pixels.swap(pixels);
    } catch (const std::exception&) {
        return 0;
    }
    m_picture->width = cx;
    m_picture->height = cy;
    return 1;
}

int CBitmapEx::Copy(CDC*, CBitmapEx* other) {
    if (!other) return 0;
    if (other == this) return 1;
    try {
        m_picture->pixels = other->m_picture->pixels;
    } catch (const std::exception&) {
        return 0;
    }
    m_picture->dotsPerInch = other->m_picture->dotsPerInch;
    m_picture->width = other->m_picture->width;
    m_picture->height = other->m_picture->height;
    return 1;
}

void* CBitmapEx::GetBits() { return m_picture->pixels.empty() ? nullptr : m_picture->pixels.data(); }

const void* CBitmapEx::GetBits() const {
    return m_picture->pixels.empty() ? nullptr : m_picture->pixels.data();
}

unsigned CBitmapEx::GetChanges() const { return m_picture->changes; }

int CBitmapEx::GetWidth() const { return m_picture->width; }

int CBitmapEx::GetHeight() const { return m_picture->height; }

int CBitmapEx::GetDotsPerInch() const { return m_picture->dotsPerInch; }

void CBitmapEx::SetDotsPerInch(int dotsPerInch) {
    if (dotsPerInch > 0) m_picture->dotsPerInch = dotsPerInch;
}

bool CBitmapEx::SaveAsPng(const char* path) const {
    if (!path || m_picture->pixels.empty()) return false;
    const auto* bytes = reinterpret_cast<const uchar*>(m_picture->pixels.data());
    QImage image(bytes, m_picture->width, m_picture->height, qsizetype{4} * m_picture->width,
                 QImage::Format_RGB32);
    constexpr double kInchesPerMetre = 1 / 0.0254;
    image.setDotsPerMeterX(RoundHalfAway(GetDotsPerInch() * kInchesPerMetre));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    WholeFile file(path);
    return file.IsOpen() && image.save(&file.Bytes(), "PNG") && file.Commit();
}

#include "platform/window/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include "platform/gdi/CBitmapEx.h"

bool CopyToClipboard(const CString& text) {
    if (!qGuiApp) return false;
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text.GetString()));
    return true;
}

bool CopyToClipboard(const CBitmapEx& picture) {
    const auto* const pixels = static_cast<const uchar*>(picture.GetBits());
    if (!qGuiApp || !pixels) return false;
    const int width = picture.GetWidth();
    QImage image = QImage(pixels, width, picture.GetHeight(), qsizetype{4} * width, QImage::Format_RGB32)
                       .copy();  // the clipboard keeps it
    const int dotsPerMetre = qRound(picture.GetDotsPerInch() / 0.0254);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    QGuiApplication::clipboard()->setImage(image);
    return true;
}

#include "platform/window/Icons.h"

#include <QApplication>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QProxyStyle>
#include <map>
#include <sstream>
#include <string>

#include "platform/window/CommandResources.h"

namespace {

constexpr double kGrid = 16.0;
constexpr double kStroke = 1.4;

class PathIcon : public QIconEngine {
  public:
    explicit PathIcon(const std::string& path);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override { return new PathIcon(*this); }

  private:
    QPainterPath lines_;
    QPainterPath solid_;
};

PathIcon::PathIcon(const std::string& path) {
    std::istringstream steps(path);
    char step = 0;
    double x = 0;
    double y = 0;
    double radius = 0;
    while (steps >> step) {
        if (step == 'Z') {
            lines_.closeSubpath();
            continue;
        }
        if (!(steps >> x >> y)) return;
        if (step == 'M') lines_.moveTo(x, y);
        if (step == 'L') lines_.lineTo(x, y);
        if (step != 'O' && step != 'F') continue;
        if (!(steps >> radius)) return;
        (step == 'O' ? lines_ : solid_).addEllipse(QPointF(x, y), radius, radius);
    }
}

void PathIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor color = QApplication::palette().color(group, QPalette::ButtonText);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / kGrid, rect.height() / kGrid);
    painter->setPen(QPen(color, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(lines_);
    painter->fillPath(solid_, color);
    painter->restore();
}

QPixmap PathIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
}

class KeptTitleBarIcons : public QProxyStyle {
  public:
    using QProxyStyle::QProxyStyle;

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override {
        const bool ofTitleBar = which == SP_TitleBarMenuButton || which == SP_TitleBarMinButton ||
                                which == SP_TitleBarMaxButton || which == SP_TitleBarNormalButton ||
                                which == SP_TitleBarCloseButton;
        if (!ofTitleBar) return QProxyStyle::standardIcon(which, option, widget);
        QIcon& icon = icons_[which];
        if (icon.isNull()) icon = QProxyStyle::standardIcon(which, option, widget);
        return icon;
    }

  private:
    mutable std::map<StandardPixmap, QIcon> icons_;
};

}  // namespace

void KeepTitleBarIcons() { QApplication::setStyle(new KeptTitleBarIcons(QApplication::style()->name())); }

QIcon IconOf(const char* name) {
    const char* path = FindIconResource(name);
    return path ? QIcon(new PathIcon(path)) : QIcon();
}

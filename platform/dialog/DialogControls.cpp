#include "platform/dialog/DialogControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "platform/dialog/CDialog.h"
#include "platform/dialog/CListBox.h"
#include "platform/dialog/DialogResources.h"
#include "platform/dialog/DialogWidget.h"
#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CDC.h"
#include "platform/gdi/Selected.h"
#include "platform/window/Controls.h"
#include "platform/window/NativeWindow.h"
#include "platform/window/SystemColors.h"

namespace {

constexpr char kPicture[] = "picture";

QColor ColorOf(COLORREF color) { return {GetRValue(color), GetGValue(color), GetBValue(color)}; }

COLORREF ColorRefOf(const QColor& color) { return RGB(color.red(), color.green(), color.blue()); }

// Pixels for a part of a widget, which `draw` fills through a context.
template <class Draw>
void PaintPicture(QPainter& painter, const QWidget& widget, const QRect& where, Draw draw) {
    const double scale = widget.devicePixelRatioF();
    CBitmapEx bitmap(4, 32, 256);
    bitmap.SetDotsPerInch(RoundHalfAway(96 * scale));
    const CSize size(RoundHalfAway(where.width() * scale), RoundHalfAway(where.height() * scale));
    if (!bitmap.ReSize(nullptr, size.cx, size.cy)) return;
    {
        CDC dc(bitmap);
        dc.FillSolidRect(CRect(0, 0, size.cx, size.cy), GetSysColor(COLOR_WINDOW));
        NativeWindow::Guarded([&] { draw(dc, size); });
    }
    QImage image(static_cast<const uchar*>(bitmap.GetBits()), size.cx, size.cy, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    painter.drawImage(where.topLeft(), image);
}

// A text whose dialog may give it another ground.
class StaticText : public QLabel {
  public:
    using QLabel::QLabel;

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (ControlId(*this) != 0) PaintGround();
        QLabel::paintEvent(event);
    }

  private:
    void PaintGround() {
        NativeWindow* around = nullptr;
        for (QWidget* widget = parentWidget(); widget && !around; widget = widget->parentWidget())
            around = NativeWindow::Of(widget);
        auto* const dialog = around ? dynamic_cast<CDialog*>(around->Owner()) : nullptr;
        if (!dialog) return;
        const COLORREF usual = ColorRefOf(palette().color(QPalette::Window));
        CBitmapEx nothing(4, 32, 256);
        CDC dc(nothing);
        dc.SetBkMode(TRANSPARENT);
        dc.SetBkColor(usual);
        CWnd* const control = dialog->GetDlgItem(static_cast<int>(ControlId(*this)));
        around->Tell([&](CWnd*) { dialog->OnCtlColor(&dc, control, CTLCOLOR_STATIC); });
        // Setting a mode tells what it was.
        if (dc.SetBkMode(OPAQUE) == OPAQUE && dc.GetBkColor() != usual)
            QPainter(this).fillRect(contentsRect(), ColorOf(dc.GetBkColor()));
    }
};

class PictureLabel : public QFrame {
  public:
    explicit PictureLabel(QWidget* parent) : QFrame(parent) { setFrameShape(QFrame::StyledPanel); }

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (const DrawPicture draw = FindPictureResource(property(kPicture).toUInt())) {
            QPainter painter(this);
            PaintPicture(painter, *this, contentsRect(), draw);
        }
        QFrame::paintEvent(event);
    }
};

// Lets the object attached to a list draw its entries.
class OwnerDraw : public QStyledItemDelegate {
  public:
    explicit OwnerDraw(QListWidget& list) : QStyledItemDelegate(&list), m_list(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        NativeWindow* const native = NativeWindow::Of(&m_list);
        auto* const box = native ? dynamic_cast<CListBox*>(native->Owner()) : nullptr;
        if (!box) return QStyledItemDelegate::paint(painter, option, index);
        PaintPicture(*painter, m_list, option.rect, [&](CDC& dc, CSize size) {
            CFont font;
            font.CreateSimple(RoundHalfAway(option.fontMetrics.height() * m_list.devicePixelRatioF()),
                              option.font.family().toUtf8().constData());
            const Selected useFont(dc, font);
            dc.SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
            dc.SetBkColor(GetSysColor(COLOR_WINDOW));
            DRAWITEMSTRUCT item;
            item.CtlID = ControlId(m_list);
            item.itemID = static_cast<UINT>(index.row());
            item.hDC = &dc;
            item.rcItem = CRect(0, 0, size.cx, size.cy);
            item.itemData = box->GetItemData(index.row());
            if (option.state & QStyle::State_Selected) item.itemState |= ODS_SELECTED;
            if (option.state & QStyle::State_HasFocus) item.itemState |= ODS_FOCUS;
            item.itemAction = ODA_DRAWENTIRE;
            native->Tell([&](CWnd*) { box->DrawItem(&item); });
            item.itemAction = ODA_FOCUS;
            if (item.itemState & ODS_FOCUS) native->Tell([&](CWnd*) { box->DrawItem(&item); });
        });
    }

  private:
    QListWidget& m_list;
};

QWidget* NewText(const ControlResource& row, const QString& text, QWidget* parent) {
    auto* const label = new StaticText(text, parent);
    label->setWordWrap(row.cy > kOneLine);
    if (row.kind == ControlKind::Swatch) label->setFrameShape(QFrame::Box);
    return label;
}

QWidget* NewPushButton(const ControlResource& row, const QString& text, QWidget* parent) {
    auto* const button = new QPushButton(text, parent);
    // Enter presses the button that has the keyboard.
    button->setAutoDefault(true);
    button->setDefault(row.kind == ControlKind::DefaultButton);
    return button;
}

QWidget* NewEdit(const ControlResource& row, const QString& text, QWidget* parent) {
    auto* const edit = new QLineEdit(text, parent);
    if (row.flags & kReadOnly) {
        edit->setReadOnly(true);
        // Looks like the dialog, not like something to write in.
        QPalette palette = edit->palette();
        palette.setBrush(QPalette::Base, palette.window());
        edit->setPalette(palette);
    }
    return edit;
}

QWidget* NewList(const ControlResource& row, QWidget* parent) {
    auto* const list = new QListWidget(parent);
    if (row.flags & kMultipleSelection) list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    if (row.flags & kOwnerDrawn) list->setItemDelegate(new OwnerDraw(*list));
    list->setSortingEnabled((row.flags & kSorted) != 0);
    return list;
}

QWidget* NewColumns(const ControlResource& row, QWidget* parent) {
    auto* const list = new QTreeWidget(parent);
    list->setRootIsDecorated(false);
    if (row.flags & kMultipleSelection) list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    if (row.flags & kSorted) list->sortByColumn(0, Qt::AscendingOrder);
    list->setSortingEnabled((row.flags & kSorted) != 0);
    return list;
}

QWidget* NewDropList(const ControlResource& row, QWidget* parent) {
    auto* const combo = new QComboBox(parent);
    if (row.flags & kSorted) combo->setInsertPolicy(QComboBox::InsertAlphabetically);
    return combo;
}

}  // namespace

QWidget* NewControl(const ControlResource& row, QWidget* parent) {
    const QString text = QString::fromUtf8(row.text);
    switch (row.kind) {
        case ControlKind::Text:
        case ControlKind::Swatch:
            return NewText(row, text, parent);
        case ControlKind::Edit:
            return NewEdit(row, text, parent);
        case ControlKind::Check:
            return new QCheckBox(text, parent);
        case ControlKind::Radio:
            return new QRadioButton(text, parent);
        case ControlKind::Button:
        case ControlKind::DefaultButton:
            return NewPushButton(row, text, parent);
        case ControlKind::Group:
            return new QGroupBox(text, parent);
        case ControlKind::DropList:
            return NewDropList(row, parent);
        case ControlKind::List:
            return NewList(row, parent);
        case ControlKind::Columns:
            return NewColumns(row, parent);
        case ControlKind::Picture:
            return new PictureLabel(parent);
    }
    return nullptr;
}

void ShowPicture(QWidget& control, unsigned id) {
    // Pages choose the picture whenever they are painted.
    if (control.property(kPicture).toUInt() == id) return;
    control.setProperty(kPicture, id);
    control.update();
}

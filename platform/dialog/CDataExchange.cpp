#include "platform/dialog/CDataExchange.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <charconv>
#include <cmath>
#include <iterator>

#include "platform/core/MessageBox.h"
#include "platform/dialog/CComboBox.h"
#include "platform/window/CWnd.h"
#include "platform/window/Controls.h"

namespace {

// Null when the exchange has failed before or there is no such control.
template <class Widget>
Widget* ControlOf(CDataExchange& exchange, UINT id) {
    exchange.PrepareCtrl(id);
    const HWND dialog = exchange.m_pDlgWnd->GetSafeHwnd();
    return exchange.HasFailed() || !dialog ? nullptr : qobject_cast<Widget*>(FindControl(*dialog, id));
}

// Plain numbers: "1,500" is none rather than fifteen hundred.
QLocale Plain() {
    QLocale plain = QLocale::c();
    plain.setNumberOptions(QLocale::RejectGroupSeparator);
    return plain;
}

QString TextOf(int value) { return Plain().toString(value); }

// The shortest text that reads back as the number, without an exponent where people write none.
template <class Real>
QString ShortestOf(Real value) {
    const double size = std::abs(double(value));
    const bool isPlain = size == 0 || (size >= 1e-5 && size < 1e9);
    char text[64];
    const auto end = isPlain ? std::to_chars(text, std::end(text), value, std::chars_format::fixed)
                             : std::to_chars(text, std::end(text), value);
    return QString::fromLatin1(text, static_cast<int>(end.ptr - text));
}

QString TextOf(float value) { return ShortestOf(value); }

QString TextOf(double value) {
    const QString text = ShortestOf(value);
    // Numbers that come from the settings are of single precision: their digits behind that say nothing.
    constexpr int kTyped = 12;
    const auto single = static_cast<float>(value);
    return text.size() > kTyped && double(single) == value ? ShortestOf(single) : text;
}

// `read` makes a number of the text and says whether it is one.
template <class Number, class Read>
void ExchangeNumber(CDataExchange* exchange, UINT id, Number& value, Read read, const char* refusal) {
    auto* const edit = ControlOf<QLineEdit>(*exchange, id);
    if (!edit) return;
    if (!exchange->m_bSaveAndValidate) return edit->setText(TextOf(value));
    const QString text = edit->text().trimmed();
    bool valid = false;
    const Number number = read(text, valid);
    if (!valid || !std::isfinite(static_cast<double>(number))) return exchange->Refuse(refusal);
    if (text != TextOf(value)) value = number;
}

constexpr const char* kNoNumber = "Please enter a number.";

template <class Number>
void HoldWithin(CDataExchange* exchange, Number value, Number least, Number most, const char* kind) {
    if (!exchange->m_bSaveAndValidate || exchange->HasFailed() || (value >= least && value <= most)) return;
    const QLocale plain = QLocale::c();
    const QString why = QStringLiteral("Please enter %1 between %2 and %3.")
                            .arg(QLatin1String(kind), plain.toString(least), plain.toString(most));
    exchange->Refuse(why.toUtf8().constData());
}

}  // namespace

void CDataExchange::Refuse(const char* why) {
    m_failed = true;
    AfxMessageBox(why, MB_OK | MB_ICONEXCLAMATION);
    const HWND dialog = m_pDlgWnd->GetSafeHwnd();
    QWidget* const control = dialog ? FindControl(*dialog, m_control) : nullptr;
    if (!control) return;
    control->setFocus(Qt::OtherFocusReason);
    if (auto* const edit = qobject_cast<QLineEdit*>(control)) edit->selectAll();
}

void DDX_Control(CDataExchange* exchange, UINT id, CWnd& control) {
    exchange->PrepareCtrl(id);
    if (!control.GetSafeHwnd()) control.SubclassDlgItem(id, exchange->m_pDlgWnd);
}

void DDX_Text(CDataExchange* exchange, UINT id, CString& value) {
    if (auto* const edit = ControlOf<QLineEdit>(*exchange, id)) {
        if (exchange->m_bSaveAndValidate)
            value = CString(edit->text().toStdString());
        else
            edit->setText(QString::fromUtf8(value.GetString()));
    } else if (auto* const label = ControlOf<QLabel>(*exchange, id); label && !exchange->m_bSaveAndValidate) {
        label->setText(QString::fromUtf8(value.GetString()));
    }
}

void DDX_Text(CDataExchange* exchange, UINT id, int& value) {
    ExchangeNumber(
        exchange, id, value, [](const QString& text, bool& valid) { return Plain().toInt(text, &valid); },
        "Please enter an integer.");
}

void DDX_Text(CDataExchange* exchange, UINT id, float& value) {
    ExchangeNumber(
        exchange, id, value, [](const QString& text, bool& valid) { return Plain().toFloat(text, &valid); },
        kNoNumber);
}

void DDX_Text(CDataExchange* exchange, UINT id, double& value) {
    ExchangeNumber(
        exchange, id, value, [](const QString& text, bool& valid) { return Plain().toDouble(text, &valid); },
        kNoNumber);
}

void DDX_Check(CDataExchange* exchange, UINT id, int& value) {
    auto* const button = ControlOf<QAbstractButton>(*exchange, id);
    if (!button) return;
    exchange->m_bSaveAndValidate ? (void)(value = button->isChecked()) : button->setChecked(value != 0);
}

void DDX_Radio(CDataExchange* exchange, UINT first, int& value) {
    const auto* const button = ControlOf<QAbstractButton>(*exchange, first);
    QButtonGroup* const group = button ? button->group() : nullptr;
    if (!group) return;
    const auto buttons = group->buttons();
    if (exchange->m_bSaveAndValidate) {
        value = static_cast<int>(buttons.indexOf(group->checkedButton()));
        return;
    }
    // No button may be pressed only while the group is not exclusive.
    group->setExclusive(false);
    for (int i = 0; i < buttons.size(); ++i) buttons[i]->setChecked(i == value);
    group->setExclusive(true);
}

void DDX_CBIndex(CDataExchange* exchange, UINT id, int& value) {
    auto* const combo = ControlOf<QComboBox>(*exchange, id);
    if (!combo) return;
    exchange->m_bSaveAndValidate ? (void)(value = combo->currentIndex()) : combo->setCurrentIndex(value);
}

void DDX_CBItemData(CDataExchange* exchange, UINT id, int& value) {
    auto* const combo = ControlOf<QComboBox>(*exchange, id);
    if (!combo) return;
    if (!exchange->m_bSaveAndValidate)
        combo->setCurrentIndex(combo->findData(static_cast<qulonglong>(value)));
    else if (combo->currentIndex() >= 0)
        value = combo->currentData().toInt();
}

void DDV_MinMaxInt(CDataExchange* exchange, int value, int least, int most) {
    HoldWithin(exchange, value, least, most, "an integer");
}

void DDV_MinMaxDouble(CDataExchange* exchange, double value, double least, double most) {
    HoldWithin(exchange, value, least, most, "a number");
}

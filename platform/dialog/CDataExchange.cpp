#include "platform/dialog/CDataExchange.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <cmath>

#include "platform/core/MessageBox.h"
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

// `read` makes a number of the text and says whether it is one.
template <class Number, class Read>
void ExchangeNumber(CDataExchange* exchange, UINT id, Number& value, Read read, const char* refusal) {
    auto* const edit = ControlOf<QLineEdit>(*exchange, id);
    if (!edit) return;
    if (!exchange->m_bSaveAndValidate) return edit->setText(QLocale::c().toString(value));
    bool valid = false;
    const Number number = read(edit->text().trimmed(), valid);
    valid ? (void)(value = number) : exchange->Refuse(refusal);
}

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

void DDX_Text(CDataExchange* exchange, UINT id, CString& value) {
    auto* const edit = ControlOf<QLineEdit>(*exchange, id);
    if (!edit) return;
    if (exchange->m_bSaveAndValidate)
        value = CString(edit->text().toStdString());
    else
        edit->setText(QString::fromUtf8(value.GetString()));
}

void DDX_Text(CDataExchange* exchange, UINT id, int& value) {
    ExchangeNumber(
        exchange, id, value,
        [](const QString& text, bool& valid) { return QLocale::c().toInt(text, &valid); },
        "Please enter an integer.");
}

void DDX_Text(CDataExchange* exchange, UINT id, double& value) {
    ExchangeNumber(
        exchange, id, value,
        [](const QString& text, bool& valid) {
            const double number = QLocale::c().toDouble(text, &valid);
            valid = valid && std::isfinite(number);
            return number;
        },
        "Please enter a number.");
}

void DDX_Check(CDataExchange* exchange, UINT id, int& value) {
    auto* const button = ControlOf<QAbstractButton>(*exchange, id);
    if (!button) return;
    exchange->m_bSaveAndValidate ? (void)(value = button->isChecked()) : button->setChecked(value != 0);
}

void DDX_CBIndex(CDataExchange* exchange, UINT id, int& value) {
    auto* const combo = ControlOf<QComboBox>(*exchange, id);
    if (!combo) return;
    exchange->m_bSaveAndValidate ? (void)(value = combo->currentIndex()) : combo->setCurrentIndex(value);
}

void DDV_MinMaxInt(CDataExchange* exchange, int value, int least, int most) {
    HoldWithin(exchange, value, least, most, "an integer");
}

void DDV_MinMaxDouble(CDataExchange* exchange, double value, double least, double most) {
    HoldWithin(exchange, value, least, most, "a number");
}

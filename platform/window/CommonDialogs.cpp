#include "platform/window/CommonDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <utility>

#include "platform/window/CWnd.h"
#include "platform/window/Graveyard.h"

namespace {

FileDialogHandler& FileHandler() {
    static FileDialogHandler handler;
    return handler;
}

ColorDialogHandler& ColorHandler() {
    static ColorDialogHandler handler;
    return handler;
}

bool HasWindows() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

QWidget* Over(CWnd* parent) {
    return parent && parent->GetSafeHwnd() ? parent->GetSafeHwnd()->window() : QApplication::activeWindow();
}

// "CSV files|*.csv;*.txt|All files|*||" as the toolkit wants it.
QStringList NameFilters(const CString& filter) {
    const QStringList parts = QString::fromUtf8(filter.GetString()).split('|', Qt::SkipEmptyParts);
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2)
        filters << QStringLiteral("%1 (%2)").arg(parts[i], QString(parts[i + 1]).replace(';', ' '));
    return filters;
}

struct Button {
    QMessageBox::StandardButton toolkit;
    int id;
};

constexpr Button kButtons[] = {{QMessageBox::Ok, IDOK},
                               {QMessageBox::Cancel, IDCANCEL},
                               {QMessageBox::Yes, IDYES},
                               {QMessageBox::No, IDNO}};

QMessageBox::StandardButtons ButtonsOf(UINT type) {
    switch (type & 0x0F) {
        case MB_YESNO:
            return QMessageBox::Yes | QMessageBox::No;
        case MB_YESNOCANCEL:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        default:
            return QMessageBox::Ok;
    }
}

QMessageBox::Icon IconOf(UINT type) {
    switch (type & 0xF0) {
        case MB_ICONSTOP:
            return QMessageBox::Critical;
        case MB_ICONQUESTION:
            return QMessageBox::Question;
        case MB_ICONEXCLAMATION:
            return QMessageBox::Warning;
        default:
            return QMessageBox::NoIcon;
    }
}

}  // namespace

FileDialogHandler SetFileDialogHandler(FileDialogHandler handler) {
    return std::exchange(FileHandler(), std::move(handler));
}

ColorDialogHandler SetColorDialogHandler(ColorDialogHandler handler) {
    return std::exchange(ColorHandler(), std::move(handler));
}

CFileDialog::CFileDialog(Kind kind, LPCSTR defaultExtension, LPCSTR fileName, LPCSTR filter, CWnd* parent)
    : m_kind(kind), m_defaultExtension(defaultExtension), m_filter(filter), m_parent(parent) {
    if (fileName && *fileName) m_paths.emplace_back(fileName);
}

int CFileDialog::DoModal() {
    if (const std::optional<int> answer = AnswerInsteadOfUser(*this)) return *answer;
    if (FileHandler()) return FileHandler()(*this);
    return HasWindows() ? Ask() : IDCANCEL;
}

int CFileDialog::Ask() {
    const HandlingScope scope;
    QFileDialog dialog(Over(m_parent));
    dialog.setAcceptMode(m_kind == Kind::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(m_kind == Kind::Open          ? QFileDialog::ExistingFile
                       : m_kind == Kind::OpenSeveral ? QFileDialog::ExistingFiles
                                                     : QFileDialog::AnyFile);
    dialog.setNameFilters(NameFilters(m_filter));
    dialog.setDefaultSuffix(QString::fromUtf8(m_defaultExtension.GetString()));
    if (!m_paths.empty()) dialog.selectFile(QString::fromUtf8(m_paths.front().GetString()));
    if (dialog.exec() != QDialog::Accepted) return IDCANCEL;
    m_paths.clear();
    for (const QString& path : dialog.selectedFiles()) m_paths.emplace_back(path.toStdString());
    return m_paths.empty() ? IDCANCEL : IDOK;
}

int CColorDialog::DoModal() {
    if (const std::optional<int> answer = AnswerInsteadOfUser(*this)) return *answer;
    if (ColorHandler()) return ColorHandler()(*this);
    if (!HasWindows()) return IDCANCEL;
    const HandlingScope scope;
    QColorDialog dialog(QColor(GetRValue(m_color), GetGValue(m_color), GetBValue(m_color)), Over(m_parent));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted) return IDCANCEL;
    const QColor chosen = dialog.selectedColor();
    m_color = RGB(chosen.red(), chosen.green(), chosen.blue());
    return IDOK;
}

int ShowMessageBox(const char* text, UINT type) {
    const HandlingScope scope;
    QMessageBox box(IconOf(type), QApplication::applicationName(), QString::fromUtf8(text), ButtonsOf(type),
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    const int chosen = box.exec();
    for (const Button& button : kButtons)
        if (button.toolkit == chosen) return button.id;
    return IDCANCEL;
}

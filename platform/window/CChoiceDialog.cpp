#include "platform/window/CChoiceDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/window/CWnd.h"
#include "platform/window/Graveyard.h"

namespace {

ChoiceDialogHandler& Handler() {
    static ChoiceDialogHandler handler;
    return handler;
}

QString Text(const CString& text) { return QString::fromUtf8(text.GetString()); }

// What a screen reader says: the label without its marks.
QString SpokenName(const CString& label) {
    return Text(label).remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

class ChoiceWidget : public QDialog {
  public:
    ChoiceWidget(CChoiceDialog& dialog, const QString& title, QWidget* parent);

  private:
    void Build();
    // From the dialog's members to the widgets and back.
    void Show();
    void ShowPreview();
    void Read();
    void Changed() {
        Read();
        m_dialog.OnChange();
        Show();
    }

    CChoiceDialog& m_dialog;
    std::vector<QComboBox*> m_combos;
    QListWidget* m_items = nullptr;
    QTableWidget* m_preview = nullptr;
    QLabel* m_note = nullptr;
    QPushButton* m_ok = nullptr;
};

ChoiceWidget::ChoiceWidget(CChoiceDialog& dialog, const QString& title, QWidget* parent)
    : QDialog(parent), m_dialog(dialog) {
    setWindowTitle(title);
    Build();
    Show();
    resize(640, 560);
}

void ChoiceWidget::Build() {
    auto* const form = new QFormLayout;
    for (const auto& choice : m_dialog.choices) {
        auto* const combo = new QComboBox;
        combo->setAccessibleName(SpokenName(choice.label));
        form->addRow(Text(choice.label), combo);
        connect(combo, &QComboBox::activated, this, [this] { Changed(); });
        if (choice.takesText) {
            combo->setEditable(true);
            combo->setInsertPolicy(QComboBox::NoInsert);
            combo->setCompleter(nullptr);
            connect(combo->lineEdit(), &QLineEdit::editingFinished, this, [this] { Changed(); });
        }
        m_combos.push_back(combo);
    }
    m_items = new QListWidget;
    m_items->setAccessibleName(SpokenName(m_dialog.itemsLabel));
    m_items->setMaximumHeight(130);
    form->addRow(Text(m_dialog.itemsLabel), m_items);
    connect(m_items, &QListWidget::itemChanged, this, [this] { Changed(); });

    m_preview = new QTableWidget;
    m_preview->setAccessibleName(tr("Preview"));
    m_preview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_preview->verticalHeader()->hide();
    m_preview->setTabKeyNavigation(false);
    m_note = new QLabel;
    m_note->setWordWrap(true);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const all = new QVBoxLayout(this);
    all->addLayout(form);
    all->addWidget(m_preview, 1);
    all->addWidget(m_note);
    all->addWidget(buttons);
}

void ChoiceWidget::Show() {
    for (std::size_t i = 0; i < m_combos.size(); ++i) {
        const auto& choice = m_dialog.choices[i];
        const QSignalBlocker quiet(m_combos[i]);
        m_combos[i]->clear();
        for (const CString& option : choice.options) m_combos[i]->addItem(Text(option));
        m_combos[i]->setCurrentIndex(choice.chosen);
        if (choice.takesText && choice.chosen < 0) m_combos[i]->setEditText(Text(choice.typed));
    }
    const QSignalBlocker quiet(m_items);
    const int current = m_items->currentRow();
    m_items->clear();
    for (const auto& item : m_dialog.items) {
        auto* const row = new QListWidgetItem(Text(item.text), m_items);
        row->setFlags(item.enabled ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
                                   : Qt::NoItemFlags);
        row->setCheckState(item.ticked ? Qt::Checked : Qt::Unchecked);
    }
    m_items->setCurrentRow(current);
    ShowPreview();
    m_note->setText(Text(m_dialog.note));
    m_ok->setEnabled(m_dialog.acceptable);
}

void ChoiceWidget::ShowPreview() {
    m_preview->clear();
    const auto& rows = m_dialog.preview;
    std::size_t columns = 0;
    for (const auto& row : rows) columns = std::max(columns, row.size());
    m_preview->setColumnCount(static_cast<int>(columns));
    m_preview->setRowCount(std::max(0, static_cast<int>(rows.size()) - 1));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (std::size_t c = 0; c < rows[r].size(); ++c) {
            auto* const cell = new QTableWidgetItem(Text(rows[r][c]));
            if (r == 0)
                m_preview->setHorizontalHeaderItem(static_cast<int>(c), cell);
            else
                m_preview->setItem(static_cast<int>(r) - 1, static_cast<int>(c), cell);
        }
    }
    m_preview->resizeColumnsToContents();
}

void ChoiceWidget::Read() {
    for (std::size_t i = 0; i < m_combos.size(); ++i) {
        auto& choice = m_dialog.choices[i];
        const int listed = choice.takesText
                               ? m_combos[i]->findText(m_combos[i]->currentText(), Qt::MatchExactly)
                               : std::max(0, m_combos[i]->currentIndex());
        choice.chosen = listed >= 0 ? listed : CChoiceDialog::Choice::kTyped;
        choice.typed =
            listed >= 0 ? CString() : CString(m_combos[i]->currentText().trimmed().toUtf8().constData());
    }
    for (int i = 0; i < m_items->count() && i < static_cast<int>(m_dialog.items.size()); ++i)
        m_dialog.items[static_cast<std::size_t>(i)].ticked = m_items->item(i)->checkState() == Qt::Checked;
}

}  // namespace

CChoiceDialog::CChoiceDialog(LPCSTR title, CWnd* parent) : m_title(title), m_parent(parent) {}

int CChoiceDialog::DoModal() {
    OnChange();
    if (const std::optional<int> answer = AnswerInsteadOfUser(*this)) return *answer;
    return Handler() ? Handler()(*this) : Ask();
}

int CChoiceDialog::Ask() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return IDCANCEL;
    QWidget* const over = m_parent && m_parent->GetSafeHwnd() ? m_parent->GetSafeHwnd()->window()
                                                              : QApplication::activeWindow();
    const HandlingScope scope;
    ChoiceWidget widget(*this, QString::fromUtf8(m_title.GetString()), over);
    return widget.exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}

ChoiceDialogHandler SetChoiceDialogHandler(ChoiceDialogHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

// A dialog that asks how something is to be done: labelled choices, a list of items to tick, and a table that
// shows what comes of it. The program answers every change of the user's in OnChange.
//
// Behind a seam like the common dialogs: a test or a batch run installs a handler that answers.
#pragma once

#include <functional>
#include <vector>

#include "platform/core/CString.h"
#include "platform/core/MessageBox.h"
#include "platform/core/ModalSeam.h"
#include "platform/window/WindowTypes.h"

class CWnd;

class CChoiceDialog : public ModalQuestion {
  public:
    struct Choice {
        CString label;  // with '&' before the letter to press
        std::vector<CString> options;
        int chosen = 0;
        // Something else than the options may be typed: it then stands in `typed`, and kTyped is chosen.
        bool takesText = false;
        CString typed = {};
        static constexpr int kTyped = -1;
    };
    struct Item {
        CString text;
        bool ticked = false;
        bool enabled = true;
    };
    using Row = std::vector<CString>;

    explicit CChoiceDialog(LPCSTR title, CWnd* parent = nullptr);

    // IDOK when the user agreed; what was chosen stands in the members below.
    int DoModal();

    std::vector<Choice> choices;
    CString itemsLabel;
    std::vector<Item> items;
    std::vector<Row> preview;  // the first row is the heading
    CString note;              // one line below, why it cannot be done for example
    bool acceptable = true;    // whether the user may agree

    // The user changed a choice or an item: may change every member above but the labels and their number.
    // Called once before the dialog is shown, too.
    virtual void OnChange() {}

  private:
    int Ask();

    CString m_title;
    CWnd* m_parent;
};

// Answers by changing the dialog's members and returning IDOK, or returns IDCANCEL. The setter returns the
// handler before; an empty one asks the user again.
using ChoiceDialogHandler = std::function<int(CChoiceDialog&)>;
ChoiceDialogHandler SetChoiceDialogHandler(ChoiceDialogHandler handler);

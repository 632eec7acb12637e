// Printing a view: to a file without asking, and the dialogs of the print commands behind seams. A test or a
// batch run installs a handler that answers instead of the user; without a handler and without a windowed
// program the print commands do nothing and never wait.
#pragma once

#include <functional>

#include "platform/core/ModalSeam.h"
#include "platform/gdi/CPrintDC.h"
#include "platform/window/CPrintInfo.h"

class CView;
class CWnd;

// All pages of the view into a PDF file. False when the view refuses or the file cannot be written; a file of
// that name then stays as it was.
bool PrintToPdf(CView& view, const char* path, const PageSetup& setup = {});

// The page that print dialog and preview begin with: what was chosen last, there or by AskPrintPage; at first
// A4 upright. The title is not used.
const PageSetup& PrintPage();
void SetPrintPage(const PageSetup& page);

// What AskPrintPage asks for.
struct PrintPageQuestion : ModalQuestion {
    PageSetup page;
};
// Lets the user choose paper, its direction and margins. IDOK when he did.
int AskPrintPage(const CWnd& parent);

// What the print dialog asks for.
struct PrintRequest : ModalQuestion {
    CString title;
    UINT minPage = 1;
    UINT maxPage = 1;
    UINT fromPage = 0;  // 0: all
    UINT toPage = 0;
    CString pdfPath;  // print into this file
};

// The preview as a question: a handler that shows the pages calls this, any number of times.
struct PreviewQuestion : ModalQuestion {
    std::function<bool(CPrintDC&)> drawPages;
};

// Answers by setting the path and perhaps the pages and returning IDOK, or returns IDCANCEL.
using PrintDialogHandler = std::function<int(PrintRequest&)>;
// Is given the function that draws the previewed pages on a context, and may call it any number of times; it
// ends the document.
using PreviewHandler = std::function<void(const std::function<bool(CPrintDC&)>& drawPages)>;

// Both return the handler before; an empty one asks the user again.
PrintDialogHandler SetPrintDialogHandler(PrintDialogHandler handler);
PreviewHandler SetPreviewHandler(PreviewHandler handler);

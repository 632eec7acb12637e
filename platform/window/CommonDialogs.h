// The dialogs that choose a file or a colour, behind seams: a test or a batch run installs a handler that
// answers instead of the user. Without a handler and without a windowed program they answer IDCANCEL and
// never wait.
#pragma once

#include <functional>
#include <vector>

#include "platform/core/CString.h"
#include "platform/core/MessageBox.h"
#include "platform/core/ModalSeam.h"
#include "platform/window/WindowTypes.h"

class CWnd;

class CFileDialog : public ModalQuestion {
  public:
    enum class Kind { Open, OpenSeveral, Save };

    // The filter has pairs "description|patterns", patterns parted by semicolons, and ends with "||". A name
    // that the user types without an extension gets the default one (without its dot). Saving asks before a
    // file is overwritten.
    CFileDialog(Kind kind, LPCSTR defaultExtension = nullptr, LPCSTR fileName = nullptr,
                LPCSTR filter = nullptr, CWnd* parent = nullptr);

    // IDOK when the user chose.
    int DoModal();
    Kind GetKind() const { return m_kind; }
    // The path proposed, after DoModal the first one chosen.
    CString GetPathName() const { return m_paths.empty() ? CString() : m_paths.front(); }
    const std::vector<CString>& GetPathNames() const { return m_paths; }
    void SetPathNames(std::vector<CString> paths) { m_paths = std::move(paths); }

  private:
    int Ask();

    Kind m_kind;
    CString m_defaultExtension;
    CString m_filter;
    CWnd* m_parent;
    std::vector<CString> m_paths;
};

class CColorDialog : public ModalQuestion {
  public:
    explicit CColorDialog(COLORREF initial = 0, CWnd* parent = nullptr)
        : m_color(initial), m_parent(parent) {}

    int DoModal();
    // The initial colour, after DoModal the one chosen.
    COLORREF GetColor() const { return m_color; }
    void SetCurrentColor(COLORREF color) { m_color = color; }

  private:
    COLORREF m_color;
    CWnd* m_parent;
};

// A handler answers by setting the dialog's paths or colour and returning IDOK, or returns IDCANCEL. Both
// setters return the handler before; an empty one asks the user again.
using FileDialogHandler = std::function<int(CFileDialog&)>;
using ColorDialogHandler = std::function<int(CColorDialog&)>;
FileDialogHandler SetFileDialogHandler(FileDialogHandler handler);
ColorDialogHandler SetColorDialogHandler(ColorDialogHandler handler);

// Shows a message over the active window, with the buttons and the icon that `type` names, and returns the
// button chosen. A windowed program installs it as the handler of AfxMessageBox.
int ShowMessageBox(const char* text, UINT type);

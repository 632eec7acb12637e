// A line of text with buttons above the view of a frame: what the user should know without being stopped.
#pragma once

#include <span>

#include "platform/window/CWnd.h"

// Its place in a frame.
constexpr UINT AFX_IDW_MESSAGE_BAR = 0xE81C;

class CMessageBar : public CWnd {
    DECLARE_DYNAMIC(CMessageBar)

  public:
    CMessageBar() = default;

    using CWnd::Create;
    // The buttons are these commands, which go the way of every command. Hidden to begin with.
    BOOL Create(CFrameWnd* frame, std::span<const UINT> commands);
    // Shows the bar with this text.
    void Tell(LPCSTR text);
    void Hide();
    // Empty while hidden.
    CString GetText() const;

  protected:
    NativeWindow* NewNative() override;
};

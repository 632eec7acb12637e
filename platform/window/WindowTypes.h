// The windows' elementary types and flag values, with the framework's names and numbers. Positions and sizes
// are physical pixels, whatever the screen's scale.
#pragma once

#include "platform/core/Geometry.h"
#include "platform/core/Types.h"

// The toolkit's window behind a CWnd: opaque to library and host, a widget to the framework's own sources and
// to tests that send it events.
class QWidget;
using HWND = QWidget*;
using HCURSOR = int;
using LPRECT = RECT*;
using LPCRECT = const RECT*;
using LPPOINT = POINT*;
using LPCSTR = const char*;

struct CCreateContext;

struct CREATESTRUCT {
    const char* lpszClass = nullptr;
    const char* lpszName = nullptr;
    DWORD style = 0;
    int x = 0;
    int y = 0;
    // Zero: the window chooses its size.
    int cx = 0;
    int cy = 0;
    CCreateContext* lpCreateParams = nullptr;
};

// Where a frame stands and how it is shown. A child frame's rectangle is relative to the frame's client area.
struct WINDOWPLACEMENT {
    UINT length = sizeof(UINT) * 3 + sizeof(POINT) * 2 + sizeof(RECT);
    UINT flags = 0;
    UINT showCmd = 0;
    POINT ptMinPosition = {-1, -1};
    POINT ptMaxPosition = {-1, -1};
    RECT rcNormalPosition = {0, 0, 0, 0};
};

struct SCROLLINFO {
    UINT cbSize = sizeof(UINT) * 3 + sizeof(int) * 4;
    UINT fMask = 0;
    int nMin = 0;
    int nMax = 0;
    UINT nPage = 0;
    int nPos = 0;
    // Where the user has dragged the thumb to; nPos follows when the window accepts it.
    int nTrackPos = 0;
};

// Window styles.
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_VSCROLL = 0x00200000;
constexpr DWORD WS_HSCROLL = 0x00100000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
constexpr DWORD WS_OVERLAPPEDWINDOW =
    WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
// A frame appends its document's title to its caption.
constexpr DWORD FWS_ADDTOTITLE = 0x00008000;

// Notifications: what the user did with a control. Numbers of different kinds of controls coincide.
constexpr UINT BN_CLICKED = 0;
constexpr UINT EN_SETFOCUS = 0x0100;
constexpr UINT EN_KILLFOCUS = 0x0200;
constexpr UINT EN_CHANGE = 0x0300;
constexpr UINT CBN_SELCHANGE = 1;
constexpr UINT CBN_EDITCHANGE = 5;
constexpr UINT LBN_SELCHANGE = 1;
constexpr UINT LBN_DBLCLK = 2;

// Window class styles.
constexpr UINT CS_VREDRAW = 0x0001;
constexpr UINT CS_HREDRAW = 0x0002;
constexpr UINT CS_DBLCLKS = 0x0008;
constexpr UINT CS_BYTEALIGNWINDOW = 0x2000;

// How to show a window.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_MINIMIZE = 6;
constexpr int SW_SHOWMINNOACTIVE = 7;
constexpr int SW_SHOWNA = 8;
constexpr int SW_RESTORE = 9;

// OnSize.
constexpr UINT SIZE_RESTORED = 0;
constexpr UINT SIZE_MINIMIZED = 1;
constexpr UINT SIZE_MAXIMIZED = 2;

// Keys and buttons held during a mouse message.
constexpr UINT MK_LBUTTON = 0x01;
constexpr UINT MK_RBUTTON = 0x02;
constexpr UINT MK_SHIFT = 0x04;
constexpr UINT MK_CONTROL = 0x08;
constexpr UINT MK_MBUTTON = 0x10;

// What one notch of the wheel turns.
constexpr short WHEEL_DELTA = 120;

// Virtual keys that are no letter or digit (those are their capital character).
constexpr UINT VK_BACK = 0x08;
constexpr UINT VK_TAB = 0x09;
constexpr UINT VK_RETURN = 0x0D;
constexpr UINT VK_SHIFT = 0x10;
constexpr UINT VK_CONTROL = 0x11;
constexpr UINT VK_MENU = 0x12;
constexpr UINT VK_ESCAPE = 0x1B;
constexpr UINT VK_SPACE = 0x20;
constexpr UINT VK_PRIOR = 0x21;
constexpr UINT VK_NEXT = 0x22;
constexpr UINT VK_END = 0x23;
constexpr UINT VK_HOME = 0x24;
constexpr UINT VK_LEFT = 0x25;
constexpr UINT VK_UP = 0x26;
constexpr UINT VK_RIGHT = 0x27;
constexpr UINT VK_DOWN = 0x28;
constexpr UINT VK_INSERT = 0x2D;
constexpr UINT VK_DELETE = 0x2E;
constexpr UINT VK_ADD = 0x6B;
constexpr UINT VK_SUBTRACT = 0x6D;
constexpr UINT VK_F1 = 0x70;

// Scroll bars, the codes their messages carry, and the fields of SCROLLINFO.
constexpr int SB_HORZ = 0;
constexpr int SB_VERT = 1;
constexpr UINT SB_LINELEFT = 0, SB_LINEUP = 0;
constexpr UINT SB_LINERIGHT = 1, SB_LINEDOWN = 1;
constexpr UINT SB_PAGELEFT = 2, SB_PAGEUP = 2;
constexpr UINT SB_PAGERIGHT = 3, SB_PAGEDOWN = 3;
constexpr UINT SB_THUMBPOSITION = 4;
constexpr UINT SB_THUMBTRACK = 5;
constexpr UINT SB_LEFT = 6, SB_TOP = 6;
constexpr UINT SB_RIGHT = 7, SB_BOTTOM = 7;
constexpr UINT SB_ENDSCROLL = 8;
constexpr UINT SIF_RANGE = 0x01;
constexpr UINT SIF_PAGE = 0x02;
constexpr UINT SIF_POS = 0x04;
constexpr UINT SIF_TRACKPOS = 0x10;
constexpr UINT SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

// Hit test and message numbers that OnSetCursor is told.
constexpr UINT HTCLIENT = 1;
constexpr UINT WM_MOUSEMOVE = 0x0200;

// Child window numbers: the first pane of a frame is its view.
constexpr UINT AFX_IDW_PANE_FIRST = 0xE900;

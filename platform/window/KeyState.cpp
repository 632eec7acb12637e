#include "platform/window/KeyState.h"

#include <QGuiApplication>

#include "platform/window/WindowTypes.h"

short GetKeyState(int virtualKey) {
    constexpr short kHeld = -128;
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
    switch (static_cast<UINT>(virtualKey)) {
        case VK_SHIFT:
            return held & Qt::ShiftModifier ? kHeld : 0;
        case VK_CONTROL:
            return held & Qt::ControlModifier ? kHeld : 0;
        case VK_MENU:
            return held & Qt::AltModifier ? kHeld : 0;
        default:
            return 0;
    }
}

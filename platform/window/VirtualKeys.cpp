#include "platform/window/VirtualKeys.h"

#include <Qt>

#include "platform/window/WindowTypes.h"

namespace {

struct Key {
    int toolkit;
    UINT virtualKey;
};

constexpr Key kKeys[] = {
    {Qt::Key_Backspace, VK_BACK}, {Qt::Key_Tab, VK_TAB},        {Qt::Key_Return, VK_RETURN},
    {Qt::Key_Enter, VK_RETURN},   {Qt::Key_Shift, VK_SHIFT},    {Qt::Key_Control, VK_CONTROL},
    {Qt::Key_Alt, VK_MENU},       {Qt::Key_Escape, VK_ESCAPE},  {Qt::Key_PageUp, VK_PRIOR},
    {Qt::Key_PageDown, VK_NEXT},  {Qt::Key_End, VK_END},        {Qt::Key_Home, VK_HOME},
    {Qt::Key_Left, VK_LEFT},      {Qt::Key_Up, VK_UP},          {Qt::Key_Right, VK_RIGHT},
    {Qt::Key_Down, VK_DOWN},      {Qt::Key_Insert, VK_INSERT},  {Qt::Key_Delete, VK_DELETE},
    {Qt::Key_Plus, VK_ADD},       {Qt::Key_Minus, VK_SUBTRACT},
};

}  // namespace

UINT VirtualKeyOf(int toolkitKey) {
    const bool letterOrDigit = (toolkitKey >= Qt::Key_A && toolkitKey <= Qt::Key_Z) ||
                               (toolkitKey >= Qt::Key_0 && toolkitKey <= Qt::Key_9);
    if (letterOrDigit || toolkitKey == Qt::Key_Space) return static_cast<UINT>(toolkitKey);
    if (toolkitKey >= Qt::Key_F1 && toolkitKey <= Qt::Key_F24)
        return VK_F1 + static_cast<UINT>(toolkitKey - Qt::Key_F1);
    for (const Key& key : kKeys)
        if (key.toolkit == toolkitKey) return key.virtualKey;
    return 0;
}

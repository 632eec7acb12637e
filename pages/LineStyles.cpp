#include "pages/LineStyles.h"

#include "platform/dialog/CComboBox.h"

namespace {

// Solid, dashed, dotted, dash-dot, dash-dot-dot.
constexpr const char* kPatterns[] = {
    "____________________________",   "___  ___  ___  ___  ___  ___",    "_  _  _  _  _  _  _  _  _  _  _  _",
    "___  _  ___  _  ___  _  ___  _", "___  _  _  ___  _  _  ___  _  _",
};

}  // namespace

void ListLineStyles(CComboBox& list) {
    list.ResetContent();
    DWORD_PTR style = 0;
    for (const char* const pattern : kPatterns) list.SetItemData(list.AddString(pattern), style++);
}

// Dialog resources: constant tables of controls, registered like menus. Places and sizes are in dialog units,
// quarters of the font's mean width and eighths of its height, so that a dialog follows the font in force.
//
//   constexpr ControlResource kControls[] = {
//       {ControlKind::Text, 0, "&Width:", 7, 9, 40, 8},
//       {ControlKind::Edit, 4001, "", 50, 7, 40, 14},
//       {ControlKind::DefaultButton, IDOK, "OK", 30, 30, 50, 14},
//   };
//   constexpr DialogResource kSize = {"Size", 97, 51, kControls};
//   const DialogTable size(4000, kSize);
#pragma once

#include <span>

#include "platform/core/Types.h"

enum class ControlKind {
    Text,  // its mnemonic leads to the control after it
    Edit,
    Check,
    Radio,  // those that follow each other are one group
    Button,
    DefaultButton,
    Group,
    DropList,  // the height is the list's when it is open
    List,
    Columns,  // a list with columns: CListCtrl
};

struct ControlResource {
    ControlKind kind;
    UINT id;
    const char* text;  // with '&' before the letter to press
    int x, y, cx, cy;
};

struct DialogResource {
    const char* caption;
    int cx, cy;
    std::span<const ControlResource> controls;
};

// Keeps a template registered. It stays the caller's and must outlive this object.
class DialogTable {
  public:
    DialogTable(UINT id, const DialogResource& dialog);
    ~DialogTable();
    DialogTable(const DialogTable&) = delete;
    DialogTable& operator=(const DialogTable&) = delete;
};

// Null when there is none.
const DialogResource* FindDialogResource(UINT id);

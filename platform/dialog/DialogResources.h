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
//
// A module may keep resources apart from those of its host: while its handle is the current one, its own
// templates are found before all others.
#pragma once

#include <span>

#include "platform/core/Geometry.h"
#include "platform/core/Types.h"

class CDC;

// Says whose resources are meant; null: nobody's in particular.
using HINSTANCE = const void*;
// The module whose resources are found first. The setter may be told null.
HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE module);

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
    Swatch,   // a bordered text that shows a colour (CDialog::OnCtlColor)
    Picture,  // shows what CStatic::SetBitmap names
};

// What a control is beside its kind.
enum ControlFlag : UINT {
    kReadOnly = 1,           // an edit that shows only
    kSorted = 2,             // a list of either kind that orders its entries by their texts
    kMultipleSelection = 4,  // a list
    kOwnerDrawn = 8,         // a list whose entries CListBox::DrawItem draws
};

struct ControlResource {
    ControlKind kind;
    UINT id;
    const char* text;  // with '&' before the letter to press
    int x, y, cx, cy;
    UINT flags = 0;
};

struct DialogResource {
    const char* caption;
    int cx, cy;
    std::span<const ControlResource> controls;
    HINSTANCE module = nullptr;  // whose it is
    const char* name = nullptr;  // for who looks it up by name
};

// Keeps a template registered. It stays the caller's and must outlive this object.
class DialogTable {
  public:
    DialogTable(UINT id, const DialogResource& dialog);
    ~DialogTable();
    DialogTable(const DialogTable&) = delete;
    DialogTable& operator=(const DialogTable&) = delete;
};

// Draws a picture of the given size in pixels from (0, 0) on; the ground is filled with the window's colour.
// SystemColors.h has the colours of the user's theme.
using DrawPicture = void (*)(CDC& dc, CSize size);

// Keeps a picture registered.
class PictureTable {
  public:
    PictureTable(UINT id, DrawPicture draw);
    ~PictureTable();
    PictureTable(const PictureTable&) = delete;
    PictureTable& operator=(const PictureTable&) = delete;

  private:
    const DrawPicture m_draw;
};

// Null when there is none.
const DialogResource* FindDialogResource(UINT id);
const DialogResource* FindDialogResource(const char* name);
DrawPicture FindPictureResource(UINT id);

// Command, menu and toolbar resources: constant tables that a module registers for its own lifetime. What a
// command is called is said once; menus and toolbars name it by its number. Where two modules have the same
// number, the one registered last counts.
//
//   constexpr CommandResource kCommands[] = {
//       {50003, "Zoom &all\tCtrl+0", "Shows everything", "zoom-all"},
//   };
//   constexpr MenuResource kMenu[] = {
//       MenuPopup("&View"), MenuItem(50003), MenuSeparator(), MenuItem(50005), MenuEnd(),
//   };
//   const CommandTable commands(kCommands);
//   const MenuTable menu(128, kMenu);
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/core/Types.h"

struct CommandResource {
    UINT id;
    // With '&' before the letter to press and, after a tab, the shortcut.
    const char* text;
    // One line for the status bar and the tool tip.
    const char* hint = nullptr;
    // Name of an icon resource.
    const char* icon = nullptr;
};

struct MenuResource {
    enum class Kind { Popup, Item, Separator, WindowList, End };
    Kind kind;
    UINT id;
    const char* text;
};
constexpr MenuResource MenuPopup(const char* text) { return {MenuResource::Kind::Popup, 0, text}; }
constexpr MenuResource MenuItem(UINT id) { return {MenuResource::Kind::Item, id, nullptr}; }
constexpr MenuResource MenuSeparator() { return {MenuResource::Kind::Separator, 0, nullptr}; }
// The open child frames, refreshed whenever the menu opens.
constexpr MenuResource MenuWindowList() { return {MenuResource::Kind::WindowList, 0, nullptr}; }
// Ends the innermost popup.
constexpr MenuResource MenuEnd() { return {MenuResource::Kind::End, 0, nullptr}; }

// An icon is drawn in the colour of the text, on a grid of 16 by 16 whose y grows downwards, with strokes 1.4
// wide: "M x y" begins a line, "L x y" goes on, "Z" closes it, "O x y r" is a circle, "F x y r" a filled one.
struct IconResource {
    const char* name;
    const char* path;
};

// Keeps a table registered. The array stays the caller's and must outlive this object.
class CommandTable {
  public:
    explicit CommandTable(std::span<const CommandResource> rows);
    ~CommandTable();
    CommandTable(const CommandTable&) = delete;
    CommandTable& operator=(const CommandTable&) = delete;
};

class MenuTable {
  public:
    MenuTable(UINT id, std::span<const MenuResource> rows);
    ~MenuTable();
    MenuTable(const MenuTable&) = delete;
    MenuTable& operator=(const MenuTable&) = delete;
};

// Commands in the order of their buttons; 0 is a gap.
class ToolBarTable {
  public:
    ToolBarTable(UINT id, std::span<const UINT> commands);
    ~ToolBarTable();
    ToolBarTable(const ToolBarTable&) = delete;
    ToolBarTable& operator=(const ToolBarTable&) = delete;
};

class IconTable {
  public:
    explicit IconTable(std::span<const IconResource> rows);
    ~IconTable();
    IconTable(const IconTable&) = delete;
    IconTable& operator=(const IconTable&) = delete;
};

// Null or empty when no table has it.
const CommandResource* FindCommandResource(UINT id);
// Every command with a text, the newest table's first.
std::vector<CommandResource> CommandResources();
std::span<const MenuResource> FindMenuResource(UINT id);
std::span<const UINT> FindToolBarResource(UINT id);
const char* FindIconResource(const char* name);

#include "app/workbench/WorkbenchResources.h"

#include <array>
#include <vector>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr CommandResource kCommands[] = {
    {ID_FILE_OPEN, "&Open...\tCtrl+O", "Open files of measurements", "open"},
    {kLiveOpen, "L&ive...\tCtrl+L",
     "Show what an instrument sends: serial port, socket, broker, file that grows"},
    {kReadAgain, "&Read again as...\tCtrl+R", "Say how the file is read: delimiter, columns, header"},
    {kReload, "Re&load\tF5", "Read the file again as it is on disk now; what is shown stays in view"},
    {kDismiss, "Dismiss", "Take the message away"},
    {kOpenSample, "Open the sa&mple", "A month of readings of a tide gauge"},
    {ID_FILE_CLOSE, "Clo&se\tCtrl+W", "Close the file"},
    {kCloseAll, "Close &all", "Close every file"},
    {kExport, "Expor&t...\tCtrl+E", "Save the view as a picture (PNG), drawing (SVG) or page (PDF)",
     "export"},
    {kCopyPicture, "Copy p&icture\tCtrl+C", "Copy the view as a picture for another program", "copy"},
    {kCopyValues, "Copy &values\tCtrl+Shift+C", "Copy the values in view as a table for a spreadsheet"},
    {kPageSetup, "Pa&ge setup...", "Choose paper, its direction and margins for printing"},
    {ID_FILE_PRINT, "&Print...\tCtrl+P", "Print the view", "print"},
    {ID_FILE_PRINT_PREVIEW, "Print previe&w", "Show the view as it will be printed", "preview"},
    {ID_APP_EXIT, "E&xit\tCtrl+Q", "End the program"},

    {CmdZoomAll, "Show &everything\tF", "Zoom to everything", "fit"},
    {CmdZoomExtent, "Zoom to the &data", "Zoom to the extent of the first series", "extent"},
    {CmdZoomIn, "Zoom &in\t+", "Zoom in; hold X or Y for that axis only", "zoom-in"},
    {CmdZoomOut, "Zoom &out\t-", "Zoom out; hold X or Y for that axis only", "zoom-out"},
    {CmdZoomBack, "Zoom &back\tBackspace", "Back to what was shown before the last zoom", "zoom-back"},
    {CmdZoomMode, "&Zoom rectangle\tZ", "Draw a rectangle to zoom to", "zoom-rect"},
    {kFitValues, "&Fit values\tV", "Zoom the y axes to the values in view"},
    {kCrosshair, "&Crosshair\tC", "Lines through the pointer, in every tile"},
    {kSampleReadOut, "Sample &at the pointer\tI", "Value, x and status of the sample nearest to the pointer"},
    {kLinkX, "Lin&k x axes\tK", "All windows show the same part of the x axis"},
    {kGaps, "Break lines at ga&ps\tB", "No line where samples are missing"},
    {kIsoAspect, "E&qual scales", "The same distance per pixel on both axes"},
    {kRuler, "&Ruler\tR", "Measure a distance", "ruler"},
    {kRulerFree, "&Free line", "The ruler goes from any point to any other"},
    {kRulerStraight, "&Horizontal or vertical", "The ruler keeps to one axis"},
    {kRulerCircle, "&Circle", "The ruler draws the circle round its start"},
    {kModeEscape, "Leave the &mode\tEsc", "Leave zoom rectangle and ruler"},
    {kLegend, "&Legend\tL", "Show or hide the legend", "legend"},
    {kGrid, "&Grid\tG", "Show or hide the grid lines", "grid"},
    {kTitleBar, "&Hide title bar", "Show or hide the title bar of the window"},
    {kStacked, "Stack b&y unit\tU", "The series of each unit in a plot of their own, one below the other"},
    {kTiles, "&Tiles\tT", "One series in each tile", "tiles"},
    {kNextPage, "Ne&xt page\tCtrl+PgDown", "The next page of tiles"},
    {kPreviousPage, "Pre&vious page\tCtrl+PgUp", "The page of tiles before"},
    {kBackground, "Backgrou&nd colour...", "Choose the colour of the background"},
    {kSettings, "Settings...\tCtrl+,", "The settings of this view", "settings"},

    {kNextSeries, "&Next series\tN", "Show the next series alone", "next"},
    {kPreviousSeries, "&Previous series\tP", "Show the series before alone", "previous"},
    {kNormalised, "N&ormalised\tO", "Each series from its least to its greatest value, whatever its unit"},
    {kFileOrder, "&File order", "Join the samples in the order of the rows, not of x"},
    {kAllSeries, "Show &all\tA", "Show every series in one plot"},
    {kDrawLine, "&Line", "Draw the shown series as lines"},
    {kDrawLineAndDots, "Line an&d dots", "Draw the shown series as lines with dots"},
    {kDrawDots, "Do&ts", "Draw the shown series as dots"},
    {kSeriesColor, "&Colour...", "Choose the colour of the first series shown"},
    {kLineProperties, "L&ine properties...", "Choose how the first series shown is drawn"},
    {kMarks, "&Marks of flags\tM", "Show which samples are deleted, rejected or marked as spikes"},
    {kOriginal, "Original &below\tW", "Draw the line as it was, pale, below the cleaned one"},

    {kLiveHold, "&Hold\tH", "Stand still to zoom and measure while receiving goes on; again: catch up"},
    {kLiveScrolling, "&Scrolling range", "Show the newest samples"},
    {kLiveWhole, "&Whole range", "Show everything that is kept"},
    {kLiveFixed, "&Fixed range", "Stay at the range shown, and draw what comes into it"},
    {kLiveWindow, "&Length of the window...", "How much the scrolling range shows"},
    {kLiveRecord, "&Record...", "Write what arrives into a CSV file"},
    {kLiveAlarm, "&Alarm...", "A level that the first axis should not pass"},
    {kLiveDerived, "Add s&um or difference...", "A channel made of two others"},
    {kLiveCorrected, "Add &corrected channel...",
     "A channel with another sign, an offset, and others added or subtracted"},

    {ID_VIEW_TOOLBAR, "Sho&w toolbar", "Show or hide the toolbar"},
    {ID_VIEW_STATUS_BAR, "&Status bar", "Show or hide the status bar"},
    {ID_WINDOW_CASCADE, "&Cascade", "Lay the windows out overlapping"},
    {ID_WINDOW_TILE_HORZ, "Tile &below each other", "Lay the windows out below each other"},
    {ID_WINDOW_TILE_VERT, "Tile &side by side", "Lay the windows out side by side"},
    {ID_NEXT_PANE, "&Next\tCtrl+Tab", "Go to the next window"},
    {ID_PREV_PANE, "&Previous\tCtrl+Shift+Tab", "Go to the window before"},
    {kShortcuts, "&Keys and mouse\tF1", "What keys and mouse do"},
    {kAbout, "&About Tavin", "Version"},
};

constexpr MenuResource kMenuBefore[] = {
    MenuPopup("&File"),   MenuItem(ID_FILE_OPEN), MenuItem(kLiveOpen),
    MenuItem(kReadAgain), MenuItem(kReload),      MenuPopup("Open re&cent"),
};
constexpr MenuResource kMenuBetween[] = {
    MenuEnd(),
    MenuSeparator(),
    MenuItem(kExport),
    MenuItem(kPageSetup),
    MenuItem(ID_FILE_PRINT_PREVIEW),
    MenuItem(ID_FILE_PRINT),
    MenuSeparator(),
    MenuItem(ID_FILE_CLOSE),
    MenuItem(kCloseAll),
    MenuSeparator(),
    MenuItem(ID_APP_EXIT),
    MenuEnd(),
    MenuPopup("&Edit"),
    MenuItem(kCopyPicture),
    MenuItem(kCopyValues),
    MenuEnd(),
    MenuPopup("&View"),
    MenuItem(CmdZoomAll),
    MenuItem(CmdZoomExtent),
    MenuItem(CmdZoomIn),
    MenuItem(CmdZoomOut),
    MenuItem(CmdZoomBack),
    MenuItem(CmdZoomMode),
    MenuItem(kFitValues),
    MenuItem(kIsoAspect),
    MenuItem(kLinkX),
    MenuSeparator(),
    MenuItem(kRuler),
    MenuPopup("R&uler shape"),
    MenuItem(kRulerFree),
    MenuItem(kRulerStraight),
    MenuItem(kRulerCircle),
    MenuEnd(),
    MenuItem(kModeEscape),
    MenuSeparator(),
    MenuItem(kLegend),
    MenuItem(kGrid),
    MenuItem(kCrosshair),
    MenuItem(kSampleReadOut),
    MenuItem(kGaps),
    MenuItem(kStacked),
    MenuItem(kTiles),
    MenuItem(kNextPage),
    MenuItem(kPreviousPage),
    MenuItem(kBackground),
    MenuItem(kSettings),
    MenuSeparator(),
    MenuItem(kTitleBar),
    MenuItem(ID_VIEW_TOOLBAR),
    MenuItem(ID_VIEW_STATUS_BAR),
    MenuEnd(),
    MenuPopup("&Series"),
    MenuItem(kNextSeries),
    MenuItem(kPreviousSeries),
    MenuItem(kAllSeries),
    MenuItem(kNormalised),
    MenuItem(kFileOrder),
    MenuSeparator(),
    MenuItem(kDrawLine),
    MenuItem(kDrawLineAndDots),
    MenuItem(kDrawDots),
    MenuItem(kSeriesColor),
    MenuItem(kLineProperties),
    MenuItem(kMarks),
    MenuItem(kOriginal),
    MenuSeparator(),
};
constexpr MenuResource kMenuAfter[] = {
    MenuEnd(),
    MenuPopup("&Live"),
    MenuItem(kLiveHold),
    MenuItem(kLiveScrolling),
    MenuItem(kLiveWhole),
    MenuItem(kLiveFixed),
    MenuItem(kLiveWindow),
    MenuSeparator(),
    MenuItem(kLiveRecord),
    MenuItem(kLiveAlarm),
    MenuSeparator(),
    MenuItem(kLiveDerived),
    MenuItem(kLiveCorrected),
    MenuEnd(),
    MenuPopup("&Window"),
    MenuItem(ID_WINDOW_CASCADE),
    MenuItem(ID_WINDOW_TILE_HORZ),
    MenuItem(ID_WINDOW_TILE_VERT),
    MenuItem(ID_NEXT_PANE),
    MenuItem(ID_PREV_PANE),
    MenuSeparator(),
    MenuWindowList(),
    MenuEnd(),
    MenuPopup("&Help"),
    MenuItem(kShortcuts),
    MenuItem(kOpenSample),
    MenuItem(kAbout),
    MenuEnd(),
};

constexpr MenuResource kContextMenu[] = {
    MenuPopup("View"),
    MenuItem(CmdZoomAll),
    MenuItem(CmdZoomBack),
    MenuItem(CmdZoomMode),
    MenuSeparator(),
    MenuItem(kRuler),
    MenuItem(kLegend),
    MenuItem(kGrid),
    MenuItem(kTitleBar),
    MenuItem(kSettings),
    MenuSeparator(),
    MenuItem(kNextSeries),
    MenuItem(kPreviousSeries),
    MenuItem(kAllSeries),
    MenuSeparator(),
    MenuItem(kCopyPicture),
    MenuItem(kCopyValues),
    MenuItem(kExport),
    MenuItem(ID_FILE_PRINT_PREVIEW),
    MenuEnd(),
};

constexpr UINT kToolBar[] = {
    ID_FILE_OPEN, kExport, ID_FILE_PRINT, 0,       CmdZoomAll, CmdZoomIn, CmdZoomOut, CmdZoomBack,
    CmdZoomMode,  0,       kRuler,        kLegend, kGrid,      kTiles,    0,          kPreviousSeries,
    kNextSeries,  0,       kSettings};

constexpr IconResource kIcons[] = {
    {"application", "M 2 2 L 2 14 L 14 14 M 3 11 L 6 6 L 9 9 L 13 3"},
    {"open", "M 1.5 13 L 1.5 3.5 L 6 3.5 L 7.5 5.5 L 13 5.5 L 13 7.5 M 1.5 13 L 4 7.5 L 15 7.5 L 12.5 13 Z"},
    {"export", "M 2 9 L 2 14 L 14 14 L 14 9 M 8 11 L 8 2 M 4.5 5.5 L 8 2 L 11.5 5.5"},
    {"copy", "M 5 5 L 14 5 L 14 14 L 5 14 Z M 5 11 L 2 11 L 2 2 L 11 2 L 11 5"},
    {"print",
     "M 4 6 L 4 2 L 12 2 L 12 6 M 4 11 L 2 11 L 2 6 L 14 6 L 14 11 L 12 11 M 4 9 L 12 9 L 12 14 L 4 14 Z"},
    {"preview", "M 3 2 L 10 2 L 12 4 L 12 8 M 3 2 L 3 14 L 7 14 O 10.5 11 2.5 M 12.3 12.8 L 14.5 15"},
    {"fit",
     "M 2 5 L 2 2 L 5 2 M 11 2 L 14 2 L 14 5 M 14 11 L 14 14 L 11 14 M 5 14 L 2 14 L 2 11 M 4.5 10 L 7 6.5 L "
     "9 "
     "8.5 L 11.5 5.5"},
    {"extent", "M 2 5 L 2 2 L 5 2 M 11 2 L 14 2 L 14 5 M 14 11 L 14 14 L 11 14 M 5 14 L 2 14 L 2 11"},
    {"zoom-in", "O 7 7 4.8 M 10.5 10.5 L 14.5 14.5 M 4.8 7 L 9.2 7 M 7 4.8 L 7 9.2"},
    {"zoom-out", "O 7 7 4.8 M 10.5 10.5 L 14.5 14.5 M 4.8 7 L 9.2 7"},
    {"zoom-back", "M 6 3 L 2.5 6.5 L 6 10 M 2.5 6.5 L 10 6.5 L 13 8 L 13.5 10.5 L 12 13 L 7 13"},
    {"zoom-rect",
     "M 2 3 L 4 3 M 6 3 L 8 3 M 10 3 L 12 3 M 2 3 L 2 5 M 2 7 L 2 9 M 2 11 L 4 11 M 12 3 L 12 5 M 6 11 L 7 "
     "11 O 11 10.5 2.7 M 13 12.5 L 15 14.5"},
    {"ruler", "M 1.5 11 L 11 1.5 L 14.5 5 L 5 14.5 Z M 4 8.5 L 5.5 10 M 6.5 6 L 8.5 8 M 9 3.5 L 10.5 5"},
    {"legend",
     "M 2 2.5 L 14 2.5 L 14 13.5 L 2 13.5 Z M 4 6 L 6.5 6 M 8.5 6 L 12 6 M 4 10 L 6.5 10 M 8.5 10 L 12 10"},
    {"grid", "M 2 2 L 14 2 L 14 14 L 2 14 Z M 6 2 L 6 14 M 10 2 L 10 14 M 2 6 L 14 6 M 2 10 L 14 10"},
    {"tiles",
     "M 2 2 L 7 2 L 7 7 L 2 7 Z M 9 2 L 14 2 L 14 7 L 9 7 Z M 2 9 L 7 9 L 7 14 L 2 14 Z M 9 9 L 14 9 L 14 14 "
     "L "
     "9 14 Z"},
    {"settings",
     "M 2 4 L 4 4 M 8 4 L 14 4 O 6 4 1.8 M 2 8 L 9 8 M 13 8 L 14 8 O 11 8 1.8 M 2 12 L 3 12 M 7 12 L 14 12 O "
     "5 12 1.8"},
    {"next", "M 5 3 L 11 8 L 5 13"},
    {"previous", "M 11 3 L 5 8 L 11 13"},
};

// Files opened last and series: their texts come from the program.
std::vector<CommandResource> NamedWhileRunning() {
    std::vector<CommandResource> rows;
    for (UINT id = kRecentFirst; id <= kRecentLast; ++id) rows.push_back({id, "-", "Open this file"});
    for (UINT id = kSeriesFirst; id <= kSeriesLast; ++id)
        rows.push_back({id, "-", "Show or hide this series"});
    return rows;
}

std::vector<MenuResource> MainMenu() {
    std::vector<MenuResource> rows(std::begin(kMenuBefore), std::end(kMenuBefore));
    for (UINT id = kRecentFirst; id <= kRecentLast; ++id) rows.push_back(MenuItem(id));
    rows.insert(rows.end(), std::begin(kMenuBetween), std::end(kMenuBetween));
    for (UINT id = kSeriesFirst; id <= kSeriesLast; ++id) rows.push_back(MenuItem(id));
    rows.insert(rows.end(), std::begin(kMenuAfter), std::end(kMenuAfter));
    return rows;
}

constexpr StringResource kStrings[] = {{kMainFrame, "Tavin"}};

}  // namespace

struct WorkbenchResources::Tables {
    std::vector<CommandResource> named = NamedWhileRunning();
    std::vector<MenuResource> mainRows = MainMenu();
    CommandTable commands{kCommands};
    CommandTable namedCommands{named};
    MenuTable mainMenu{kMainFrame, mainRows};
    MenuTable contextMenu{kViewContextMenu, kContextMenu};
    ToolBarTable toolBar{kMainFrame, kToolBar};
    IconTable icons{kIcons};
    StringTable strings{kStrings};
};

WorkbenchResources::WorkbenchResources() : tables_(std::make_unique<Tables>()) {}
WorkbenchResources::~WorkbenchResources() = default;

}  // namespace app

#include "views/ConnectionLineResources.h"

#include "pages/PageResources.h"
#include "platform/core/MessageBox.h"
#include "platform/core/StringTable.h"

namespace {

using enum ControlKind;

constexpr ControlResource kLine[] = {
    {Text, 0, "&From:", 7, 10, 34, 8},
    {DropList, kFromSeries, "", 45, 7, 140, 80},
    {Text, 0, "&To:", 7, 28, 34, 8},
    {DropList, kToSeries, "", 45, 25, 140, 80},
    {Text, 0, "T&ype:", 7, 46, 34, 8},
    {DropList, kLineTypes, "", 45, 43, 140, 60},
    {Text, 0, "&Style:", 7, 64, 34, 8},
    {DropList, kLineStyles, "", 45, 61, 140, 80},
    {Text, 0, "Color:", 7, 82, 34, 8},
    {Button, kLineColor, "...", 45, 79, 50, 14},
    {Swatch, kLineSwatch, "", 101, 81, 84, 10},
    {DefaultButton, IDOK, "OK", 81, 101, 50, 14},
    {Button, IDCANCEL, "Cancel", 135, 101, 50, 14},
};
const DialogResource kLineDialog = {"Connection line", 192, 122, kLine, TavinModule()};
const DialogTable lineDialog(kConnectionLineDialog, kLineDialog);

constexpr ControlResource kLines[] = {
    {List, kLineList, "", 7, 7, 180, 110, kMultipleSelection},
    {Button, kAddLine, "&Add...", 193, 7, 50, 14},
    {Button, kEditLine, "&Edit...", 193, 25, 50, 14},
    {Button, kRemoveLine, "&Remove", 193, 43, 50, 14},
};
const DialogResource kLinesPage = {"Data connection lines ", 250, 124, kLines, TavinModule()};
const DialogTable linesPage(kConnectionLinesDialog, kLinesPage);

constexpr StringResource kTexts[] = {{kLineExists, "Line already exists."}};
const StringTable kStrings(kTexts);

}  // namespace

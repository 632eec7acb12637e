#include "pages/DataPageResources.h"

#include "pages/PageResources.h"
#include "platform/window/CommandResources.h"

namespace {

using enum ControlKind;

constexpr IconResource kArrows[] = {
    {"416", "M 13 8 L 3 8 M 7 4 L 3 8 L 7 12"},
    {"417", "M 3 8 L 13 8 M 9 4 L 13 8 L 9 12"},
    {"418", "M 8 13 L 8 3 M 4 7 L 8 3 L 12 7"},
    {"419", "M 8 3 L 8 13 M 4 9 L 8 13 L 12 9"},
};
const IconTable kArrowIcons(kArrows);

constexpr UINT kSeriesList = kOwnerDrawn | kMultipleSelection;

constexpr ControlResource kData[] = {
    {Text, 0, "&Hidden:", 7, 7, 95, 8},
    {List, kHiddenList, "", 7, 18, 95, 110, kSeriesList},
    {Button, kMoveToShown, "&r", 107, 52, 18, 16},
    {Button, kMoveToHidden, "&l", 107, 72, 18, 16},
    {Text, 0, "&Shown:", 130, 7, 95, 8},
    {List, kShownList, "", 130, 18, 95, 110, kSeriesList},
    {Button, kMoveUp, "&u", 230, 52, 18, 16},
    {Button, kMoveDown, "&d", 230, 72, 18, 16},
    {Button, kHiddenProperties, "Properties...", 7, 133, 54, 14},
    {Button, kHiddenReset, "Reset", 64, 133, 38, 14},
    {Button, kShownProperties, "Properties...", 130, 133, 54, 14},
    {Button, kShownReset, "Reset", 187, 133, 38, 14},
};
const DialogResource kDataPage = {"Data", 255, 154, kData, TavinModule()};
const DialogTable dataPage(kDataDialog, kDataPage);

constexpr ControlResource kCalculations[] = {
    {Group, 0, "Input", 7, 7, 241, 46},
    {Text, 0, "Input:", 14, 20, 30, 8},
    {Text, kInputName, "", 48, 20, 190, 8},
    {Check, kInvertInput, "&Invert input", 14, 35, 80, 10},
    {Text, 0, "&Offset:", 120, 36, 30, 8},
    {Edit, kOffset, "", 154, 33, 60, 14},
    {Group, 0, "Calculations", 7, 58, 241, 104},
    {Text, 0, "S&eries:", 14, 73, 30, 8},
    {DropList, kCandidates, "", 48, 70, 190, 80, kSorted},
    {Button, kAddSeries, "&Add", 14, 88, 50, 14},
    {Button, kClearAdded, "&Clear", 70, 88, 50, 14},
    {List, kAddList, "", 14, 106, 106, 48, kSorted},
    {Button, kSubtractSeries, "&Subtract", 132, 88, 50, 14},
    {Button, kClearSubtracted, "C&lear", 188, 88, 50, 14},
    {List, kSubtractList, "", 132, 106, 106, 48, kSorted},
};
const DialogResource kCalculationsPage = {"Calculations", 255, 169, kCalculations, TavinModule()};
const DialogTable calculationsPage(kCalculationsDialog, kCalculationsPage);

}  // namespace

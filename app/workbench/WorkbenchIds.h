// The numbers of the program's own commands and resources; the library's and the framework's are beside them.
#pragma once

#include "tavin/tavin.h"

namespace app {

constexpr UINT kMainFrame = 128;  // title, menu and toolbar
constexpr UINT kViewContextMenu = 129;

constexpr UINT kRecentFirst = 57616;
constexpr UINT kRecentLast = 57625;
constexpr UINT kAbout = 57664;

constexpr UINT kSeriesFirst = 33000;
constexpr UINT kSeriesLast = 33039;
constexpr UINT kNextSeries = 33100;
constexpr UINT kPreviousSeries = 33101;
constexpr UINT kAllSeries = 33102;
constexpr UINT kStacked = 33107;
constexpr UINT kTiles = 33108;
constexpr UINT kNextPage = 33104;
constexpr UINT kPreviousPage = 33105;
constexpr UINT kGrid = 33106;
constexpr UINT kDrawDots = 33110;  // in the order of the draw styles
constexpr UINT kDrawLineAndDots = 33111;
constexpr UINT kDrawLine = 33112;
constexpr UINT kRulerFree = 33115;  // in the order of the ruler types
constexpr UINT kRulerStraight = 33116;
constexpr UINT kRulerCircle = 33117;
constexpr UINT kBackground = 33120;
constexpr UINT kSeriesColor = 33121;
constexpr UINT kExport = 33122;
constexpr UINT kReadAgain = 33123;
constexpr UINT kShortcuts = 33124;
constexpr UINT kCloseAll = 33125;
constexpr UINT kCopyPicture = 33126;
constexpr UINT kCopyValues = 33127;
constexpr UINT kReload = 33128;
constexpr UINT kDismiss = 33129;
constexpr UINT kOpenSample = 33130;
constexpr UINT kPageSetup = 33131;
constexpr UINT kLineProperties = 33132;

constexpr UINT kFitValues = 33140;
constexpr UINT kNormalised = 33141;
constexpr UINT kFileOrder = 33142;
constexpr UINT kFirstFlag = 33150;  // what the view's flags switch, in their order
constexpr UINT kCrosshair = 33150;
constexpr UINT kSampleReadOut = 33151;
constexpr UINT kLinkX = 33152;
constexpr UINT kGaps = 33153;
constexpr UINT kMarks = 33154;
constexpr UINT kOriginal = 33155;
constexpr UINT kLastFlag = 33155;

// Live windows.
constexpr UINT kLiveOpen = 33170;
constexpr UINT kLiveHold = 33171;
constexpr UINT kLiveScrolling = 33172;  // in the order of LiveRange
constexpr UINT kLiveWhole = 33173;
constexpr UINT kLiveFixed = 33174;
constexpr UINT kLiveWindow = 33175;
constexpr UINT kLiveRecord = 33176;
constexpr UINT kLiveAlarm = 33177;
constexpr UINT kLiveDerived = 33178;
constexpr UINT kLiveCorrected = 33179;

constexpr UINT kModeEscape = CmdModeEscape;
constexpr UINT kLegend = CmdToggleLegend;
constexpr UINT kRuler = CmdCreateRuler;
constexpr UINT kTitleBar = CmdTitleBar;
constexpr UINT kIsoAspect = CmdIsoAspect;
constexpr UINT kSettings = CmdViewSettings;

}  // namespace app

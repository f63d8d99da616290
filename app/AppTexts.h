#pragma once

#include "ToolbarKey.h"

// The program's own words in the main window and its dialogs: the menu and toolbar
// captions, tool tips, status texts, the properties and about dialogs, the messages.
// They stand exactly as the program has always shown them, odd spelling included
// ("Toogle", "Back Ground", "BackPlot"): they are not slips to correct, and the tests
// hold each of them letter for letter. The title of most messages is in
// TranslationTexts.h, the status texts of stepping in PlaybackTexts.h.
namespace backplot::texts {

inline constexpr const char* StatusReady = "  Ready";

// The main window's title, and what follows the program's name once one is open
inline constexpr const char* WindowTitle = "Tarvo Backplot";
inline constexpr const char* WindowTitleAfterFile = " \u2014 Tarvo Backplot";

// A recent-file entry that could not be opened
inline constexpr const char* RecentFileErrorTitle = "Corvane BackPlot";
inline constexpr const char* ErrorLoadingFile = "Error loading file.";

// The menu tree, each caption named after its item ("&" marks the access key)
inline constexpr const char* mnuFileMain = "&File";
inline constexpr const char* mnuFileOpen = "&Open...";
inline constexpr const char* mnuSaveAs = "Save &As...";
inline constexpr const char* mnuWinbmp = "&Windows Bitmap";
inline constexpr const char* mnuDxfFile = "&DXF File";
inline constexpr const char* mnuPrintPreview = "Print Pre&view";
inline constexpr const char* mnuPrint = "&Print";
inline constexpr const char* mnuPrinter = "Printer Set&up...";
inline constexpr const char* mnuExit = "E&xit";
inline constexpr const char* mnuEdit = "&Edit";
inline constexpr const char* mnuDelete = "&Delete";
inline constexpr const char* mnuViewMain = "&View";
inline constexpr const char* mnuClear = "&Clear";
inline constexpr const char* mnuRedraw = "&Redraw";
inline constexpr const char* mnuAutoRedraw = "&Auto Redraw";
inline constexpr const char* mnuAutoOn = "On";
inline constexpr const char* mnuAutoOff = "Off";
inline constexpr const char* mnuZoomMain = "&Zoom";
inline constexpr const char* mnuZExtents = "Full Drawing &Extents";
inline constexpr const char* mnuZPrev = "&Previous";
inline constexpr const char* mnuZWindow = "&Window";
inline constexpr const char* mnuZIn = "&In";
inline constexpr const char* mnuZOut = "&Out";
inline constexpr const char* mnuPanMain = "&Pan";
inline constexpr const char* mnuPoint = "&Point";
inline constexpr const char* mnuPanLeft = "&Left";
inline constexpr const char* mnuPanRight = "&Right";
inline constexpr const char* mnuPanUp = "&Up";
inline constexpr const char* mnuPanDown = "&Down";
inline constexpr const char* mnuStep = "&Single Block Step";
inline constexpr const char* mnuDetails = "Step &Details";
inline constexpr const char* mnuSlowMotion = "Slow &Motion Block Step";
inline constexpr const char* mnuPlotFrom = "Plot &From";
inline constexpr const char* mnuTool1 = "Tool To &EOF";
inline constexpr const char* mnuTool2 = "&Tool To Tool";
inline constexpr const char* mnuSource = "&View GCode Source";
inline constexpr const char* mnuToolsMain = "&Options";
inline constexpr const char* mnuDrawAids = "Drawing &Aids...";
inline constexpr const char* mnuText = "&Text...";
inline constexpr const char* mnuCoords = "Coordinates";
inline constexpr const char* mnuPref = "&Properties...";
inline constexpr const char* mnuCaptions = "Show Toolbar Captions";
inline constexpr const char* mnuHelp = "&Help";
inline constexpr const char* mnuHelpFile = "Tarvo Backplot Help &Topics";
inline constexpr const char* mnuAbout = "&About...";
inline constexpr const char* cmdHidden = "Hidden";

// The toolbar's tool tips and captions, in toolbar order. "Stop" carries the caption
// "Pause", as the button before it does.
struct ToolbarText {
    ToolbarKey key;
    const char* toolTip;
    const char* caption;
};
inline constexpr ToolbarText ToolbarTexts[] = {
    {ToolbarKey::Exit, "Exit Program", "Exit"},
    {ToolbarKey::Open, "Open File to Plot", "Open"},
    {ToolbarKey::Clear, "Clear Screen", "Clear"},
    {ToolbarKey::Print, "Print", "Print"},
    {ToolbarKey::Preview, "Print Preview", "Preview"},
    {ToolbarKey::Pan, "Pan", "Pan"},
    {ToolbarKey::ZoomExtends, "Zoom Extends", "Extends"},
    {ToolbarKey::ZWindow, "Zoom Window", "Window"},
    {ToolbarKey::ZIn, "Zoom In", "Z In"},
    {ToolbarKey::ZOut, "Zoom Out", "Z Out"},
    {ToolbarKey::Refresh, "Refresh Plot", "Refresh"},
    {ToolbarKey::Step, "Single Block Step", "Step"},
    {ToolbarKey::Slow, "Slow Motion Block Step", "Slow"},
    {ToolbarKey::Pause, "Pause", "Pause"},
    {ToolbarKey::Stop, "Stop", "Pause"},
    {ToolbarKey::GCode, "Show GCode", "GCode"},
    {ToolbarKey::Rapid, "Toggle Rapid Lines", "Rapid"},
    {ToolbarKey::Axis, "Toggle Axis Lines", "Axis"},
    {ToolbarKey::Properties, "BackPlot Properties", "Properties"},
    {ToolbarKey::ToolColors, "Toogle Tool Change Colors", "Tool Colors"},
};
static_assert(EveryToolbarKeyInOrder(ToolbarTexts), "one row per toolbar key, in toolbar order");

// About (frmAbout)
inline constexpr const char* AboutCaption = "About Tarvo Backplot";
inline constexpr const char* AboutTitleLine = "Tarvo Backplot V5.0";
inline constexpr const char* AboutOk = "&OK";

// Properties (frmProperties): the pages in order, then each page's captions
inline constexpr const char* PropertiesCaption = "Properties";
inline constexpr const char* PropertiesPages[] = {"Files", "Axis Lines", "Slow Motion", "Back Ground Color",
                                                  "Tool Color"};
inline constexpr const char* PropertiesButtons[] = {"OK", "Cancel", "Apply"}; // cmdProperties(0..2)
inline constexpr const char* FilesExtFrame = "Default File Extension";
inline constexpr const char* FilesWorkDirFrame = "Location of work directory";
inline constexpr const char* FilesCurrentDir = "Current:";
inline constexpr const char* FilesNewDir = "New:";
inline constexpr const char* FilesOpenFrame = "Default file open";
inline constexpr const char* FilesMill = "Mill";
inline constexpr const char* FilesLathe = "Lathe";
inline constexpr const char* FilesPathFrame = "Display Full Path";
inline constexpr const char* AxisStyleFrame = "Axis Line Style";
inline constexpr const char* AxisStyles[] = {"Solid", "Dash"}; // picLineStyle(0), picLineStyle(1)
inline constexpr const char* AxisStyleTip = "Click to select this line type.";
inline constexpr const char* AxisCurrentStyle = "Current";
inline constexpr const char* AxisColorFrame = "Axis Line Color";
inline constexpr const char* SlowMotionFrame = "Slow Motion Timer";
// The delays offered, in seconds. No .40, .50, .60 or .70: the steps widen on purpose.
inline constexpr const char* SlowTimeChoices[] = {".05", ".10", ".15", ".20", ".25", ".30",
                                                  ".35", ".45", ".55", ".65", ".75", "1"};
inline constexpr const char* ToolRowBefore = "Tool "; // + 1 to 10
inline constexpr const char* ToolsDefaultColor = "Default Line Color";
inline constexpr const char* ToolsCurrentFrame = "Current tool numbers";
inline constexpr const char* ToolsClearAll = "&Clear All";

} // namespace backplot::texts

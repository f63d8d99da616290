#pragma once

#include "DrawSurface.h"
#include "PlaybackState.h"
#include "Plotter.h"
#include "Settings.h"
#include "UserDialogs.h"

#include <string>

namespace backplot {

enum class CanvasPointer { Default, ZoomWindow, Pan };
enum class MouseButton { Left, Right, Middle };

// What the view commands ask of the window around the canvas. Every operation does
// nothing by default, which is all the command-line tool needs.
class ViewHost {
public:
    virtual ~ViewHost() = default;

    // The Clear command: the canvas cleared and its picture dropped.
    virtual void ClearCanvas() {}
    virtual void SetCanvasPointer(CanvasPointer) {}
    // Full Drawing Extents ends single stepping and slow motion: the check marks of both
    // commands go, "Step &Details" is disabled and the step listing emptied.
    virtual void EndPlayback() {}
    // A left click on the canvas while single stepping takes one step.
    virtual void Step() {}
    // A right click on the canvas while slow motion runs: the slow-motion command.
    virtual void SlowMotionToggle() {}
    // An open is in progress: the mouse readout waits.
    virtual bool FileOperation() const { return false; }
    // A program has been drawn (the flag of the open command).
    virtual bool ProgramLoaded() const { return true; }
    // The mouse moved over the canvas: lblCode shows the file, the status lines are
    // switched by whether a program is loaded, and the readout shows the two texts.
    virtual void ShowMousePosition(const std::string& /*xText*/, const std::string& /*yText*/) {}
    // The cross hairs through a point in plot units, or none.
    virtual void ShowCrossHairs(float /*x*/, float /*y*/) {}
    virtual void HideCrossHairs() {}
};

// The zoom and pan commands and the mouse on the canvas. One instance drives the main
// window's canvas, another the command-line tool's surface: the same code in both.
//
// The view window lives in the plotter (plotter.View). While a zoom window or a pan is
// dragged, its four fields hold the press point and the current point; SetCoords turns
// them back into a view at the release. Positions are plot units (stored Y, negated).
//
// Errors: a view that cannot be fitted (the 32-bit float range exceeded) shows the
// run-time error's message and restores the view the command started from, so the
// program goes on with a usable view.
class ViewCommands {
public:
    ViewCommands(Plotter& plotter, DrawSurface& canvas, Settings& settings, PlaybackState& playback,
                 UserDialogs& dialogs, ViewHost& host);
    ViewCommands(const ViewCommands&) = delete;
    ViewCommands& operator=(const ViewCommands&) = delete;

    bool ZoomWindowMode = false;  // the zoom-window tool is armed
    bool PanMode = false;         // the pan tool is armed
    bool RubberBoxActive = false; // a zoom-window box is being dragged; the cross hairs wait
    float PanDX = 0, PanDY = 0;   // the shift of the last pan
    bool MillMode = true;         // readout letters: X/Y for milling, Z/X (a diameter) for lathe
    bool ExtentsKeyFlag = false;  // set by Full Drawing Extents and the E key, cleared by every key; nobody reads it

    // ---- Commands ----
    // The plot drawn again at the view window: SetCoords and the plot pass on a cleared
    // canvas (the caller clears it, with its picture). A running slow motion that is not
    // single stepping starts over from record 1, with the axis drawn first.
    void Redraw();
    // Full Drawing Extents: ends single stepping and slow motion, then the extents with a
    // margin of 0.3 FitSpan on every side, and plots anew.
    void ZoomExtents();
    // Each edge 0.3 FitSpan inward / outward; Previous shows the saved view (one level;
    // a second Previous shows the same). Nothing while slow motion runs.
    void ZoomIn();
    void ZoomOut();
    void ZoomPrevious();
    // The wheel: one zoom step in or out, the same step as ZoomIn and ZoomOut, about the
    // point (x, y) under the pointer: the view is then shifted so that the point keeps its
    // place on the canvas. Previous goes back to the view before the step.
    void ZoomAbout(bool in, float x, float y);
    // Arm the zoom-window tool / the pan tool; the drag does the rest.
    void ZoomWindow();
    void Point();
    // Exactly 0.5 plot units, played as a drag through the mouse handlers.
    void PanLeft();
    void PanRight();
    void PanUp();
    void PanDown();

    // ---- The canvas mouse ----
    void MouseDown(MouseButton button, float x, float y);
    void MouseMove(bool leftHeld, float x, float y);
    void MouseUp(MouseButton button, float x, float y);

    // The readout of a point: " X 1.5" / " Y -2.0" for milling (Y with its machine sign),
    // " Z ..." / " X ..." with X as a diameter for lathe; mask "##0.0#####".
    static std::pair<std::string, std::string> Readout(float x, float y, bool mill);

    // The line of a pan drag in `color`, drawn in the surface's draw mode of the moment.
    static void DrawRubberLine(DrawSurface& surface, float x1, float y1, float x2, float y2, std::uint32_t color);

private:
    enum class PanStep { Left, Right, Up, Down };
    void Pan(PanStep step);
    // SetCoords and the plot pass; a fault restores `before` and reports.
    void PlotAnew(const ViewTransform& before);
    void CrossHairsAt(float x, float y);
    void ClearIfAutoDraw();

    Plotter& plotter_;
    DrawSurface& canvas_;
    Settings& settings_;
    PlaybackState& playback_;
    UserDialogs& dialogs_;
    ViewHost& host_;
    ViewTransform dragStart_; // the view when the drag began, restored if its end cannot be fitted
};

} // namespace backplot

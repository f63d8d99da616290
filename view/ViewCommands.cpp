#include "ViewCommands.h"

#include "NumberFormat.h"
#include "ResumeNext.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <cmath>

namespace backplot {

namespace {

constexpr float PanStepLength = 0.5f;

// A float field set from a double result: the sum of two floats is exact in double, so
// rounding once here gives what single-precision arithmetic gives.
float Single(double value) { return static_cast<float>(value); }

} // namespace

ViewCommands::ViewCommands(Plotter& plotter, DrawSurface& canvas, Settings& settings, PlaybackState& playback,
                           UserDialogs& dialogs, ViewHost& host)
    : plotter_(plotter), canvas_(canvas), settings_(settings), playback_(playback), dialogs_(dialogs), host_(host)
{
}

void ViewCommands::ClearIfAutoDraw()
{
    if (settings_.AutoDraw)
        canvas_.Clear();
}

void ViewCommands::PlotAnew(const ViewTransform& before)
{
    try {
        plotter_.SetCoords(canvas_);
    } catch (const RunTimeError& e) {
        dialogs_.Message(e.what(), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
        plotter_.View = before;
        ResumeNext([&] { plotter_.SetCoords(canvas_); });
    }
    plotter_.GetRecords(canvas_);
}

// ---- Commands ----

void ViewCommands::Redraw()
{
    canvas_.Clear();
    try {
        plotter_.SetCoords(canvas_);
    } catch (const RunTimeError&) {
        // A view that cannot be fitted keeps the scale it had; the plot still runs.
    }
    if (playback_.SlowMode && !playback_.StepMode) {
        playback_.SlowResume = 1;
        plotter_.DrawAxis(canvas_);
    }
    plotter_.GetRecords(canvas_);
}

void ViewCommands::ZoomExtents()
{
    ExtentsKeyFlag = true;
    // Single stepping and slow motion end here; the toolbar stays as they left it until
    // Enter or Esc restores it.
    playback_.StepMode = false;
    playback_.SlowMode = false;
    playback_.SlowPaused = false;
    host_.EndPlayback();
    plotter_.PlotIndex = 1;
    playback_.SlowResume = 1;
    ClearIfAutoDraw();
    const ViewTransform before = plotter_.View;
    try {
        plotter_.ExtentsWithMargin(canvas_);
    } catch (const RunTimeError& e) {
        dialogs_.Message(e.what(), texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
        plotter_.View = before;
        ResumeNext([&] { plotter_.SetCoords(canvas_); });
    }
    plotter_.GetRecords(canvas_);
}

void ViewCommands::ZoomIn()
{
    if (playback_.SlowMode)
        return;
    ClearIfAutoDraw();
    const ViewTransform before = plotter_.View;
    plotter_.View.SaveView();
    plotter_.View.ZoomIn();
    PlotAnew(before);
}

void ViewCommands::ZoomOut()
{
    if (playback_.SlowMode)
        return;
    ClearIfAutoDraw();
    const ViewTransform before = plotter_.View;
    plotter_.View.SaveView();
    plotter_.View.ZoomOut();
    PlotAnew(before);
}

void ViewCommands::ZoomAbout(bool in, float x, float y)
{
    if (playback_.SlowMode)
        return;
    ClearIfAutoDraw();
    ViewTransform& v = plotter_.View;
    const ViewTransform before = v;
    // Where the point lies across the canvas, as a share of its width and height.
    const double width = canvas_.ScaleWidth(), height = canvas_.ScaleHeight();
    const double shareX = width != 0 ? (x - double(canvas_.ScaleLeft())) / width : 0.5;
    const double shareY = height != 0 ? (y - double(canvas_.ScaleTop())) / height : 0.5;
    v.SaveView();
    in ? v.ZoomIn() : v.ZoomOut();
    const ViewTransform zoomed = v;
    try {
        // Fitted, the point at that share is elsewhere; the whole window moves by the
        // difference, which leaves the spans, and so the scale, as the step made them.
        plotter_.SetCoords(canvas_);
        const double dx = x - (canvas_.ScaleLeft() + shareX * canvas_.ScaleWidth());
        const double dy = y - (canvas_.ScaleTop() + shareY * canvas_.ScaleHeight());
        v.ViewX1 = Single(v.ViewX1 + dx);
        v.ViewX2 = Single(v.ViewX2 + dx);
        v.ViewY1 = Single(v.ViewY1 + dy);
        v.ViewY2 = Single(v.ViewY2 + dy);
    } catch (const RunTimeError&) {
        // PlotAnew meets the same fault on the plain step and reports it.
        v = zoomed;
    }
    PlotAnew(before);
}

void ViewCommands::ZoomPrevious()
{
    if (playback_.SlowMode)
        return;
    const ViewTransform before = plotter_.View;
    ViewTransform& v = plotter_.View;
    v.ViewX1 = v.PrevViewX1;
    v.ViewY1 = v.PrevViewY1;
    v.ViewX2 = v.PrevViewX2;
    v.ViewY2 = v.PrevViewY2;
    // The saved view becomes this one, so a second Previous shows it again.
    v.SaveView();
    PlotAnew(before);
    plotter_.DrawAxis(canvas_);
}

void ViewCommands::ZoomWindow()
{
    if (playback_.SlowMode)
        return;
    ZoomWindowMode = true;
    PanMode = false;
    host_.SetCanvasPointer(CanvasPointer::ZoomWindow);
}

void ViewCommands::Point()
{
    PanMode = true;
    ZoomWindowMode = false;
    plotter_.CurTool = 0;
    plotter_.CurrentColor = static_cast<std::uint32_t>(settings_.DefaultColor);
    host_.SetCanvasPointer(CanvasPointer::Pan);
}

void ViewCommands::PanLeft() { Pan(PanStep::Left); }
void ViewCommands::PanRight() { Pan(PanStep::Right); }
void ViewCommands::PanUp() { Pan(PanStep::Up); }
void ViewCommands::PanDown() { Pan(PanStep::Down); }

void ViewCommands::Pan(PanStep step)
{
    // A fixed step whatever the zoom, played through the handlers a drag goes through:
    // a press at (0, 0), the drag's end set, the release.
    PanMode = true;
    ClearIfAutoDraw();
    MouseDown(MouseButton::Left, 0, 0);
    ViewTransform& v = plotter_.View;
    switch (step) {
    case PanStep::Left:
        v.ViewX2 = Single(static_cast<double>(v.ViewX1) - PanStepLength);
        v.ViewY2 = 0;
        break;
    case PanStep::Right:
        v.ViewX2 = Single(static_cast<double>(v.ViewX1) + PanStepLength);
        v.ViewY2 = 0;
        break;
    case PanStep::Up:
        v.ViewY2 = Single(static_cast<double>(v.ViewY1) - PanStepLength);
        v.ViewX2 = 0;
        break;
    case PanStep::Down:
        v.ViewY2 = Single(static_cast<double>(v.ViewY1) + PanStepLength);
        v.ViewX2 = 0;
        break;
    }
    MouseUp(MouseButton::Left, v.ViewX2, v.ViewY2);
}

// ---- The canvas mouse ----

void ViewCommands::MouseDown(MouseButton button, float x, float y)
{
    ViewTransform& v = plotter_.View;
    if (button == MouseButton::Left && (ZoomWindowMode || PanMode))
        dragStart_ = v;
    // The zoom window starts at the press, drawn in invert mode so erasing is exact.
    if (button == MouseButton::Left && ZoomWindowMode) {
        v.SaveView();
        v.ViewX1 = v.ViewX2 = x;
        v.ViewY1 = v.ViewY2 = y;
        canvas_.SetDrawMode(DrawMode::Invert);
        RubberBoxActive = true;
    }
    // The pan line starts at the press.
    if (button == MouseButton::Left && PanMode) {
        ResumeNext([&] { canvas_.SetDrawStyle(DrawStyle::Solid); });
        v.SaveView();
        v.ViewX1 = v.ViewX2 = x;
        v.ViewY1 = v.ViewY2 = y;
    }
    // Each left click steps while single stepping.
    if (button == MouseButton::Left && playback_.StepMode && !ZoomWindowMode && !PanMode)
        host_.Step();
    // A right click during slow motion runs the slow-motion command, which ends it.
    if (button == MouseButton::Right && playback_.SlowMode)
        host_.SlowMotionToggle();
}

void ViewCommands::CrossHairsAt(float x, float y)
{
    if (settings_.CrossHairs && !RubberBoxActive)
        host_.ShowCrossHairs(x, y);
}

void ViewCommands::MouseMove(bool leftHeld, float x, float y)
{
    if (playback_.SlowMode || host_.FileOperation())
        return;
    // The file on the code line, the readout in machine units.
    const auto [xText, yText] = Readout(x, y, MillMode);
    host_.ShowMousePosition(xText, yText);
    // The cross hairs are overlays: the picture is not touched.
    CrossHairsAt(x, y);

    ViewTransform& v = plotter_.View;
    // The box: the old one erased by drawing it again in invert mode, the new one drawn.
    if (leftHeld && ZoomWindowMode) {
        ResumeNext([&] { canvas_.SetDrawStyle(DrawStyle::Solid); });
        CrossHairsAt(x, y);
        const std::uint32_t pen = canvas_.ForeColor();
        ResumeNext([&] { canvas_.Box(v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, pen); });
        v.ViewX2 = x;
        v.ViewY2 = y;
        ResumeNext([&] { canvas_.Box(v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, pen); });
    }
    // The pan line: the old one overdrawn in the back colour, the new one in black.
    if (leftHeld && PanMode) {
        canvas_.SetDrawMode(DrawMode::CopyPen);
        DrawRubberLine(canvas_, v.ViewX1, v.ViewY1, v.ViewX2, v.ViewY2, canvas_.BackColor());
        DrawRubberLine(canvas_, v.ViewX1, v.ViewY1, x, y, 0);
        v.ViewX2 = x;
        v.ViewY2 = y;
    }
}

void ViewCommands::MouseUp(MouseButton button, float, float)
{
    host_.SetCanvasPointer(CanvasPointer::Default);
    ViewTransform& v = plotter_.View;
    // The dragged corners become the view window.
    if (button == MouseButton::Left && ZoomWindowMode) {
        canvas_.SetDrawMode(DrawMode::CopyPen);
        ResumeNext([&] { canvas_.SetDrawStyle(DrawStyle::Solid); });
        ZoomWindowMode = false;
        canvas_.Clear();
        host_.HideCrossHairs();
        RubberBoxActive = false;
        PlotAnew(dragStart_);
    }
    // The saved view shifted by the drag, so the drawing follows the mouse.
    if (button == MouseButton::Left && PanMode) {
        canvas_.SetDrawMode(DrawMode::CopyPen);
        ResumeNext([&] { canvas_.SetDrawStyle(DrawStyle::Solid); });
        PanMode = false;
        PanDX = Single(std::fabs(static_cast<double>(v.ViewX1) - v.ViewX2));
        PanDY = Single(std::fabs(static_cast<double>(v.ViewY1) - v.ViewY2));
        const double dx = v.ViewX1 < v.ViewX2 ? -static_cast<double>(PanDX) : PanDX;
        const double dy = v.ViewY1 < v.ViewY2 ? -static_cast<double>(PanDY) : PanDY;
        v.ViewX1 = Single(v.PrevViewX1 + dx);
        v.ViewX2 = Single(v.PrevViewX2 + dx);
        v.ViewY1 = Single(v.PrevViewY1 + dy);
        v.ViewY2 = Single(v.PrevViewY2 + dy);
        PlotAnew(dragStart_);
    }
    // The axis after every release once a program is loaded.
    if (host_.ProgramLoaded())
        plotter_.DrawAxis(canvas_);
    host_.SetCanvasPointer(CanvasPointer::Default);
}

std::pair<std::string, std::string> ViewCommands::Readout(float x, float y, bool mill)
{
    const float up = y * -1.0f; // machine Y (or lathe X) grows upward
    if (mill)
        return {texts::ReadoutX + FormatMask6(x), texts::ReadoutY + FormatMask6(up)};
    return {texts::ReadoutZ + FormatMask6(x), texts::ReadoutX + FormatMask6(up * 2.0f)};
}

void ViewCommands::DrawRubberLine(DrawSurface& surface, float x1, float y1, float x2, float y2, std::uint32_t color)
{
    const DrawMode mode = surface.GetDrawMode();
    ResumeNext([&] { surface.Line(x1, y1, x2, y2, color); });
    surface.SetDrawMode(mode);
}

} // namespace backplot

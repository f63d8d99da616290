#pragma once

#include "DrawSurface.h"

namespace backplot {

// The view window and the scale derived from it. All fields are 32-bit floats in plot
// units (record coordinates: X as stored, Y as stored, that is negated) and start at zero.
struct ViewTransform {
    // The view window: after SetCoords, (ViewX1, ViewY1) is the top-left corner (smaller X,
    // smaller stored Y) and (ViewX2, ViewY2) the bottom-right. While a zoom window or a pan
    // is dragged they hold the press point (1) and the current point (2).
    float ViewX1 = 0, ViewY1 = 0, ViewX2 = 0, ViewY2 = 0;
    // The saved view window of Zoom Previous (one level).
    float PrevViewX1 = 0, PrevViewY1 = 0, PrevViewX2 = 0, PrevViewY2 = 0;
    // Program extents, filled by the extents pass; zoom and pan never change them.
    float MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;

    float AspectRatio = 0;  // canvas pixel width / pixel height
    float FitSpan = 0;      // the stretched span: visible height when fitted by width, width when by height
    float BlipSize = 0;     // half-length of a rapid end mark: FitSpan * 0.01
    float TwoPixelSpan = 0; // two canvas pixels in plot units; the shortest arc still drawn

    // Fits the view window to the surface and sets the surface's user scale, keeping plot
    // units square. The window is fitted by its width when dy <= dx, by its height
    // otherwise, whatever the surface's shape; the other axis is centred and the view
    // fields along it are widened to what is visible. Corners given in reverse order are
    // put in order first. A single-point window (both corners equal) changes nothing, the
    // surface's scale included.
    //
    // Arithmetic is done in double and stored in floats, in a fixed order; a division by
    // zero, an overflow or an invalid result raises RunTimeError and leaves the fields
    // written so far.
    void SetCoords(DrawSurface& canvas);

    // Keeps the view window for Zoom Previous; one level only.
    void SaveView();
    // Every edge moves 0.3 FitSpan outward (ZoomOut) or inward (ZoomIn); the same
    // distance in X and Y. Edges crossed by ZoomIn are put back in order by SetCoords.
    void ZoomOut();
    void ZoomIn();
};

} // namespace backplot

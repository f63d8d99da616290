#pragma once

#include "DrawSurface.h"
#include "EntityRecord.h"
#include "Settings.h"
#include "ViewTransform.h"

#include <cstdint>

namespace backplot {

// The page mapping of the last SetPrinter; it stays for the drawing steps of later prints
// and previews. 32-bit floats, plot units unless said otherwise.
struct PrintMapping {
    float PageAspect = 0;   // page width / page height, in the printer's units
    float PrintHeight = 0;  // the height the page spans when the view's width fills it
    float PrinterPixel = 0; // two screen pixels' worth of page: shorter arcs are not printed
    float MarkSize = 0;     // half-length of a blip: 1 % of the fitted extent
};

// Draws entity records as the printer sees them, on the printer's page or on the preview
// canvas: the screen's rules kind by kind (EntityRenderer), in black ink, with these
// differences:
//  - with "Show Axis" on, every record first draws the two axis lines across the whole
//    surface window in dash-dot-dot, then the style goes back to solid;
//  - a rapid is drawn (dotted) only with "Show Rapid" on, and its end mark, solid, of
//    half-size MarkSize only with "Show Blips" on;
//  - an arc shorter than PrinterPixel is left out, and an arc is always a chain of 72
//    chords (PrintArc), whatever its radius.
// Reads the settings and the view window live; both must outlive the renderer. A failing
// primitive raises out of PrintEntity: a print stops at its first fault.
class PrintRenderer {
public:
    PrintRenderer(const Settings& settings, ViewTransform& view, PrintMapping& mapping)
        : settings_(settings), view_(view), mapping_(mapping)
    {
    }

    // The colour arcs are printed in; the print and preview passes set it to 0 (black)
    // before each record.
    std::uint32_t ArcColor = 0;
    // The angles of the last arc handed to PrintArc, radians.
    float ArcStartRad = 0, ArcEndRad = 0;

    // Fits the view window onto a page of pageWidth x pageHeight printer units (whole
    // numbers, twips) and sets the page's user scale:
    //  1. an empty view (both corners equal) changes nothing;
    //  2. PageAspect = pageWidth / pageHeight;
    //  3. the corners are put in order;
    //  4-5. a view at least as wide as high fills the page's width and is centred
    //     vertically: PrintHeight = width / PageAspect, scale (x1, y1 + h/2 - PrintHeight/2,
    //     w, PrintHeight); a higher view fills the height and is centred horizontally:
    //     scale (x1 + w/2 - h PageAspect/2, y1, h PageAspect, h), PrintHeight unchanged;
    //  6. the view window becomes the page's window (the new top or left as the page
    //     holds it, the far edge that + the fitted extent);
    //  7. PrinterPixel = 2 fitted extent / (the page's extent along it / screenTwipsPerPixel),
    //     MarkSize = 0.01 fitted extent.
    // Arithmetic in double, stored in floats. Raises RunTimeError for a page of no size.
    void SetPrinter(DrawSurface& page, int pageWidth, int pageHeight, double screenTwipsPerPixel);

    // Draws one record on the printer's page.
    void PrintEntity(DrawSurface& surface, const EntityRecord& record);
    // The same on the preview canvas.
    void PrintPreview(DrawSurface& canvas, const EntityRecord& record) { PrintEntity(canvas, record); }

    // An arc as 72 chords computed with cosine and sine, counter-clockwise from startAngle
    // to endAngle (radians); equal angles make the whole circle. Keeps the angles in
    // ArcStartRad/ArcEndRad.
    void PrintArc(DrawSurface& surface, double xCen, double yCen, double radius, std::uint32_t color,
                  float startAngle, float endAngle);
    // The same on the preview canvas.
    void PrintArcCircles(DrawSurface& canvas, double xCen, double yCen, double radius, std::uint32_t color,
                         float startAngle, float endAngle)
    {
        PrintArc(canvas, xCen, yCen, radius, color, startAngle, endAngle);
    }

private:
    void PrintRapid(DrawSurface& s, const EntityRecord& r);
    void PrintCut(DrawSurface& s, const EntityRecord& r);
    void PrintArcRecord(DrawSurface& s, const EntityRecord& r, bool clockwise);

    const Settings& settings_;
    ViewTransform& view_;
    PrintMapping& mapping_;
};

} // namespace backplot

#pragma once

// The translator and the plotter of a window, on a scratch data folder and a 400 x 200
// recording canvas: the rig of the drawing, playback and output tests.

#include "Plotter.h"
#include "RecordingSurface.h"
#include "TranslatorRig.h"
#include "ViewTransform.h"

#include <ostream>
#include <vector>

namespace backplot::test {

using Kind = RecordingSurface::Kind;

// One straight cut as drawn: the start of its first half-line, and its colour.
struct Drawn {
    double x;
    std::uint32_t color;
    bool operator==(const Drawn&) const = default;
    friend void PrintTo(const Drawn& d, std::ostream* os) { *os << "cut " << d.x << " colour " << std::hex << d.color; }
};

inline void SetView(ViewTransform& view, float x1, float y1, float x2, float y2)
{
    view.ViewX1 = x1, view.ViewY1 = y1, view.ViewX2 = x2, view.ViewY2 = y2;
}

struct PlotRig : TranslatorRig {
    using TranslatorRig::TranslatorRig;
    Settings settings;
    Plotter plotter{settings, translator.ToolColors(), translator.State(), playback, translator.Record(),
                    dialogs,  events,                  [this] { return translator.RecordFilePath(); }};
    RecordingSurface canvas{400, 200};

    // Writes the records and fits the view to them, with the opened view's margin when
    // asked (so that the axis shows), on `surface` or the canvas; forgets what that drew
    // and asked.
    void Load(const std::vector<EntityRecord>& records, bool margin = false, DrawSurface* surface = nullptr)
    {
        Write(records);
        margin ? plotter.ExtentsWithMargin(surface ? *surface : canvas) : plotter.ComputeExtents(canvas);
        canvas.ForgetPrimitives();
        dialogs.Pointers.clear();
    }
    // Translates a program and counts its records as the extents pass does; the view
    // window is the test's.
    void Open(const std::string& program)
    {
        Run(program);
        plotter.RecordTotal = plotter.PlotLast = state().RecordCount;
    }
    void SetView(float x1, float y1, float x2, float y2) { test::SetView(plotter.View, x1, y1, x2, y2); }

    // The straight cuts drawn (two half-lines and the midpoint), in drawing order.
    std::vector<Drawn> CutsDrawn() const
    {
        std::vector<Drawn> cuts;
        const auto& log = canvas.Primitives();
        for (std::size_t i = 0; i + 2 < log.size(); ++i)
            if (log[i].Type == Kind::Line && log[i + 1].Type == Kind::Line && log[i + 2].Type == Kind::PSet) {
                cuts.push_back({log[i].X1, log[i].Color});
                i += 2;
            }
        return cuts;
    }
    std::vector<double> XsDrawn() const
    {
        std::vector<double> xs;
        for (const Drawn& cut : CutsDrawn())
            xs.push_back(cut.x);
        return xs;
    }
    int Count(Kind kind) const
    {
        int n = 0;
        for (const auto& p : canvas.Primitives())
            n += p.Type == kind;
        return n;
    }
};

} // namespace backplot::test

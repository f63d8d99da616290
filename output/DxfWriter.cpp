#include "DxfWriter.h"

#include "DxfReal.h"

#include <initializer_list>
#include <string_view>

namespace backplot {

namespace {

void Put(std::string& out, std::string_view line)
{
    out += line;
    out += "\r\n";
}

void Put(std::string& out, std::initializer_list<std::string_view> lines)
{
    for (std::string_view line : lines)
        Put(out, line);
}

void PutSingle(std::string& out, std::string_view code, float value)
{
    Put(out, code);
    Put(out, DxfSingle(value));
}

// A point on the drawing plane: X and Y under their group codes, Z always "0". `codes` are
// the three codes, "10", "20", "30" for a first point and "11", "21", "31" for a second.
void PutPoint(std::string& out, const std::string_view (&codes)[3], float x, float y)
{
    PutSingle(out, codes[0], x);
    PutSingle(out, codes[1], y);
    Put(out, {codes[2], "0"});
}

constexpr std::string_view FirstPoint[3] = {"10", "20", "30"};
constexpr std::string_view SecondPoint[3] = {"11", "21", "31"};

struct LineType {
    std::string_view Name;
    std::string_view Description;
    double PatternLength;
    std::initializer_list<double> Dashes;
};

// DASHDOT's description repeats DOT's.
const LineType LineTypes[] = {
    {"CONTINUOUS", "Solid Line", 0.0, {}},
    {"DASHED", "Dashed Line", 0.8, {0.5, -0.3}},
    {"DOT", "dotted Line", 0.2, {0.1, -0.1}},
    {"DASHDOT", "dotted Line", 1, {0.5, -0.2, 0.1, -0.2}},
    {"SMALLDOT", "Small dotted", 0.1, {0, -0.1}},
    {"CENTER", "Centerline", 1.1, {0.8, -0.1, 0.1, -0.1}},
};

struct Layer {
    std::string_view Name;
    std::string_view Color;
};

// CYAN_LAYER shares BLUE_LAYER's colour number.
constexpr Layer Layers[] = {
    {"BLACK_LAYER", "7"}, {"RED_LAYER", "1"},    {"BLUE_LAYER", "5"},
    {"GREEN_LAYER", "3"}, {"YELLOW_LAYER", "2"}, {"CYAN_LAYER", "5"},
};

} // namespace

void WriteDxfHeader(std::string& out, const DxfCanvasScale& canvas)
{
    Put(out, {"0", "SECTION", "2", "HEADER", "9", "$EXTMIN"});
    PutSingle(out, "10", canvas.Left);
    PutSingle(out, "20", canvas.Top);
    Put(out, {"9", "$EXTMAX"});
    PutSingle(out, "10", canvas.Width);
    PutSingle(out, "20", canvas.Top + canvas.Height); // a 32-bit sum
    Put(out, {"0", "ENDSEC"});
}

void WriteDxfTables(std::string& out)
{
    Put(out, {"0", "SECTION", "2", "TABLES"});

    Put(out, {"0", "TABLE", "2", "LTYPE", "70", "4"});
    for (const LineType& type : LineTypes) {
        Put(out, {"0", "LTYPE", "2", type.Name, "70", "64", "3", type.Description, "72", "65", "73"});
        Put(out, std::to_string(type.Dashes.size()));
        Put(out, "40");
        Put(out, DxfDouble(type.PatternLength));
        for (double dash : type.Dashes) {
            Put(out, "49");
            Put(out, DxfDouble(dash));
        }
    }
    Put(out, {"0", "ENDTAB"});

    Put(out, {"0", "TABLE", "2", "LAYER", "70", "6"});
    for (const Layer& layer : Layers)
        Put(out, {"0", "LAYER", "2", layer.Name, "70", "0", "62", layer.Color, "6", "CONTINUOUS"});
    Put(out, {"0", "ENDTAB"});

    Put(out, {"0", "TABLE", "2", "VIEW", "70", "0", "0", "ENDTAB"});
    Put(out, {"0", "ENDSEC"});
}

void WriteDxfBlocks(std::string& out) { Put(out, {"0", "SECTION", "2", "BLOCKS", "0", "ENDSEC"}); }

void WriteDxfEntitiesName(std::string& out) { Put(out, {"0", "SECTION", "2", "ENTITIES"}); }

void WriteDxfLines(std::string& out, const DxfCollection& dxf)
{
    for (const DxfLine& line : dxf.Lines) {
        Put(out, {"0", "LINE", "8", line.Layer});
        PutPoint(out, FirstPoint, line.X1, line.Y1);
        PutPoint(out, SecondPoint, line.X2, line.Y2);
    }
}

void WriteDxfCircles(std::string& out, const DxfCollection& dxf)
{
    for (const DxfCircle& circle : dxf.Circles) {
        Put(out, {"0", "CIRCLE", "8", circle.Layer});
        PutPoint(out, FirstPoint, circle.CenterX, circle.CenterY);
        PutSingle(out, "40", circle.Radius);
    }
}

void WriteDxfArcs(std::string& out, const DxfCollection& dxf)
{
    for (const DxfArc& arc : dxf.Arcs) {
        Put(out, {"0", "ARC", "8", arc.Layer});
        PutPoint(out, FirstPoint, arc.CenterX, arc.CenterY);
        PutSingle(out, "40", arc.Radius);
        PutSingle(out, "50", arc.StartAngle);
        PutSingle(out, "51", arc.EndAngle);
    }
}

void WriteDxfEnd(std::string& out) { Put(out, {"0", "ENDSEC", "0", "EOF"}); }

std::string DxfDocument(const DxfCanvasScale& canvas, const DxfCollection& dxf)
{
    std::string out;
    // About 120 bytes per line entity, a little more per arc.
    out.reserve(2048 + 120 * dxf.Lines.size() + 110 * dxf.Circles.size() + 150 * dxf.Arcs.size());
    WriteDxfHeader(out, canvas);
    WriteDxfTables(out);
    WriteDxfBlocks(out);
    WriteDxfEntitiesName(out);
    WriteDxfLines(out, dxf);
    WriteDxfCircles(out, dxf);
    WriteDxfArcs(out, dxf);
    WriteDxfEnd(out);
    return out;
}

} // namespace backplot

#pragma once

#include "TranslationState.h"

#include <string>

namespace backplot {

// The user scale of the plot canvas at the moment of export (plot units: X as stored, Y
// negated), which the header gives as the drawing's extents.
struct DxfCanvasScale {
    float Left = 0, Top = 0, Width = 0, Height = 0;
};

// The pieces of the ASCII DXF text, each appending its lines to `out`. Every line ends in
// CR LF; group codes are plain integers; reals follow DxfSingle / DxfDouble.
//
// The header's $EXTMAX X is the canvas width alone, not left + width, and its Y values are
// canvas units (negated machine Y) while the entities carry machine Y: both are kept as
// drawings made by earlier versions have them. The line-type table says it holds 4 entries
// and holds 6, for the same reason.
void WriteDxfHeader(std::string& out, const DxfCanvasScale& canvas);
// Line types, layers and an empty view table.
void WriteDxfTables(std::string& out);
// An empty blocks section.
void WriteDxfBlocks(std::string& out);
// Opens the entities section.
void WriteDxfEntitiesName(std::string& out);
// The collected entities in collection order; Z is always 0.
void WriteDxfLines(std::string& out, const DxfCollection& dxf);
void WriteDxfCircles(std::string& out, const DxfCollection& dxf);
void WriteDxfArcs(std::string& out, const DxfCollection& dxf);
// Closes the entities section and the file.
void WriteDxfEnd(std::string& out);

// The whole text: header, tables, blocks, all lines, all circles, all arcs, end.
std::string DxfDocument(const DxfCanvasScale& canvas, const DxfCollection& dxf);

} // namespace backplot

#include "DxfExport.h"
#include "OutputTestSupport.h"
#include "ScaleSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <vector>

namespace backplot {
namespace {

struct Exported {
    std::string Program;
    std::string File;
    DxfCanvasScale Canvas;
    DxfCollection Collected;
    std::size_t ArcRecords = 0; // records of kind CIRCLE, ARC or ARC1
    std::size_t CircleRecords = 0;
};

// What the independent reader found in one file.
struct ReadBack {
    std::map<std::string, std::vector<double>> Rows; // "LINE" -> count, first, last values
};

std::vector<std::string> CorpusPrograms()
{
    std::ifstream manifest(test::CorpusDir() / "MANIFEST.tsv");
    std::vector<std::string> programs;
    std::string line;
    std::getline(manifest, line); // the column names
    while (std::getline(manifest, line))
        if (!line.empty())
            programs.push_back(line.substr(0, line.find('\t')));
    return programs;
}

// The window's export right after opening the program on an 800 x 600 canvas.
Exported Export(const std::string& program, const std::filesystem::path& out)
{
    const bool lathe = program.starts_with("lathe/");
    test::PlotRig rig;
    rig.Config.Mill = !lathe;
    rig.T.State().Mill = !lathe;
    const std::string source = test::ReadAll(test::CorpusDir() / program);
    rig.Translate(source);
    ScaleSurface canvas(800, 600);
    rig.View.ExtentsWithMargin(canvas);

    Exported e;
    e.Program = program;
    e.File = out.string();
    e.Canvas = {canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};
    RecordFileReader reader;
    reader.Open(rig.T.RecordFilePath());
    EntityRecord record;
    for (std::int32_t n = 1; n <= reader.RecordTotal(); ++n) {
        reader.Read(n, record);
        e.CircleRecords += record.Kind() == "CIRCLE";
        e.ArcRecords += record.Kind() == "ARC" || record.Kind() == "ARC1";
    }
    reader.Close();

    const std::size_t before = rig.Dialogs.Messages.size();
    DxfExport(rig.T, rig.Dialogs).GetDXFCoords();
    EXPECT_EQ(rig.Dialogs.Messages.size(), before) << program << ": the re-run reported an error";
    e.Collected = rig.T.Dxf();
    std::string error;
    EXPECT_TRUE(DxfExport::WriteTextFile(e.File, DxfDocument(e.Canvas, e.Collected), error)) << error;
    return e;
}

std::map<std::string, ReadBack> ReadWithEzdxf(const std::vector<Exported>& files)
{
    std::string command = "/usr/bin/python3 " + (test::SourceDir() / "tests" / "output" / "read_dxf.py").string();
    for (const Exported& e : files)
        command += " '" + e.File + "'";
    std::map<std::string, ReadBack> found;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe)
        return found;
    std::string text;
    char buffer[4096];
    while (std::size_t n = std::fread(buffer, 1, sizeof buffer, pipe.get()))
        text.append(buffer, n);
    std::istringstream lines(text);
    std::string line, current;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string kind;
        words >> kind;
        if (kind == "FILE") {
            words >> current;
            continue;
        }
        std::vector<double> numbers;
        for (double v; words >> v;)
            numbers.push_back(v);
        found[current].Rows[kind] = numbers;
    }
    return found;
}

// Reals are written with 7 significant digits.
void ExpectSeven(double read, float written, const std::string& what)
{
    EXPECT_NEAR(read, written, 1e-6 * std::max(1.0, std::fabs(static_cast<double>(written)))) << what;
}

TEST(DxfCorpus, EveryProgramReadsBackWithItsEntities)
{
    const std::vector<std::string> programs = CorpusPrograms();
    ASSERT_GE(programs.size(), 20u) << "corpus not found at " << test::CorpusDir();
    test::ScratchDir out;
    std::vector<Exported> files;
    for (std::size_t i = 0; i < programs.size(); ++i)
        files.push_back(Export(programs[i], out.Path() / ("corpus" + std::to_string(i) + ".dxf")));

    const std::map<std::string, ReadBack> found = ReadWithEzdxf(files);
    ASSERT_EQ(found.size(), files.size()) << "ezdxf did not read every file";
    for (const Exported& e : files) {
        SCOPED_TRACE(e.Program);
        const auto& rows = found.at(e.File).Rows;
        const DxfCollection& c = e.Collected;
        ASSERT_EQ(rows.at("LINE").at(0), static_cast<double>(c.Lines.size()));
        ASSERT_EQ(rows.at("CIRCLE").at(0), static_cast<double>(c.Circles.size()));
        ASSERT_EQ(rows.at("ARC").at(0), static_cast<double>(c.Arcs.size()));
        EXPECT_EQ(rows.at("OTHER").at(0), 0);
        // Arcs and circles come from the same blocks as the arc records.
        EXPECT_EQ(c.Circles.size(), e.CircleRecords);
        EXPECT_EQ(c.Arcs.size(), e.ArcRecords);

        ExpectSeven(rows.at("EXTMIN").at(0), e.Canvas.Left, "$EXTMIN x");
        ExpectSeven(rows.at("EXTMIN").at(1), e.Canvas.Top, "$EXTMIN y");
        ExpectSeven(rows.at("EXTMAX").at(0), e.Canvas.Width, "$EXTMAX x");
        ExpectSeven(rows.at("EXTMAX").at(1), e.Canvas.Top + e.Canvas.Height, "$EXTMAX y");
        if (!c.Lines.empty()) {
            const std::vector<double>& v = rows.at("LINE");
            for (const auto& [at, line] : {std::pair{1, c.Lines.front()}, std::pair{5, c.Lines.back()}}) {
                ExpectSeven(v.at(at), line.X1, "line x1");
                ExpectSeven(v.at(at + 1), line.Y1, "line y1");
                ExpectSeven(v.at(at + 2), line.X2, "line x2");
                ExpectSeven(v.at(at + 3), line.Y2, "line y2");
            }
        }
        if (!c.Circles.empty()) {
            const std::vector<double>& v = rows.at("CIRCLE");
            ExpectSeven(v.at(1), c.Circles.front().CenterX, "circle x");
            ExpectSeven(v.at(3), c.Circles.front().Radius, "circle radius");
            ExpectSeven(v.at(6), c.Circles.back().Radius, "last circle radius");
        }
        if (!c.Arcs.empty()) {
            const std::vector<double>& v = rows.at("ARC");
            ExpectSeven(v.at(2), c.Arcs.front().CenterY, "arc y");
            ExpectSeven(v.at(4), c.Arcs.front().StartAngle, "arc start");
            ExpectSeven(v.at(5), c.Arcs.front().EndAngle, "arc end");
            ExpectSeven(v.at(8), c.Arcs.back().Radius, "last arc radius");
            ExpectSeven(v.at(10), c.Arcs.back().EndAngle, "last arc end");
        }
    }
}

} // namespace
} // namespace backplot

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
        // Counts, then the values of the first entity of each kind, 7 digits each.
        using Numbers = std::vector<double>;
        const std::pair<const char*, Numbers> expected[] = {
            {"EXTMIN", {e.Canvas.Left, e.Canvas.Top}},
            {"EXTMAX", {e.Canvas.Width, e.Canvas.Top + e.Canvas.Height}},
            {"LINE", c.Lines.empty() ? Numbers{0}
                                     : Numbers{double(c.Lines.size()), c.Lines[0].X1, c.Lines[0].Y1, c.Lines[0].X2,
                                               c.Lines[0].Y2}},
            {"CIRCLE", c.Circles.empty() ? Numbers{0}
                                         : Numbers{double(c.Circles.size()), c.Circles[0].CenterX,
                                                   c.Circles[0].CenterY, c.Circles[0].Radius}},
            {"ARC", c.Arcs.empty() ? Numbers{0}
                                   : Numbers{double(c.Arcs.size()), c.Arcs[0].CenterX, c.Arcs[0].CenterY,
                                             c.Arcs[0].Radius, c.Arcs[0].StartAngle, c.Arcs[0].EndAngle}},
            {"OTHER", {0}},
        };
        for (const auto& [kind, numbers] : expected) {
            const Numbers& read = rows.at(kind);
            ASSERT_EQ(read.size(), numbers.size()) << kind;
            for (std::size_t i = 0; i < numbers.size(); ++i)
                EXPECT_NEAR(read[i], numbers[i], 1e-6 * std::max(1.0, std::fabs(numbers[i]))) << kind << " " << i;
        }
        // Arcs and circles come from the same blocks as the arc records.
        EXPECT_EQ(c.Circles.size(), e.CircleRecords);
        EXPECT_EQ(c.Arcs.size(), e.ArcRecords);
    }
}

} // namespace
} // namespace backplot

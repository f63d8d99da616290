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

using Numbers = std::vector<double>;

// One exported file and what read_dxf.py must find in it: per row, the count and the
// values of the first entity of that kind.
struct Exported { std::string Program, File; std::map<std::string, Numbers> Expected; };

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
    test::PlotRig rig;
    rig.settings.Mill = rig.translator.State().Mill = !program.starts_with("lathe/");
    rig.Run(test::ReadAll(test::CorpusDir() / program));
    ScaleSurface canvas(800, 600);
    rig.plotter.ExtentsWithMargin(canvas);
    const DxfCanvasScale scale{canvas.ScaleLeft(), canvas.ScaleTop(), canvas.ScaleWidth(), canvas.ScaleHeight()};

    std::size_t arcRecords = 0, circleRecords = 0;
    for (const EntityRecord& record : rig.Records()) {
        circleRecords += record.Kind() == "CIRCLE";
        arcRecords += record.Kind() == "ARC" || record.Kind() == "ARC1";
    }

    const std::size_t before = rig.dialogs.Messages.size();
    DxfExport(rig.translator, rig.dialogs).GetDXFCoords();
    EXPECT_EQ(rig.dialogs.Messages.size(), before) << program << ": the re-run reported an error";
    const DxfCollection& c = rig.translator.Dxf();
    // Arcs and circles come from the same blocks as the arc records.
    EXPECT_EQ(c.Circles.size(), circleRecords) << program;
    EXPECT_EQ(c.Arcs.size(), arcRecords) << program;
    Exported e{program, out.string(), {{"EXTMIN", {scale.Left, scale.Top}},
                                       {"EXTMAX", {scale.Width, scale.Top + scale.Height}},
                                       {"LINE", {double(c.Lines.size())}}, {"CIRCLE", {double(c.Circles.size())}},
                                       {"ARC", {double(c.Arcs.size())}},
                                       {"OTHER", {0}}}};
    const auto then = [&e](const char* kind, std::initializer_list<double> values) {
        e.Expected[kind].insert(e.Expected[kind].end(), values);
    };
    if (!c.Lines.empty())
        then("LINE", {c.Lines[0].X1, c.Lines[0].Y1, c.Lines[0].X2, c.Lines[0].Y2});
    if (!c.Circles.empty())
        then("CIRCLE", {c.Circles[0].CenterX, c.Circles[0].CenterY, c.Circles[0].Radius});
    if (!c.Arcs.empty())
        then("ARC", {c.Arcs[0].CenterX, c.Arcs[0].CenterY, c.Arcs[0].Radius, c.Arcs[0].StartAngle, c.Arcs[0].EndAngle});
    std::string error;
    EXPECT_TRUE(DxfExport::WriteTextFile(e.File, DxfDocument(scale, c), error)) << error;
    return e;
}

// What the independent reader found: file -> row name -> numbers.
std::map<std::string, std::map<std::string, Numbers>> ReadWithEzdxf(const std::vector<Exported>& files)
{
    std::string command = "/usr/bin/python3 " + (test::SourceDir() / "tests" / "output" / "read_dxf.py").string();
    for (const Exported& e : files)
        command += " '" + e.File + "'";
    std::map<std::string, std::map<std::string, Numbers>> found;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string text;
    char buffer[4096];
    while (std::size_t n = pipe ? std::fread(buffer, 1, sizeof buffer, pipe.get()) : 0)
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
        Numbers& numbers = found[current][kind];
        for (double v; words >> v;)
            numbers.push_back(v);
    }
    return found;
}

TEST(DxfCorpus, EveryProgramReadsBackWithItsEntities)
{
    if (test::CorpusDir().empty())
        GTEST_SKIP() << test::CorpusMissing();
    const std::vector<std::string> programs = CorpusPrograms();
    ASSERT_GE(programs.size(), 20u) << "the corpus at " << test::CorpusDir() << " lacks its manifest";
    test::ScratchDir out;
    std::vector<Exported> files;
    for (std::size_t i = 0; i < programs.size(); ++i)
        files.push_back(Export(programs[i], out.Path() / ("corpus" + std::to_string(i) + ".dxf")));

    const auto found = ReadWithEzdxf(files);
    ASSERT_EQ(found.size(), files.size()) << "ezdxf did not read every file";
    for (const Exported& e : files) {
        SCOPED_TRACE(e.Program);
        for (const auto& [kind, numbers] : e.Expected) {
            const Numbers& read = found.at(e.File).at(kind);
            ASSERT_EQ(read.size(), numbers.size()) << kind;
            for (std::size_t i = 0; i < numbers.size(); ++i) // 7 digits each
                EXPECT_NEAR(read[i], numbers[i], 1e-6 * std::max(1.0, std::fabs(numbers[i]))) << kind << " " << i;
        }
    }
}

} // namespace
} // namespace backplot

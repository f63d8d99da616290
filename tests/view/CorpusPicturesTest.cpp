#include "Checksums.h"
#include "ImageSurface.h"
#include "PlotRig.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace backplot;
using namespace backplot::test;
namespace fs = std::filesystem;

namespace {

std::string PictureChecksum(const ImageSurface& surface)
{
    const QImage picture = surface.VisibleImage();
    return Checksum({reinterpret_cast<const char*>(picture.constBits()), static_cast<std::size_t>(picture.sizeInBytes())});
}

} // namespace

// Every corpus program drawn as opened and zoomed in three steps, where most of it lies
// beyond the picture's edges, leaves the very pixels it left before the plot pass was made
// faster. The stored checksums come from that plot pass.
TEST(CorpusPictures, EveryPixelAsBefore)
{
    if (CorpusDir().empty())
        GTEST_SKIP() << CorpusMissing();
    ChecksumTable table(SourceDir() / "tests/view/corpus-pictures.txt");
    std::size_t compared = 0;
    for (const std::string kind : {"mill", "lathe"}) {
        for (const auto& entry : fs::directory_iterator(CorpusDir() / kind)) {
            PlotRig rig(kind == "mill");
            rig.RunFile(entry.path().string());
            Plotter& plotter = rig.plotter;
            ImageSurface picture(1000, 700);
            plotter.ExtentsWithMargin(picture);
            plotter.GetRecords(picture);
            const std::string key = (fs::path(kind) / entry.path().filename()).string();
            std::string found = PictureChecksum(picture);
            for (int step = 0; step < 3; ++step)
                plotter.View.ZoomIn();
            plotter.SetCoords(picture);
            plotter.GetRecords(picture);
            found.append(" ").append(PictureChecksum(picture));
            EXPECT_EQ(found, table.Expected(key, found)) << key;
            ++compared;
        }
    }
    if (!table.Writing()) {
        EXPECT_EQ(compared, table.Size()) << "programs came or went since the table was made";
    }
}

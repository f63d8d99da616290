// One entry point for every benchmark file of this folder.
#include <QApplication>
#include <benchmark/benchmark.h>

// The window benchmarks need an application object; the others do not mind one. It never
// shows anything: the offscreen platform needs no display, and timings do not depend on one.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#!/bin/bash
# Runs the benchmarks (medians of 5) and the million-line window measurement, and writes the
# speed table of README.md, with the machine and the date, between its two marker lines.
#
# usage: scripts/bench-table.sh [BUILD_DIR]     (default: build; run `make build` first)
#
# The window measurement needs Xvfb, xdotool and strace; without them its rows say so.
set -euo pipefail

here=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$here/build}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if ! QT_QPA_PLATFORM=offscreen "$build/bench/backplot-bench" --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true --benchmark_out="$work/bench.json" --benchmark_out_format=json \
    > "$work/bench.txt" 2>&1; then
    cat "$work/bench.txt" >&2
    exit 1
fi

# A million lines of straight cuts, the same each time.
python3 - "$work/million.nc" <<'EOF'
import random, sys
r = random.Random(5)
x = y = 0.0
with open(sys.argv[1], "w") as f:
    f.write("(ONE MILLION LINES)\nG21 G90 G17\nT1 M6\nG0 X0. Y0. Z5.\n")
    for _ in range(1000000 - 4):
        x, y = round(x + r.uniform(-1, 1), 3), round(y + r.uniform(-1, 1), 3)
        f.write("G1 X%.3f Y%.3f F300.\n" % (x, y))
EOF
if command -v Xvfb > /dev/null && command -v xdotool > /dev/null && command -v strace > /dev/null; then
    python3 "$here/scripts/window-memory.py" "$build/app/backplot" "$work/million.nc" > "$work/window.txt"
else
    echo "not measured: Xvfb, xdotool and strace are needed" > "$work/window.txt"
fi

python3 - "$here/README.md" "$work/bench.json" "$work/window.txt" <<'EOF'
import datetime, json, os, platform, re, subprocess, sys

readme, bench, window = sys.argv[1:4]
LINES, RECORDS = 32767, 30577

# name: (what it times, target, how the median reads)
ROWS = {
    "BM_TranslateGenerated": ("normalise + translate a generated 32,767-line milling program (30,577 records), files on disk",
                              "4 M lines/s", "lines"),
    "BM_NormaliseGenerated": ("normalising that program alone", "", "lines"),
    "BM_TranslateLargestCorpus": ("the same on the largest corpus program (2,520 of its lines past the 16-bit line counter, each answered OK)",
                                  "", "lines"),
    "BM_PlotPass": ("extents pass + plot pass of the 30,577 records onto a 1920x1080 image", "20 ms", ""),
    "BM_ZoomStep": ("SaveView, ZoomIn (or out), SetCoords and the whole plot pass at 1920x1080", "20 ms", ""),
    "BM_OpenToPicture": ("`OpenFile` end to end in an offscreen window with a 1920x1080 canvas", "150 ms", ""),
    "BM_CrossHairMouseMove": ("the readout and the cross-hair overlay, no redraw", "1 ms", ""),
    "BM_ElementStep": ("one single block step deep into the 32,767-line program", "1 ms", ""),
    "BM_DetailsReport": ("the longest step details report", "1 ms", ""),
    "BM_PlotToolToTool": ("a tool-to-tool pass over the 30,577 records", "", ""),
    "BM_SlowMotionReplay": ("100 records at Slow Time .05", "about 5 s", ""),
    "BM_DxfExportGenerated": ("the DXF export of the 32,767-line program (re-run and writing, 26,187 entities)", "100 ms", ""),
    "BM_PrintGeneratedToPdf": ("printing the 30,577 records to a PDF", "1 s", ""),
}
UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def readable(seconds):
    for unit, size in (("s", 1.0), ("ms", 1e-3), ("µs", 1e-6), ("ns", 1e-9)):
        if seconds >= size:
            return "%.3g %s" % (seconds / size, unit)
    return "0"


medians = {}
with open(bench) as f:
    data = json.load(f)
for b in data["benchmarks"]:
    if b.get("aggregate_name") == "median":
        name = b["run_name"].split("/")[0]
        scale = UNITS[b["time_unit"]]
        medians[name] = (b["cpu_time"] * scale, b["real_time"] * scale, b)

rows = []
for name, (what, target, kind) in ROWS.items():
    if name not in medians:
        rows.append("| `%s` | %s | not run | | %s |" % (name, what, target))
        continue
    cpu, wall, record = medians[name]
    cell = readable(cpu)
    if kind == "lines":
        lines = record.get("lines", LINES)
        cell += " (%.2f M lines/s)" % (lines / cpu / 1e6)
    rows.append("| `%s` | %s | %s | %s | %s |" % (name, what, cell, readable(wall), target))

with open(window) as f:
    figures = f.read()
def figure(pattern):
    m = re.search(pattern, figures)
    return m.group(1) if m else "not measured"
rows.append("| window, 1,000,000 lines | open the program (27.7 MB) given on the command line, the error box at line 32,768 answered Cancel: peak memory | %s MB | | 120 MB |"
            % figure(r"peak resident \(VmHWM\) ([\d.]+) MB"))
rows.append("| | resident memory once the window is idle | %s MB | | 80 MB |" % figure(r"resident \(VmRSS\) ([\d.]+) MB"))
rows.append("| | the longest time the window let no events run, from start to idle (under strace) | %s ms | | 100 ms |"
            % figure(r"longest time without events: (\d+) ms"))

def first_line(command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip().splitlines()[0]
    except Exception:
        return "unknown"

model = next((l.split(":", 1)[1].strip() for l in open("/proc/cpuinfo") if l.startswith("model name")), "unknown CPU")
memory = next((int(l.split()[1]) // 1024 for l in open("/proc/meminfo") if l.startswith("MemTotal")), 0)
debian = open("/etc/debian_version").read().strip() if os.path.exists("/etc/debian_version") else platform.platform()
commit = first_line(["git", "-C", os.path.dirname(readme), "rev-parse", "--short", "HEAD"])
table = "\n".join([
    "<!-- bench-table: written by scripts/bench-table.sh; run it again rather than editing -->",
    "Measured %s on %s (%d cores, %d MB, Debian %s, kernel %s), Release build of %s."
    % (datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d %H:%M UTC"), model, os.cpu_count(), memory,
       debian, platform.release(), commit),
    "Medians of 5 runs. The CPU time is the process's own, the kernel's work for it included; the load",
    "of a shared machine disturbs it least, so the targets are read against it.",
    "",
    "| benchmark | what it times | CPU time | wall time | target |",
    "|---|---|---|---|---|",
    *rows,
    "<!-- bench-table end -->",
])

with open(readme) as f:
    text = f.read()
start = text.index("<!-- bench-table:")
end = text.index("<!-- bench-table end -->") + len("<!-- bench-table end -->")
with open(readme, "w") as f:
    f.write(text[:start] + table + text[end:])
print(table)
EOF

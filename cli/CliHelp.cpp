#include "CliHelp.h"

#include "BuildInfo.h"
#include "CheckCodes.h"

#include <map>

namespace backplot {

namespace {

constexpr const char* Overview = R"(Usage: backplot-cli COMMAND PROGRAM [OPTIONS]
       backplot-cli --help | --version | help COMMAND | COMMAND --help

Reads a G-code part program exactly as the Tarvo Backplot window does, and prints or writes
what the window would show. Settings are the built-in defaults (milling, rapids and axis
shown), changed only by the options, so results do not depend on who runs the tool.

Commands that print data:
  translate  translate the program into the record file and print the counts
  records    every record, one line each
  extents    the extents pass and the scale of the opened view
  view       the view after opening and after each --do command
  details    the step details report of one record
  check      where the program's rules will change what its writer meant
Commands that write files:
  render     the plot as a PNG or BMP picture
  dxf        the plot as a DXF drawing
  print      the printed page as a PDF file
  batch      many programs in parallel, with their outputs and one report

Options most commands take:
  --lathe          read the program as a lathe program (X words are diameters)
  --abs-center     I and J are absolute arc centres, not distances from the arc start
  --data-dir DIR   keep the working files TKZTemp.tmp and TKZGraph.Dll in DIR, made
                   when missing; default: a temporary folder removed afterwards
                   (translate: the current folder)
  --size WxH       the canvas in pixels, 800x600 unless given
  --json           JSON instead of text (translate, records, extents, view, details,
                   check, batch)
  -h, --help       this help, or a command's own

PROGRAM '-' reads standard input; a pipe or a device is read like a file. '-o -' writes
to standard output (pictures and PDF only when it is not a terminal). Options may come
in any order, as --opt VALUE or --opt=VALUE; '--' ends them. Messages the window shows
in a box are printed on standard error as "TITLE: TEXT" and answered OK.

Exit status: 0 done, 1 an error was reported (check: at least one finding), 2 the
command line is wrong.

More: 'backplot-cli COMMAND --help', man backplot-cli, and the guide's page
"The command-line companion".
)";

constexpr const char* Machine = R"(  --lathe          a lathe program (X diameters, Z across the plot)
  --abs-center     I and J are absolute arc centres
  --data-dir DIR   the folder of the working files, made when missing
)";

std::string CheckHelp()
{
    std::string text = R"(Usage: backplot-cli check PROGRAM [--lathe] [--abs-center] [--json] [--data-dir DIR]

Translates the program as the window does and reports every place where the program's
exact rules will draw something other than what its writer most likely meant, one
finding a line, sorted by line:

  PROGRAM:LINE: CODE: message

LINE counts the file's lines as an editor does, blank lines included. The message quotes
the words concerned and says what the plot does with them. A program without surprises
gives no output. Exit status 0 without findings, 1 with at least one or when the program
cannot be read, 2 for a wrong command line.

)" + std::string(Machine) +
                       R"(  --json           one JSON object per finding and line (JSON Lines):
                   {"Program":..., "Line":N, "Code":"...", "Message":"..."}

Codes (rule; an example that gets it):
)";
    for (const CheckCodeInfo& info : CheckCodes) {
        std::string name(info.Name);
        name.resize(20, ' ');
        text += "  " + name + std::string(info.Rule) + "\n" + std::string(22, ' ') + "e.g. " +
                std::string(info.Example) + "\n";
    }
    return text;
}

const std::map<std::string, std::string>& CommandTexts()
{
    static const std::map<std::string, std::string> texts = {
        {"translate", R"(Usage: backplot-cli translate PROGRAM [--lathe] [--abs-center] [--data-dir DIR] [--json]

Normalises and translates the program, leaving TKZTemp.tmp and TKZGraph.Dll in the
current folder (or DIR), and prints four lines:
  Records N / Lines N / ToolChanges N / RecordFile PATH
)" + std::string(Machine) + R"(  --json           one object: {"Records":N,"Lines":N,"ToolChanges":N,"RecordFile":"..."}
)"},
        {"records", R"(Usage: backplot-cli records PROGRAM [--lathe] [--abs-center] [--json] [--data-dir DIR]

Prints every record of the record file: a header line, then one tab-separated line per
record with its number and all fields. Y values are printed as stored (negated).
)" + std::string(Machine) + R"(  --json           one object per record and line (JSON Lines): "Record" (its number),
                   "BlockText" and "KindName" without their padding, then the numbers
)"},
        {"extents", R"(Usage: backplot-cli extents PROGRAM [--size WxH] [--lathe] [--abs-center] [--json] [--data-dir DIR]

Runs the extents pass and fits the view to a canvas of --size (800x600), printing six
lines: RecordTotal, Extents MinX MinY MaxX MaxY, Scale Left Top Width Height, FitSpan,
BlipSize, TwoPixelSpan. Y is in plot units (negated).
)" + std::string(Machine) + R"(  --size WxH       the canvas in pixels
  --json           one object with the same names: {"RecordTotal":N,"Extents":{"MinX":..},
                   "Scale":{"Left":..},"FitSpan":..,"BlipSize":..,"TwoPixelSpan":..}
)"},
        {"view", R"(Usage: backplot-cli view PROGRAM [--size WxH] [--do CMD]... [--lathe] [--abs-center] [--json] [--data-dir DIR]

Prints the view the window shows after opening the program, then after each --do
command, as a block headed "# open" or "# CMD":
  View X1 Y1 X2 Y2 / PrevView X1 Y1 X2 Y2 / Scale Left Top Width Height /
  FitSpan F / BlipSize B / TwoPixelSpan T
)" + std::string(Machine) + R"(  --size WxH       the canvas in pixels
  --do CMD         extents, in, out, previous, redraw, pan-left, pan-right, pan-up,
                   pan-down, window:X1,Y1,X2,Y2 (a zoom window dragged) or
                   pan:X1,Y1,X2,Y2 (a pan dragged); points in plot units, Y negated
  --json           one object per block and line (JSON Lines): {"Command":"open",
                   "View":[..],"PrevView":[..],"Scale":[..],"FitSpan":..,...}
)"},
        {"details", R"(Usage: backplot-cli details PROGRAM --record N [--lathe] [--abs-center] [--json] [--data-dir DIR]

Prints the step details report of record N, as the window's Step Details shows it after
stepping to it.
)" + std::string(Machine) + R"(  --record N       the record, from 1 to the record count
  --json           one object: {"Record":N,"BlockText":"...","Kind":"Arc",
                   "Values":{"X start position":-1,...},"Report":[the lines]}
)"},
        {"render", R"(Usage: backplot-cli render PROGRAM -o OUT.png|OUT.bmp [--size WxH] [--steps N] [--no-rapid]
                          [--blips] [--no-axis] [--tool-colors] [--zoom-extents] [--do CMD]...
                          [--lathe] [--abs-center] [--data-dir DIR]

Draws the program as the window shows it after opening and writes the picture; the
format follows the name (.png or .bmp). '-o -' writes a PNG to standard output when it
is not a terminal.
)" + std::string(Machine) + R"(  --size WxH       the canvas in pixels
  --steps N        the picture after N single block steps
  --no-rapid       rapid moves not drawn
  --blips          a cross at each rapid point
  --no-axis        no axis
  --tool-colors    each tool change in its own colour
  --zoom-extents   Full Drawing Extents after everything else
  --do CMD         a view command, as for 'view'
)"},
        {"dxf", R"(Usage: backplot-cli dxf PROGRAM -o OUT.dxf [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]

Writes the DXF drawing the window's Save As DXF File writes right after opening the
program on a canvas of --size. The name is used as given ('-' is standard output).
)" + std::string(Machine) + R"(  --size WxH       the canvas in pixels (the DXF header carries its scale)
)"},
        {"print", R"(Usage: backplot-cli print PROGRAM -o OUT.pdf [--size WxH] [--lathe] [--abs-center] [--data-dir DIR]

Writes the page the window's Print sends right after opening the program, as a PDF file.
'-o -' writes it to standard output when that is not a terminal.
)" + std::string(Machine) + R"(  --size WxH       the canvas in pixels
)"},
        {"batch", R"(Usage: backplot-cli batch PROGRAM|FOLDER... -o OUTDIR [--png] [--dxf] [--pdf] [--check]
                          [--lathe] [--abs-center] [--size WxH] [--jobs N] [--json]

Translates each program (a folder gives the files directly in it, hidden ones skipped)
in parallel, each job with a translator and a working folder of its own, writes the
outputs asked for as OUTDIR/NAME.png, .dxf and .pdf (NAME: the file name without its
extension), and prints one table: lines, records, tool changes, extents, error boxes,
check findings, outputs and seconds per program. Messages of the programs follow on
standard error, in the programs' order; a progress line is shown there while it runs
when standard error is a terminal. The results do not depend on --jobs.
Exit status 0 when every program translated without an error box (and, with --check,
without findings), else 1.

  -o OUTDIR        the folder of the outputs, made when missing
  --png, --dxf, --pdf   the outputs to write (the view after opening, --size)
  --check          run check on each program and count its findings per code
  --jobs N         programs translated at once (default: one per core)
  --lathe, --abs-center, --size WxH   as for the other commands
  --json           one document: {"Programs":[{"Program":..,"Lines":..,...}],...}
)"},
    };
    return texts;
}

} // namespace

std::string CommandHelp(const std::string& command)
{
    if (command == "check")
        return CheckHelp();
    const auto found = CommandTexts().find(command);
    return found == CommandTexts().end() ? Overview : found->second;
}

std::string VersionText()
{
    std::string text = std::string("backplot-cli ") + BuildVersion;
    if (*BuildCommit)
        text += std::string(" (commit ") + BuildCommit + ")";
    return text + "\n";
}

} // namespace backplot

#include "DetailsReport.h"

#include "ArcGeometry.h"
#include "NumberFormat.h"
#include "PlaybackTexts.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace backplot {

namespace {

constexpr std::size_t ZoneWidth = 14;
const std::string Separator(50, '-');

// The report being printed: one text per line.
class ReportWriter {
public:
    void Line(std::string text = {}) { lines_.push_back(std::move(text)); }
    void Rule() { Line(Separator); }
    // The value at the next print zone after the label.
    void Zone(std::string_view label, const std::string& value)
    {
        std::string text(label);
        text.resize((text.size() / ZoneWidth + 1) * ZoneWidth, ' ');
        Line(text + value);
    }
    // The value right after the label.
    void Direct(std::string_view label, const std::string& value) { Line(std::string(label) + value); }
    // A header that starts in the second print zone (column 15).
    void SecondZone(std::string_view text) { Line(std::string(ZoneWidth, ' ') + std::string(text)); }

    std::vector<std::string> Take() { return std::move(lines_); }

private:
    std::vector<std::string> lines_;
};

// A number printed as such: the sign position (blank or minus), the digits, one blank.
std::string ToolNumberText(std::int32_t tool)
{
    const long long value = tool;
    std::string text(1, value < 0 ? '-' : ' ');
    text += std::to_string(std::llabs(value));
    text += ' ';
    return text;
}

std::string Fixed(double value) { return FormatFixed6(value); }

void Rapid(ReportWriter& out, const EntityRecord& r, bool mill)
{
    const double startX = r.StartX, startY = r.StartY, endX = r.EndX, endY = r.EndY, endZ = r.EndZ;
    out.Line(texts::ReportRapidHead);
    out.Rule();
    out.Zone(texts::ReportLastTool, ToolNumberText(r.ToolNum));
    out.Rule();
    if (mill) {
        out.Zone(texts::ReportRapidPoint.X, Fixed(endX));
        out.Zone(texts::ReportRapidPoint.Y, Fixed(-endY));
        out.Zone(texts::ReportRapidPoint.Z, Fixed(endZ));
        out.Rule();
        out.Direct(texts::ReportAngleFromZero, Fixed(AngleOf(endX, -endY)));
        out.Direct(texts::ReportDistFromZero, Fixed(Distance(0, 0, endX, -endY)));
    } else {
        out.Zone(texts::ReportRapidPoint.Z, Fixed(endX));
        out.Zone(texts::ReportRapidPoint.D, Fixed(endY + endY)); // not negated, unlike every other D
        out.Rule();
    }
    out.Direct(texts::ReportDistFromLast, Fixed(Distance(startX, -startY, endX, -endY)));
}

// One named point: milling shows X, Y with its true sign and, unless `z` is empty, Z;
// lathe shows Z (the stored X) and the diameter D.
void Point(ReportWriter& out, bool mill, const texts::PointLabels& label, double x, double y,
           std::optional<double> z)
{
    if (mill) {
        out.Direct(label.X, Fixed(x));
        out.Direct(label.Y, Fixed(-y));
        if (z)
            out.Direct(label.Z, Fixed(*z));
    } else {
        out.Direct(label.Z, Fixed(x));
        out.Direct(label.D, Fixed((-y) + (-y)));
    }
}

void Line(ReportWriter& out, const EntityRecord& r, bool mill)
{
    out.SecondZone(texts::ReportLineHead);
    out.Rule();
    out.Zone(texts::ReportLastTool, ToolNumberText(r.ToolNum));
    out.Rule();
    Point(out, mill, texts::ReportStart, r.StartX, r.StartY, r.StartZ);
    out.Rule();
    Point(out, mill, texts::ReportEnd, r.EndX, r.EndY, r.EndZ);
    out.Rule();
    out.Zone(texts::ReportAngle, FormatFixed1(AngleOf(double(r.EndX) - r.StartX, -double(r.EndY) + r.StartY)));
}

void Arc(ReportWriter& out, const EntityRecord& r, bool mill)
{
    out.SecondZone(texts::ReportArcHead);
    out.Rule();
    out.Zone(texts::ReportLastTool, ToolNumberText(r.ToolNum));
    Point(out, mill, texts::ReportStart, r.StartX, r.StartY, r.StartZ);
    out.Rule();
    // Milling lists the centre before the end, lathe after it.
    if (mill)
        Point(out, mill, texts::ReportCenter, r.CenterX, r.CenterY, std::nullopt);
    else
        Point(out, mill, texts::ReportEnd, r.EndX, r.EndY, r.EndZ);
    out.Rule();
    if (mill)
        Point(out, mill, texts::ReportEnd, r.EndX, r.EndY, r.EndZ);
    else
        Point(out, mill, texts::ReportCenter, r.CenterX, r.CenterY, std::nullopt);
    out.Rule();
    out.Zone(texts::ReportStartAngle, Fixed(r.StartAngle));
    out.Zone(texts::ReportEndAngle, Fixed(r.EndAngle));
    out.Rule();
    out.Zone(texts::ReportRadius, Fixed(r.Radius));
}

} // namespace

std::vector<std::string> DetailsReport(const EntityRecord& record, bool mill)
{
    ReportWriter out;
    out.Line();
    out.Line(texts::ReportCncCode + std::string(record.BlockTextView()));
    out.Line();
    switch (record.MoveType) {
    case 0:
        Rapid(out, record, mill);
        break;
    case 1:
        Line(out, record, mill);
        break;
    case 2:
    case 3:
        Arc(out, record, mill);
        break;
    default:
        break; // an unknown kind shows the head only
    }
    return out.Take();
}

void TrimBlockText(EntityRecord& record)
{
    std::string_view text = record.BlockTextView();
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        record.SetBlockText({});
        return;
    }
    text = text.substr(first, text.find_last_not_of(' ') - first + 1);
    record.SetBlockText(std::string(text));
}

} // namespace backplot

#include "CliSession.h"
#include "JsonText.h"
#include "NumberFormat.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <ostream>

namespace backplot {

namespace {

void PrintJson(std::ostream& out, int number, const EntityRecord& r)
{
    out << "{\"Record\":" << number << ",\"BlockText\":" << JsonString(TrimRight(r.BlockTextView()))
        << ",\"KindName\":" << JsonString(TrimRight(r.KindNameView()))
        << ",\"MoveType\":" << r.MoveType << ",\"StartX\":" << FloatText(r.StartX)
        << ",\"StartY\":" << FloatText(r.StartY) << ",\"StartZ\":" << FloatText(r.StartZ)
        << ",\"EndX\":" << FloatText(r.EndX) << ",\"EndY\":" << FloatText(r.EndY)
        << ",\"EndZ\":" << FloatText(r.EndZ) << ",\"Radius\":" << FloatText(r.Radius)
        << ",\"StartAngle\":" << FloatText(r.StartAngle) << ",\"EndAngle\":" << FloatText(r.EndAngle)
        << ",\"CenterX\":" << FloatText(r.CenterX) << ",\"CenterY\":" << FloatText(r.CenterY)
        << ",\"ToolNum\":" << r.ToolNum << "}\n";
}

void PrintLine(std::ostream& out, int number, const EntityRecord& r)
{
    out << number << '\t' << r.MoveType << '\t' << JsonString(r.Kind()) << '\t' << FloatText(r.StartX) << '\t'
        << FloatText(r.StartY) << '\t' << FloatText(r.StartZ) << '\t' << FloatText(r.EndX) << '\t'
        << FloatText(r.EndY) << '\t' << FloatText(r.EndZ) << '\t' << FloatText(r.Radius) << '\t'
        << FloatText(r.StartAngle) << '\t' << FloatText(r.EndAngle) << '\t' << FloatText(r.CenterX) << '\t'
        << FloatText(r.CenterY) << '\t' << r.ToolNum << '\t';
    out << JsonString(TrimRight(r.BlockTextView())) << '\n';
}

} // namespace

int RunRecords(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const bool json = session.Options().Json;
    std::ostream& out = session.Out();
    if (!json)
        out << "Record\tMoveType\tKindName\tStartX\tStartY\tStartZ\tEndX\tEndY\tEndZ\tRadius\tStartAngle\tEndAngle"
               "\tCenterX\tCenterY\tToolNum\tBlockText\n";
    try {
        RecordFileReader reader;
        reader.Open(session.Translation().RecordFilePath());
        const int total = reader.RecordTotal();
        EntityRecord record;
        // A reader that went away or a full disk ends the listing; main reports which.
        for (int n = 1; n <= total && out; ++n) {
            reader.Read(n, record);
            if (json)
                PrintJson(out, n, record);
            else
                PrintLine(out, n, record);
        }
    } catch (const RunTimeError& e) {
        session.Dialogs().Message(std::string("Cannot read the record file: ") + e.what(), texts::MessageTitle,
                                  MsgIcon::Critical, MsgButtons::Ok);
    }
    return session.ExitCode();
}

} // namespace backplot

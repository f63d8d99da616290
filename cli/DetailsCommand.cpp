#include "CliSession.h"
#include "JsonText.h"
#include "DetailsReport.h"
#include "NumberText.h"
#include "PlaybackTexts.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace backplot {

namespace {

// The report as data: its lines as printed, and each "label value" line as a number
// under its label ("X start position": -1). The kind comes from the "<Arc>" line.
void PrintJson(std::ostream& out, int number, const EntityRecord& record, const std::vector<std::string>& report)
{
    std::string kind, values, lines;
    for (const std::string& line : report) {
        if (!lines.empty())
            lines += ',';
        lines += JsonString(line);
        const std::string_view text = TrimRight(line);
        const std::size_t open = text.find('<');
        if (open != std::string_view::npos && text.back() == '>') {
            kind = text.substr(open + 1, text.size() - open - 2);
            continue;
        }
        std::size_t start = text.size();
        while (start > 0 && std::string_view("0123456789.-").find(text[start - 1]) != std::string_view::npos)
            --start;
        std::string_view label = TrimRight(text.substr(0, start));
        label.remove_prefix(std::min(label.find_first_not_of(' '), label.size()));
        if (start == text.size() || label.empty() || label.starts_with(TrimmedBlanks(texts::ReportCncCode)))
            continue;
        if (!values.empty())
            values += ',';
        values += JsonString(label);
        values += ':';
        values += text.substr(start);
    }
    out << "{\"Record\":" << number << ",\"BlockText\":" << JsonString(TrimRight(record.BlockTextView()))
        << ",\"Kind\":" << JsonString(kind) << ",\"Values\":{" << values << "},\"Report\":[" << lines << "]}\n";
}

} // namespace

// The step details report of record N as the window shows it after stepping to N: the
// step reads the record into the buffer and trims its block text, then the report is
// made from the buffer.
int RunDetails(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const int wanted = *session.Options().Record;
    Translator& t = session.Translation();
    EntityRecord& record = t.Record();
    try {
        RecordFileReader reader;
        reader.Open(t.RecordFilePath());
        const int total = reader.RecordTotal();
        if (wanted < 1 || wanted > total) {
            if (total == 0)
                session.Err() << "backplot-cli: --record " << wanted << " is out of range: the program has no records\n";
            else
                session.Err() << "backplot-cli: --record " << wanted << " is out of range: the program has " << total
                              << (total == 1 ? " record" : " records") << ", numbered 1 to " << total << "\n";
            return 2;
        }
        reader.Read(wanted, record);
    } catch (const RunTimeError& e) {
        session.Dialogs().Message(std::string("Cannot read the record file: ") + e.what(), texts::MessageTitle,
                                  MsgIcon::Critical, MsgButtons::Ok);
        return 1;
    }
    TrimBlockText(record);
    const std::vector<std::string> report = DetailsReport(record, t.State().Mill);
    if (session.Options().Json)
        PrintJson(session.Out(), wanted, record, report);
    else
        for (const std::string& line : report)
            session.Out() << line << '\n';
    return session.ExitCode();
}

} // namespace backplot

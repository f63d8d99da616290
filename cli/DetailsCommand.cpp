#include "CliSession.h"
#include "DetailsReport.h"
#include "RecordFile.h"
#include "RunTimeError.h"

#include <ostream>

namespace backplot {

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
        session.Dialogs().Message(std::string("Cannot read the record file: ") + e.what(), "Corvane Backplot",
                                  MsgIcon::Critical, MsgButtons::Ok);
        return 1;
    }
    TrimBlockText(record);
    for (const std::string& line : DetailsReport(record, t.State().Mill))
        session.Out() << line << '\n';
    return session.ExitCode();
}

} // namespace backplot

#include "CliSession.h"
#include "JsonText.h"

#include <ostream>

namespace backplot {

// The translation alone: the working files stay in the data folder (the current folder
// unless --data-dir names another), and the counts are printed.
int RunTranslate(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const TranslationState& s = session.Translation().State();
    const std::string path = session.Translation().RecordFilePath();
    if (session.Options().Json)
        session.Out() << "{\"Records\":" << s.RecordCount << ",\"Lines\":" << s.LineCount
                      << ",\"ToolChanges\":" << s.ToolChangeCount << ",\"RecordFile\":" << JsonString(path) << "}\n";
    else
        session.Out() << "Records " << s.RecordCount << "\nLines " << s.LineCount << "\nToolChanges "
                      << s.ToolChangeCount << "\nRecordFile " << path << "\n";
    return session.ExitCode();
}

} // namespace backplot

#include "CliSession.h"
#include "JsonText.h"
#include "ProgramCheck.h"

#include <ostream>

namespace backplot {

// Translates as the window does, then says where the program's rules will surprise its
// writer: "PROGRAM:LINE: CODE: message", or JSON Lines.
int RunCheck(CliSession& session)
{
    if (!session.Translate())
        return 1;
    const CliOptions& o = session.Options();
    const std::vector<Finding> findings =
        CheckProgram(session.Translation().TempFilePath(), !o.Lathe, o.AbsCenter ? 1 : 0);
    std::ostream& out = session.Out();
    for (const Finding& f : findings) {
        if (o.Json)
            out << "{\"Program\":" << JsonString(o.Program) << ",\"Line\":" << f.Line
                << ",\"Code\":" << JsonString(CheckCodeName(f.Code)) << ",\"Message\":" << JsonString(f.Message)
                << "}\n";
        else
            out << o.Program << ':' << f.Line << ": " << CheckCodeName(f.Code) << ": " << f.Message << '\n';
    }
    return findings.empty() && session.ExitCode() == 0 ? 0 : 1;
}

} // namespace backplot

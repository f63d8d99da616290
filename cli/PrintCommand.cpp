#include "CliSession.h"

#include <ostream>

namespace backplot {

// Not built yet: the command is parsed so that its options are checked, but it does nothing.
int RunPrint(CliSession& session)
{
    session.Err() << "backplot-cli: print is not available in this build yet\n";
    return 1;
}

} // namespace backplot

#include "BatchCommand.h"
namespace backplot {
int RunBatch(const CliOptions&, std::ostream&, std::ostream&, const Drawing*) { return 1; }
}

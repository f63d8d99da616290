#pragma once

#include "CliOptions.h"

#include <iosfwd>

namespace backplot {

struct Drawing;

// backplot-cli batch: every program translated in parallel, with its outputs, and one
// report on `out`; messages on `err` in the programs' order. `drawing` is null when no
// pictures are asked for.
int RunBatch(const CliOptions& options, std::ostream& out, std::ostream& err, const Drawing* drawing);

} // namespace backplot

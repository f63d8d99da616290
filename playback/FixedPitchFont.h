#pragma once

#include <QFont>

namespace backplot {

// "Courier New" when it is installed, else the system's fixed-pitch font, so columns
// of text line up in the report, the source view and the step listing.
QFont FixedPitchFont();

} // namespace backplot

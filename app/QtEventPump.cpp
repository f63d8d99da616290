#include "QtEventPump.h"

#include <QCoreApplication>

namespace backplot {

void QtEventPump::ProcessEvents() { QCoreApplication::processEvents(); }

} // namespace backplot

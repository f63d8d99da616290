#pragma once

#include "UserDialogs.h"

namespace backplot {

// Lets the window's pending events (repaints, key presses such as P and Esc) run from
// inside a long operation.
class QtEventPump : public EventPump {
public:
    void ProcessEvents() override;
};

} // namespace backplot

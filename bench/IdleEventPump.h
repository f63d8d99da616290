#pragma once

#include "UserDialogs.h"

namespace backplot::bench {

// There is no window to keep alive while a benchmark translates; the pump does nothing.
class IdleEventPump : public EventPump {
public:
    void ProcessEvents() override {}
};

} // namespace backplot::bench

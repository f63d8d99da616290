#pragma once

namespace backplot {

// Waits `seconds` by reading the clock until that much time has passed: a busy wait on
// purpose, so nothing else runs meanwhile (no events, no sleep) and the next record is
// not drawn before the wait ends. Zero, negative or not-a-number waits return at once.
//
// The clock is monotonic. The classic wait read the seconds since midnight, so a wait
// begun just before midnight lasted until that count passed the goal again, nearly a
// day later; that anomaly is deliberately not kept.
void Delay(double seconds);

} // namespace backplot

#pragma once

#include <QLockFile>
#include <QString>

namespace backplot {

// Keeps a second copy of the program from running for the same user: the first holds a
// lock file for its whole life; a later one fails to take it. A lock left by a crashed
// process is taken over.
class InstanceLock {
public:
    explicit InstanceLock(const QString& lockPath);
    // The per-user lock of this program.
    static QString DefaultPath();

    // True when this process now holds the lock; never waits.
    bool TryAcquire();

private:
    QLockFile lock_;
};

} // namespace backplot

#pragma once

/// The keep box flag of a point set, off for a scope. Internal to the library.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Clears a keep box flag and restores it at the end of the scope, even where a hook of a derived class throws. The box
/// itself is the caller's concern.
class KeepBoxGuard
{
public:
    explicit KeepBoxGuard(bool& keepBox) : flag(keepBox), before(keepBox) { flag = false; }
    ~KeepBoxGuard() { flag = before; }
    KeepBoxGuard(const KeepBoxGuard&) = delete;
    KeepBoxGuard& operator=(const KeepBoxGuard&) = delete;

private:
    bool& flag;
    const bool before;
};

} // namespace Halmont::Orrin::CorvexMaths::Kernels

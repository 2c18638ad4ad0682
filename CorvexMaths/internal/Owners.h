#pragma once

/// The count of the objects that share arrays, so that the last of them releases these. Internal. Null stands for an
/// object that has no arrays.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Enters one more owner.
inline void JoinOwners(unsigned int* owners)
{
    if (owners) ++*owners;
}

/// Strikes one owner out; true for the last one, who has to release the arrays. The count is then gone.
inline bool LeaveOwners(unsigned int* owners)
{
    if (!owners || --*owners != 0) return false;
    delete owners;
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

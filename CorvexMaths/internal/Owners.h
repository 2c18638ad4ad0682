#pragma once

/// The reference count of arrays that several objects share. Internal. Null stands for an object without arrays.

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Counts one more owner.
inline void JoinOwners(unsigned int* owners)
{
    if (owners) ++*owners;
}

/// Counts one owner less; true for the last one, who has to release the arrays. The count itself is then deleted.
inline bool LeaveOwners(unsigned int* owners)
{
    if (!owners || --*owners != 0) return false;
    delete owners;
    return true;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

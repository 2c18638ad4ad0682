#pragma once

/// What all peers have in common. Each is a library linked apart from which only the functions of this namespace can be
/// seen, see Peers.map; plain numbers alone pass between them and the rows.

#include <functional>
#include <vector>

namespace Peers
{

/// What a piece of work came to, in a form that does not depend on who did it.
using Values = std::vector<double>;

/// A piece of work whose input was already brought into the types of whoever does it. Only `run` is timed.
struct Work
{
    std::function<void()> run;
    std::function<Values()> result; ///< Of the last run, for comparison.

    /// What has to precede each run and is not timed, such as the copy that work in place destroys. For work of
    /// milliseconds: stopping the clock itself takes about a microsecond.
    std::function<void()> prepare = nullptr;
};

} // namespace Peers

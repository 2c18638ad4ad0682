#pragma once

/// A row of a comparison: the same work done by us and by others, timed only where all come to the same result.

#include "Peers.h"

#include <functional>
#include <memory>
#include <string>

namespace Peers
{

// What was found when this was built. `if constexpr` on these leaves out the calls of what was not.
constexpr bool hasEigen = CORVEX_PEER_Eigen;
constexpr bool hasGlm = CORVEX_PEER_Glm;
constexpr bool hasBlas = CORVEX_PEER_Blas;
constexpr bool hasBoost = CORVEX_PEER_Boost;
constexpr bool hasCgal = CORVEX_PEER_Cgal;
constexpr bool hasGeos = CORVEX_PEER_Geos;
constexpr bool hasClipper = CORVEX_PEER_Clipper;
constexpr bool hasGsl = CORVEX_PEER_Gsl;

/// One row of the table, as benchmarks `<row>/<variant>/<who>`, the names by which table.py pairs them.
class Row
{
public:
    /// `name` is `<row>/<variant>`. Results agree where each value is within `bound` times the largest absolute value
    /// of the reference. `items` is what one run does, for times by item.
    Row(std::string name, double bound, double items = 1);

    /// Adds a contender; the first one, `ours`, is the reference for the others. `make` runs before the clock does,
    /// again for each repetition, and not before the row is asked for.
    const Row& Add(const std::string& who, std::function<Work()> make) const;

private:
    struct Reference;
    std::string name;
    double items;
    std::shared_ptr<Reference> reference;
};

/// Adds rows when the program starts: a static one of these stands in each file of rows.
struct Registration
{
    explicit Registration(void (*addRows)()) { addRows(); }
};

} // namespace Peers

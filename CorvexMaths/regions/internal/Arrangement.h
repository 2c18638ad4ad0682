#pragma once

/// Any closed outlines in, clean ones out. Internal.

#include <CorvexMaths/regions/TRegion.h>
#include <CorvexMaths/regions/internal/Grid.h>

#include <cstdint>
#include <vector>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// Outlines that bound a region: outer ones counter-clockwise, holes clockwise. No two edges cross or overlap, and no
/// outline passes twice through one point; different ones may touch in vertices that both have. No vertex lies on the
/// line of its neighbours, but where another outline has it too.
///
/// The order is canonical. Each ring starts at its lowest vertex, of equally low ones the leftmost; rings are in the
/// order of these, and of their further vertices where these are equal. One region has one such form.
struct OutlineSet
{
    std::vector<Ring> rings;
    /// For each ring the outer ring it belongs to: for an outer one itself, for a hole the one around it.
    std::vector<std::uint32_t> owners;

    bool IsHole(std::size_t ring) const { return owners[ring] != ring; }
};

/// Whether points of a winding number are inside: a function and what it compares with.
struct InsideRule
{
    bool (*decide)(std::int64_t windingNumber, std::int64_t argument);
    std::int64_t argument = 0;

    bool operator()(std::int64_t windingNumber) const { return decide(windingNumber, argument); }
};

InsideRule MakeInsideRule(WindingRule rule);

/// The region of the points inside by a rule, of any closed outlines: they may cross themselves and one another, touch,
/// overlap, run back on themselves, repeat vertices and each other. The result depends neither on the order of the
/// rings nor on the vertex at which each starts, and taken as input again it is unchanged.
///
/// Points may differ by less than 2^42 in x and in y. Crossings are rounded to the grid; edges move by half a step at
/// most in doing so. Nearly linear time in vertices and crossings. A failed allocation passes to the caller.
///
/// `weights` holds for each ring how much it counts: the winding number is the sum over the rings of the weight times
/// how often the ring goes round the point. To tell operands apart, use powers of two that leave room between them. An
/// empty `weights` counts each ring once.
OutlineSet Arrange(const std::vector<Ring>& rings, const std::vector<std::int64_t>& weights,
                   const InsideRule& isInside);

/// The same of rings that count once each.
OutlineSet Arrange(const std::vector<Ring>& rings, WindingRule rule);

/// The union of parts, each of which holds the rings of an OutlineSet. The order of parts does not matter.
///
/// More than sixteen are united in groups of neighbours, and the groups again: what lies inside a group is met once,
/// and no more by whatever covers it too. In each round of that an edge may move by half a step.
OutlineSet Unite(std::vector<std::vector<Ring>> parts);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

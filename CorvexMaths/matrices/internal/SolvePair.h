#pragma once

/// The linear system of two rows (element, 1 | side): where the lines y = side - element * x cross. Internal.
///
/// The decomposition of Crout.h and its substitution at order 2, step by step, with the products by 1 left out, which
/// round nothing: the bits are the same. There the factors are kept, for any order; here all stays in registers, and a
/// value is a scalar of T or a register of them, of as many systems side by side.
///
/// The elements are finite or NaN. Of the decomposition's rules only these then matter: the second row leads if its
/// merit is not below the first's; a zero on the diagonal of the second column is replaced by the pivot guard; a
/// leading zero on the right side is passed over. If an element is NaN, so is x, whichever rule applies. Where both
/// elements are 0 the decomposition would guard the first pivot too: the caller rules that out.

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/internal/Lanes.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

/// A row element * x + y = side.
template <class Value>
struct PairRow
{
    Value element;
    Value side;
    /// See PairMerit.
    Value merit;
};

/// The merit of an element as the pivot of its row (element, 1): its absolute value over the greatest of the row.
template <class T, class Value>
CORVEX_ALWAYS_INLINE void MeasurePairMerit(const Value& element, Value& merit)
{
    Value one;
    Broadcast(one, T(1));
    const Value size = element < 0 ? -element : element;
    merit = T(1) / (size > T(1) ? size : one) * size;
}

/// The same of a scalar.
template <class T>
inline T PairMerit(T element)
{
    T merit;
    MeasurePairMerit<T>(element, merit);
    return merit;
}

/// Solves the system of two rows.
template <class T, class Value>
CORVEX_ALWAYS_INLINE void SolvePair(const PairRow<Value>& first, const PairRow<Value>& second, Value& x, Value& y)
{
    // The row of the greater merit leads, the second one on a tie.
    const auto secondLeads = second.merit >= first.merit;
    const Value pivot = secondLeads ? second.element : first.element;
    const Value below = secondLeads ? first.element : second.element;
    const Value side = secondLeads ? second.side : first.side;
    const Value sideBelow = secondLeads ? first.side : second.side;

    // Elimination: a multiplication by the reciprocal, and the guard where rounding made the second pivot 0.
    const Value factor = below * (T(1) / pivot);
    const Value rest = T(1) - factor;
    Value guard;
    Broadcast(guard, Numbers::pivotGuard<T>);
    const Value diagonal = rest == T(0) ? guard : rest;

    // Substitution, forwards and backwards.
    const Value reduced = side != T(0) ? sideBelow - factor * side : sideBelow;
    y = reduced / diagonal;
    x = (side - y) / pivot;
}

} // namespace Halmont::Orrin::CorvexMaths::Kernels

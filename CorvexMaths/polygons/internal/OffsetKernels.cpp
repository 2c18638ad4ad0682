#include <CorvexMaths/polygons/internal/OffsetKernels.h>

#include <CorvexMaths/Numbers.h>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

// These limits are true doubles in both forms, and what they bound is compared as a double.

/// The squared gap up to which two shifted edges count as meeting.
constexpr double meetingGapSquared = 1e-8;
/// The turn, as the cross product below, up to which a corner counts as straight and is not bridged.
constexpr double straightTurn = 0.0001;

} // namespace

template <class T>
TEdge2<T> ShiftEdge(const TEdge2<T>& edge, const T& distance)
{
    const TVector2<T> direction = edge.GetDirection();
    return edge + TVector2<T>(distance * direction.y, -distance * direction.x);
}

template <class T>
unsigned int OffsetCorner(const TEdge2<T>& first, const TEdge2<T>& second, const T& distance, bool negative,
                          TVector2<T>* points)
{
    const TEdge2<T> shiftedFirst = ShiftEdge(first, distance);
    const TEdge2<T> shiftedSecond = ShiftEdge(second, distance);

    // 1. Shifted edges that meet already need no vertex: the corner of a straight run vanishes.
    const TVector2<T> gap = shiftedSecond.Vertex[0] - shiftedFirst.Vertex[1];
    if (!(static_cast<double>(gap % gap) > meetingGapSquared)) return 0;

    // 2. Edges that cross are cut short there.
    TVector2<T> crossing;
    bool isWithin = false;
    if (!shiftedFirst.IntersectWith(shiftedSecond, &crossing, &isWithin, Numbers::commonTolerance<T>)) return 0;
    if (isWithin) {
        points[0] = crossing;
        return 1;
    }

    // 3. Edges that do not reach each other are joined, through a vertex on the bisector where the corner turns the way
    //    that the offset opens it. The flag is the caller's sign and not that of the shift, so that the corners of a
    //    clockwise outline stay without one.
    unsigned int count = 0;
    points[count++] = shiftedFirst.Vertex[1];
    const TVector2<T> along = first.Vertex[1] - first.Vertex[0];
    const double turn = static_cast<double>(along.SignedArea(second.Vertex[1] - first.Vertex[0]));
    if (negative ? turn < -straightTurn : turn > straightTurn) {
        TVector2<T> bisector = shiftedFirst.GetDirection() - shiftedSecond.GetDirection();
        bisector.Normalise();
        points[count++] = first.Vertex[1] + bisector * Numbers::Absolute(distance);
    }
    points[count++] = shiftedSecond.Vertex[0];
    return count;
}

template TEdge2<float> ShiftEdge(const TEdge2<float>&, const float&);
template TEdge2<double> ShiftEdge(const TEdge2<double>&, const double&);
template unsigned int OffsetCorner(const TEdge2<float>&, const TEdge2<float>&, const float&, bool, TVector2<float>*);
template unsigned int OffsetCorner(const TEdge2<double>&, const TEdge2<double>&, const double&, bool,
                                   TVector2<double>*);

} // namespace Halmont::Orrin::CorvexMaths::Kernels

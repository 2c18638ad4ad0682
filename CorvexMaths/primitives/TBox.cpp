#include <CorvexMaths/primitives/TBox.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/primitives/TLine.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

constexpr unsigned int cornerCount = 8;

/// Whether a value lies from lowest - tolerance up to highest + tolerance; false for NaN.
template <class T>
bool IsInRange(T value, T lowest, T highest, T tolerance)
{
    return value >= lowest - tolerance && value <= highest + tolerance;
}

/// Whether 0 lies in the range of the differences of two intervals' bounds. The ring of four corners, and so that of
/// eight, pairs each bound of one box with each of the other, so these four differences are all there are on an axis.
/// The strict comparisons pass over NaN, and the bounds may stand in either order.
template <class T>
bool IntervalsOverlap(T lowest, T highest, T otherLowest, T otherHighest)
{
    const T differences[] = {lowest - otherLowest, lowest - otherHighest, highest - otherLowest,
                             highest - otherHighest};
    T least = Numbers::unsetBound<T>;
    T greatest = -Numbers::unsetBound<T>;
    for (const T difference : differences) {
        if (difference > greatest) greatest = difference;
        if (least > difference) least = difference;
    }
    return IsInRange(T(0), least, greatest, T(0));
}

/// Whether a vector is a corner of a box or part of a line.
template <class T>
bool IsPart(const TVector3<T>* vector, const TBox<T>& box, const TLine3<T>& line)
{
    return vector == &box.minimum || vector == &box.maximum || vector == &line.origin || vector == &line.direction;
}

} // namespace

template <class T>
TBox<T> TBox<T>::operator*(const TMatrix4x4<T>& matrix) const
{
    TBox<T> moved(*this);
    moved *= matrix;
    return moved;
}

template <class T>
TBox<T>& TBox<T>::operator*=(const TMatrix4x4<T>& matrix)
{
    TVector3<T> corners[cornerCount];
    GetCorners(corners);
    Reset();
    for (const TVector3<T>& corner : corners) {
        const TVector4<T> homogeneous(corner.x, corner.y, corner.z, T(1));
        const TVector4<T> moved = homogeneous * matrix;
        Extend(moved.x, moved.y, moved.z);
    }
    return *this;
}

template <class T>
void TBox<T>::EnsureVolume()
{
    for (unsigned int axis = 0; axis < 3; ++axis) {
        if (maximum[axis] - minimum[axis] != T(0)) continue;
        minimum[axis] -= T(1);
        maximum[axis] += T(1);
    }
}

template <class T>
T TBox<T>::GetMaxDim() const
{
    T largest = GetWidth();
    if (GetDepth() > largest) largest = GetDepth();
    if (GetHeight() > largest) largest = GetHeight();
    return largest;
}

template <class T>
T TBox<T>::GetMinDim() const
{
    T smallest = GetWidth();
    if (GetDepth() < smallest) smallest = GetDepth();
    if (GetHeight() < smallest) smallest = GetHeight();
    return smallest;
}

template <class T>
void TBox<T>::GetCorners(TVector3<T>* out) const
{
    CORVEX_PRECONDITION("TBox::GetCorners", out != nullptr && out != &minimum && out != &maximum, out);
    out[0] = minimum;
    out[1] = TVector3<T>(minimum.x, maximum.y, minimum.z);
    out[2] = TVector3<T>(maximum.x, maximum.y, minimum.z);
    out[3] = TVector3<T>(maximum.x, minimum.y, minimum.z);
    out[4] = maximum;
    out[5] = TVector3<T>(minimum.x, maximum.y, maximum.z);
    out[6] = TVector3<T>(minimum.x, minimum.y, maximum.z);
    out[7] = TVector3<T>(maximum.x, minimum.y, maximum.z);
}

template <class T>
void TBox<T>::GetDiagonals(TVector3<T>* out) const
{
    CORVEX_PRECONDITION("TBox::GetDiagonals", out != nullptr, out);
    const TVector3<T> extent = maximum - minimum;
    out[0] = extent;
    out[1] = TVector3<T>(-extent.x, extent.y, extent.z);
    out[2] = TVector3<T>(-extent.x, -extent.y, extent.z);
    out[3] = TVector3<T>(extent.x, -extent.y, extent.z);
}

template <class T>
bool TBox<T>::IsWithin(const TVector3<T>& p, T tolerance) const
{
    return IsInRange(p.x, minimum.x, maximum.x, tolerance) && IsInRange(p.y, minimum.y, maximum.y, tolerance) &&
           IsInRange(p.z, minimum.z, maximum.z, tolerance);
}

template <class T>
bool TBox<T>::IsWithin(const TVector2<T>& p, T tolerance) const
{
    return IsInRange(p.x, minimum.x, maximum.x, tolerance) && IsInRange(p.y, minimum.y, maximum.y, tolerance);
}

template <class T>
bool TBox<T>::IsWithin(const TVector4<T>& p, T tolerance) const
{
    return IsWithin(TVector3<T>(p.x, p.y, p.z), tolerance);
}

template <class T>
bool TBox<T>::IsWithin(const TBox<T>& other, const bool& planar) const
{
    const auto overlapsAlong = [&](unsigned int axis) {
        return IntervalsOverlap(minimum[axis], maximum[axis], other.minimum[axis], other.maximum[axis]);
    };
    return overlapsAlong(0) && overlapsAlong(1) && (planar || overlapsAlong(2));
}

template <class T>
bool TBox<T>::IsWithin(const TLine3<T>& line, T tolerance) const
{
    TVector3<T> first, second;
    return IntersectWith(line, &first, &second, tolerance);
}

template <class T>
bool TBox<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* first, TVector3<T>* second, T tolerance) const
{
    CORVEX_PRECONDITION("TBox::IntersectWith", first != nullptr && second != nullptr && first != second, first, second);
    CORVEX_PRECONDITION("TBox::IntersectWith", !IsPart(first, *this, line) && !IsPart(second, *this, line), first,
                        second);
    TVector3<T>* const slots[2] = {first, second};
    unsigned int hits = 0;
    for (unsigned int plane = 0; plane < 6 && hits < 2; ++plane) {
        const unsigned int axis = plane % 3;
        const TVector3<T>& corner = plane < 3 ? minimum : maximum;
        // A line parallel to the plane is left to the other planes; NaN is not parallel to anything.
        const T d = line.direction[axis];
        if (d > -tolerance && d < tolerance) continue;

        // The slot is written first and tested afterwards; a rejected point stays in it until the next one comes.
        TVector3<T>& hit = *slots[hits];
        hit = line.Evaluate((corner[axis] - line.origin[axis]) / d);
        if (!IsWithin(hit, tolerance)) continue;
        // Two or three planes meet at an edge or a corner of the box: one hit.
        if (hits == 1 && hit.IsEqualTo(*first, Numbers::commonTolerance<T>)) continue;
        ++hits;
    }
    return hits > 0;
}

template <class T>
bool TBox<T>::IntersectWith(const TLine2<T>& line, TVector2<T>* first, TVector2<T>* second, T tolerance) const
{
    CORVEX_PRECONDITION("TBox::IntersectWith", first != nullptr && second != nullptr, first, second);
    if (minimum.z > T(0) || maximum.z < T(0)) return false;

    const TLine3<T> lineInSpace(TVector3<T>(line.origin.x, line.origin.y, T(0)),
                                TVector3<T>(line.direction.x, line.direction.y, T(0)));
    TVector3<T> firstInSpace, secondInSpace;
    if (!IntersectWith(lineInSpace, &firstInSpace, &secondInSpace, tolerance)) return false;
    *first = TVector2<T>(firstInSpace.x, firstInSpace.y);
    *second = TVector2<T>(secondInSpace.x, secondInSpace.y);
    return true;
}

CORVEX_INSTANTIATE_SCALARS(, struct, TBox);

} // namespace Halmont::Orrin::CorvexMaths

#include <CorvexMaths/primitives/TCylinder.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/internal/Revolution.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Adds the hits of the side, which is x^2 + y^2 = radius^2 in the frame at the cap where the axis begins. With the
/// line o + d t that is a t^2 + b t + c = 0. Returns the number of hits afterwards.
template <class T>
unsigned int AddSideHits(const TCylinder<T>& cylinder, const Kernels::LineInFrame<T>& local, bool infinite,
                         TVector3<T>* hits, unsigned int count)
{
    const TVector3<T>& o = local.origin;
    const TVector3<T>& d = local.direction;
    const T a = d.x * d.x + d.y * d.y;
    const T b = T(2) * (o.x * d.x + o.y * d.y);
    const T c = o.x * o.x + o.y * o.y - cylinder.radius * cylinder.radius;

    T roots[2];
    if (a == T(0) || !Kernels::SolveQuadratic(a, b, c, roots)) return count;
    for (const T t : roots) {
        const TVector3<T> q = local.Evaluate(t);
        if (infinite || Kernels::IsBetweenEnds(q.z, cylinder.height)) hits[count++] = local.ToWorld(q);
    }
    return count;
}

} // namespace

template <class T>
bool TCylinder<T>::IntersectWith(TLine3<T> line, TVector3<T>* p1, TVector3<T>* p2, bool infinite) const
{
    CORVEX_PRECONDITION("TCylinder::IntersectWith", p1 != nullptr && p2 != nullptr, p1, p2);
    line = Kernels::StartNear(line, centre);
    const TCircle3<T> first(radius, centre - axis * height * T(0.5), -axis);
    const TCircle3<T> second(radius, centre + axis * height * T(0.5), axis);

    TVector3<T> hits[3];
    unsigned int count = 0;
    if (!infinite) {
        if (first.IntersectWith(line, &hits[count])) ++count;
        if (second.IntersectWith(line, &hits[count])) ++count;
    }
    if (count < 2) {
        // The frame follows the caps as rounding has placed them.
        TVector3<T> along = second.centre - first.centre;
        along.Normalise();
        count = AddSideHits(*this, Kernels::LineInFrame<T>(line, first.centre, along), infinite, hits, count);
    }

    if (count < 2) return false;
    const bool takesThird = count == 3 && hits[0].DiffVectLenSquared(hits[2]) > hits[0].DiffVectLenSquared(hits[1]);
    *p1 = hits[0];
    *p2 = takesThird ? hits[2] : hits[1];
    return true;
}

CORVEX_INSTANTIATE_SCALARS(, class, TCylinder);

} // namespace Halmont::Orrin::CorvexMaths

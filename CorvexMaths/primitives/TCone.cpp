#include <CorvexMaths/primitives/TCone.h>

#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/internal/Revolution.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// Adds the hits of the side, which is x^2 + y^2 = k z^2 with k = radius^2 / height^2 in the frame at the tip. With the
/// line o + d t that is a t^2 + b t + c = 0. Returns the number of hits afterwards.
template <class T>
unsigned int AddSideHits(const TCone<T>& cone, const TLine3<T>& line, TVector3<T>* hits, unsigned int count)
{
    const Kernels::LineInFrame<T> local(line, cone.apex, cone.axis);
    const TVector3<T>& o = local.origin;
    const TVector3<T>& d = local.direction;
    const T k = cone.radius * cone.radius / (cone.height * cone.height);
    const T a = d.x * d.x + d.y * d.y - d.z * d.z * k;
    const T b = T(2) * (o.x * d.x + o.y * d.y - o.z * d.z * k);
    const T c = o.x * o.x + o.y * o.y - o.z * o.z * k;

    // Along a generator there is one hit, which is not held to the ends.
    if (Numbers::IsZero(a, Numbers::commonTolerance<T>)) {
        hits[count++] = local.ToWorld(local.Evaluate(-c / b));
        return count;
    }

    T roots[2];
    if (!Kernels::SolveQuadratic(a, b, c, roots)) return count;
    for (unsigned int i = 0; i < 2; ++i) {
        if (i == 1 && roots[1] == roots[0]) break;
        const TVector3<T> q = local.Evaluate(roots[i]);
        if (Kernels::IsBetweenEnds(q.z, cone.height)) hits[count++] = local.ToWorld(q);
    }
    return count;
}

/// Of three hits, drops the later one of the first pair that coincides. False when none does.
template <class T>
bool DropDuplicate(TVector3<T> (&hits)[3])
{
    const auto coincide = [&](unsigned int i, unsigned int j) {
        return hits[i].IsEqualTo(hits[j], Numbers::commonTolerance<T>);
    };
    if (coincide(0, 1)) {
        hits[1] = hits[2];
        return true;
    }
    return coincide(0, 2) || coincide(1, 2);
}

} // namespace

template <class T>
bool TCone<T>::IntersectWith(const TLine3<T>& line, TVector3<T>* p1, TVector3<T>* p2) const
{
    CORVEX_PRECONDITION("TCone::IntersectWith", p1 != nullptr && p2 != nullptr, p1, p2);
    const TVector3<T> base = apex + axis * height;
    const TLine3<T> moved = Kernels::StartNear(line, base);

    TVector3<T> hits[3];
    unsigned int count = 0;
    if (TCircle3<T>(radius, base, axis).IntersectWith(moved, &hits[0])) count = 1;
    count = AddSideHits(*this, moved, hits, count);

    if (count == 3 && DropDuplicate(hits)) count = 2;
    if (count != 2) return false;
    *p1 = hits[0];
    *p2 = hits[1];
    return true;
}

CORVEX_INSTANTIATE_SCALARS(, struct, TCone);

} // namespace Halmont::Orrin::CorvexMaths

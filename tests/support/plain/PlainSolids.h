#pragma once

/// Where a line meets a cone and a cylinder, and the points of a spiral, step by step in the stated order.

#include <CorvexMaths/CorvexMaths.h>

#include <cmath>
#include <vector>

namespace CorvexTest::Plain
{

namespace Maths = Halmont::Orrin::CorvexMaths;

template <class T>
struct Solids
{
    using V = Maths::TVector3<T>;
    using Hits = std::vector<V>;

    static constexpr T e = static_cast<T>(1e-6f);
    V e1, e2, a;

    static bool IsZero(T value) { return value == 0 || std::fabs(value) <= e; }

    explicit Solids(const V& axis) : a(axis) { a.OrthonormalXY(&e1, &e2); }
    V ToLocal(const V& w) const { return V(0 + e1 % w, 0 + e2 % w, 0 + a % w); }
    V FromLocal(const V& q) const
    {
        return V(e1.x * q.x + e2.x * q.y + a.x * q.z, e1.y * q.x + e2.y * q.y + a.y * q.z,
                 e1.z * q.x + e2.z * q.y + a.z * q.z);
    }

    static void MeetCap(T radius, const V& centre, const V& normal, const Maths::TLine3<T>& line, Hits& hits)
    {
        V hit;
        if (Maths::TCircle3<T>(radius, centre, normal).IntersectWith(line, &hit)) hits.push_back(hit);
    }

    /// The roots of a t^2 + b t + c, the greater first; none where they are complex.
    static std::vector<T> Roots(T qa, T qb, T qc)
    {
        const T d = qb * qb - T(4) * qa * qc, inverse = T(1) / (T(2) * qa);
        if (d < 0) return std::sqrt(std::fabs(d)) * inverse != 0 ? std::vector<T>() : std::vector<T>(2, -qb * inverse);
        const T root = std::sqrt(d);
        return {inverse * (root - qb), (-qb - root) * inverse};
    }

    static Maths::TLine3<T> MoveNear(Maths::TLine3<T> line, const V& point)
    {
        line.origin = line.Evaluate((point - line.origin) % line.direction);
        return line;
    }

    static bool MeetCone(const Maths::TCone<T>& cone, Maths::TLine3<T> line, V* p1, V* p2)
    {
        const V base = cone.apex + cone.axis * cone.height;
        line = MoveNear(line, base);
        Hits hits;
        MeetCap(cone.radius, base, cone.axis, line, hits);
        const Solids frame(cone.axis);
        const V o = frame.ToLocal(line.origin - cone.apex), d = frame.ToLocal(line.direction);
        const T k = cone.radius * cone.radius / (cone.height * cone.height);
        const T qa = d.x * d.x + d.y * d.y - d.z * d.z * k, qb = T(2) * (o.x * d.x + o.y * d.y - o.z * d.z * k);
        const T qc = o.x * o.x + o.y * o.y - o.z * o.z * k;
        if (IsZero(qa)) {
            hits.push_back(frame.FromLocal(o + d * (-qc / qb)) + cone.apex);
        } else {
            const std::vector<T> roots = Roots(qa, qb, qc);
            for (std::size_t i = 0; i < roots.size(); ++i) {
                const V q = o + d * roots[i];
                if (-e <= q.z && q.z <= cone.height + e && (i == 0 || roots[1] != roots[0]))
                    hits.push_back(frame.FromLocal(q) + cone.apex);
            }
        }
        if (hits.size() == 3) {
            if (hits[0].IsEqualTo(hits[1], e))
                hits.erase(hits.begin() + 1);
            else if (hits[0].IsEqualTo(hits[2], e) || hits[1].IsEqualTo(hits[2], e))
                hits.pop_back();
        }
        if (hits.size() != 2) return false;
        *p1 = hits[0];
        *p2 = hits[1];
        return true;
    }

    static bool MeetCylinder(const Maths::TCylinder<T>& c, Maths::TLine3<T> line, V* p1, V* p2, bool infinite)
    {
        line = MoveNear(line, c.centre);
        const V half = c.axis * c.height * T(0.5), lower = c.centre - half, upper = c.centre + half;
        Hits hits;
        if (!infinite) MeetCap(c.radius, lower, -c.axis, line, hits);
        if (!infinite) MeetCap(c.radius, upper, c.axis, line, hits);
        if (hits.size() != 2) {
            V axis = upper - lower;
            axis.Normalise();
            const Solids frame(axis);
            const V o = frame.ToLocal(line.origin - lower), d = frame.ToLocal(line.direction);
            const T qa = d.x * d.x + d.y * d.y;
            if (qa != 0) {
                for (T t : Roots(qa, T(2) * (o.x * d.x + o.y * d.y), o.x * o.x + o.y * o.y - c.radius * c.radius)) {
                    const V q = o + d * t;
                    if (infinite || (-e <= q.z && q.z <= c.height + e)) hits.push_back(frame.FromLocal(q) + lower);
                }
            }
        }
        if (hits.size() < 2) return false;
        *p1 = hits[0];
        *p2 = hits[1];
        if (hits.size() == 3 && hits[0].DiffVectLenSquared(hits[2]) > hits[0].DiffVectLenSquared(hits[1]))
            *p2 = hits[2];
        return true;
    }

    static Hits MakeSpiral(const V& centre, const V& axis, T radius, int count, T step, T growth)
    {
        V first;
        axis.OrthonormalX(&first);
        first *= radius;
        Hits points = {centre + first};
        for (int i = 1; i < count; ++i) {
            const T factor = (T(i) * growth + radius) / radius;
            points.push_back(centre + Maths::TQuaternion<T>(T(i) * step, axis).ToMatrix() * (first * factor));
        }
        return points;
    }
};

} // namespace CorvexTest::Plain

#pragma once

/// A polygon with its protected side opened and its removals recorded.

#include <tests/support/Bits.h>
#include <tests/support/Types.h>
#include <tests/support/plain/PlainCrossings.h>

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace CorvexTest
{

/// Vertices in the plane as doubles, which print and compare.
using Plane = std::vector<std::pair<double, double>>;

template <class Family>
struct OpenPolygon : Family::Polygon
{
    using T = typename Family::T;
    using Vector = typename Family::Vector;
    using Base = typename Family::Polygon;
    using Base::AddOffsetPoints, Base::GetSignedSimpleArea, Base::GetSignedTriangleAreaWithOrigin;
    using Base::GetSimpleArea, Base::keepBox, Base::OffsetEdge, Base::SimplifySection, Base::sortedList;

    /// The removed vertices, and whether the keep box flag was set at each removal.
    PlainOutline<T> removed;
    std::vector<bool> keptBox;

    OpenPolygon() : Base(0u, 16u) {}
    OpenPolygon(const Plane& plane) : OpenPolygon()
    {
        for (const auto& [x, y] : plane) AddVertex({static_cast<T>(x), static_cast<T>(y)});
    }
    OpenPolygon(const PlainOutline<T>& outline) : OpenPolygon()
    {
        for (const auto& vertex : outline) AddVertex(vertex);
    }

    /// Adds a vertex at height 7, if the vectors have one, so that flattened vertices show.
    void AddVertex(const Maths::TVector2<T>& vertex)
    {
        Vector raised = static_cast<Vector>(vertex);
        if constexpr (Family::dimension > 2) raised[2] = T(7);
        this->Add(raised);
    }

    PlainOutline<T> GetOutline() const
    {
        PlainOutline<T> outline;
        for (unsigned int i = 0; i < this->count; ++i) outline.emplace_back((*this)[i].x, (*this)[i].y);
        return outline;
    }
    Plane GetPlane() const
    {
        Plane plane;
        for (const auto& vertex : GetOutline()) plane.emplace_back(vertex.x, vertex.y);
        return plane;
    }
    /// Whether each vertex has a z of the height and a w of 1, as far as it has them.
    bool IsAt(double height) const
    {
        for (unsigned int i = 0; i < this->count; ++i)
            for (unsigned int k = 2; k < Family::dimension; ++k)
                if (static_cast<double>((*this)[i][k]) != (k == 2 ? height : 1)) return false;
        return true;
    }
    std::pair<double, double> GetBoxRange() const
    {
        return {this->GetBoundingBox().minimum.x, this->GetBoundingBox().maximum.x};
    }
    void ElementRemoved(Vector& vertex) override
    {
        removed.emplace_back(vertex.x, vertex.y);
        keptBox.push_back(keepBox);
        Base::ElementRemoved(vertex);
    }
};

/// What an operation makes of an outline.
struct OutlineRow
{
    const char* name;
    double argument;
    Plane before, after;
};

/// Runs an operation `operate(polygon, argument)` on each row's polygon and expects its outline, exactly or within
/// 1e-6, and its vertices at a height.
template <class Family, class Rows, class Operation>
void ExpectOutlines(const Rows& rows, double height, double tolerance, Operation operate)
{
    for (const OutlineRow& row : rows) {
        SCOPED_TRACE(row.name);
        OpenPolygon<Family> polygon(row.before);
        operate(polygon, static_cast<typename Family::T>(row.argument));
        const Plane actual = polygon.GetPlane();
        ASSERT_EQ(actual.size(), row.after.size());
        for (std::size_t i = 0; i < actual.size(); ++i) {
            EXPECT_NEAR(actual[i].first, row.after[i].first, tolerance) << i;
            EXPECT_NEAR(actual[i].second, row.after[i].second, tolerance) << i;
        }
        EXPECT_TRUE(polygon.IsAt(height));
    }
}

template <class T>
bool AreSameBits(const PlainOutline<T>& a, const PlainOutline<T>& b)
{
    const auto areSame = [](const auto& p, const auto& q) { return SameBits(p.x, q.x) && SameBits(p.y, q.y); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), areSame);
}

/// Random outlines of many kinds: scattered; on a coarse grid with zeros of both signs (ties at vertices, vertical,
/// collinear, repeated and empty edges); nearly level with rises about the tolerance; nearly vertical; along one steep
/// line, give or take the last bits. Some lie far from the origin, some hold values that are not finite.
template <class T>
PlainOutline<T> RandomOutline(std::mt19937_64& random)
{
    const auto pick = [&random](unsigned int n) { return static_cast<unsigned int>(random() % n); };
    std::uniform_real_distribution<T> scatter(T(-2), T(2));
    const unsigned int kind = pick(5);
    const T scale = pick(4) == 0 ? T(1e4) : T(1), shift = pick(8) == 0 ? T(1e30) : T(0);
    const T rare[] = {std::numeric_limits<T>::infinity(), std::numeric_limits<T>::quiet_NaN(), T(-0.0)};
    PlainOutline<T> outline(1 + pick(150));
    for (auto& vertex : outline) {
        vertex = {scatter(random) * scale + shift, scatter(random) * scale};
        if (kind == 1) vertex = {static_cast<T>(pick(7)) * scale, (static_cast<T>(pick(7)) - T(3)) * T(-1)};
        if (kind == 2) vertex.y = static_cast<T>(pick(9)) * static_cast<T>(5e-7f);
        if (kind == 3) vertex.x = static_cast<T>(pick(9)) * static_cast<T>(4e-7f);
        if (kind == 4) vertex.y = vertex.x * T(1000) + T(pick(2));
        if (pick(100) == 0) vertex[pick(2)] = rare[pick(3)];
    }
    return outline;
}

} // namespace CorvexTest

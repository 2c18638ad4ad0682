#pragma once

/// A polygon with its protected side opened and its removals recorded.

#include <tests/support/Bits.h>
#include <tests/support/Types.h>
#include <tests/support/plain/PlainCrossings.h>

#include <algorithm>
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
        const auto isNear = [tolerance](const auto& p, const auto& q) {
            return std::fabs(p.first - q.first) <= tolerance && std::fabs(p.second - q.second) <= tolerance;
        };
        const Plane actual = polygon.GetPlane();
        EXPECT_TRUE(std::equal(actual.begin(), actual.end(), row.after.begin(), row.after.end(), isNear))
            << ::testing::PrintToString(actual);
        EXPECT_TRUE(polygon.IsAt(height));
    }
}

template <class T>
bool AreSameBits(const PlainOutline<T>& a, const PlainOutline<T>& b)
{
    const auto areSame = [](const auto& p, const auto& q) { return SameBits(p.x, q.x) && SameBits(p.y, q.y); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), areSame);
}

} // namespace CorvexTest

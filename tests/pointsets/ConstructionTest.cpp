// How sets, positions and splines are made from other containers and handed on, and what the spellings of sizes mean.

#include <tests/splines/OpenSpline.h>

#include <CorvexMaths/pointsets/TParameterization.h>
#include <CorvexMaths/polygons/TPolygon.h>

#include <algorithm>
#include <list>
#include <utility>
#include <vector>

using namespace CorvexTest;

template <class F>
struct SetConstruction : ::testing::Test
{
    const std::vector<typename F::Vector> points = {Point<F>(3, -1, 4, 2), Point<F>(-5, 9, 2, 6)};

    /// That a set holds these points and the box of them.
    void ExpectPoints(const typename F::PointSet& set) const
    {
        typename F::PointSet expected;
        for (const auto& point : points) expected.Add(point);
        EXPECT_TRUE(std::equal(set.begin(), set.end(), points.begin(), points.end()) && set.GetGrowSize() == 1000);
        EXPECT_EQ(set.GetBoundingBox(), expected.GetBoundingBox());
    }
};
TYPED_TEST_SUITE(SetConstruction, PointFamily, TypeNames);

/// The set of the other scalar, the outline of a set and the positions along it. Taken apart, as the template of a
/// family is not, to every compiler, that of its sets.
template <class Set>
struct Related;
template <class T, template <class> class V>
struct Related<Maths::TPointSet<T, V>>
{
    using Other = Maths::TPointSet<std::conditional_t<std::is_same_v<T, float>, double, float>, V>;
    using Outline = Maths::TPolygon<T, V>;
    using Positions = Maths::TParameterization<T, V>;
};

TYPED_TEST(SetConstruction, TakesBracesIteratorsSpansListsAndTheOtherScalar)
{
    using F = TypeParam;
    using T = typename F::T;
    using Set = typename F::PointSet;
    using Other = typename Related<Set>::Other;
    using Outline = typename Related<Set>::Outline;
    using Positions = typename Related<Set>::Positions;
    const std::list<typename F::Vector> chain(this->points.begin(), this->points.end());
    TList<typename F::Vector> list;
    list.AddRange(this->points.data(), 2);
    const Set made = {this->points[0], this->points[1]};

    // Sizes stay sizes, and a set in braces a copy.
    const Set braces{}, sizes(0, 5), braced{0, 5}, copied{made}, ofList(list);
    EXPECT_TRUE(braces.GetCount() + sizes.GetCount() + braced.GetCount() == 0 && braces.GetGrowSize() == 1000);
    EXPECT_TRUE(sizes.GetGrowSize() == 5 && braced.GetGrowSize() == 5);
    for (const Set& set :
         {made, copied, Set(chain.begin(), chain.end()), Set(this->points.data(), &this->points[1] + 1),
          Set(this->points), ofList, Set(Other(made)), Set(Outline(chain.begin(), chain.end())),
          Set(Outline(this->points)), Set(Outline(Other(made))), Set(Positions(this->points)),
          Set(Positions(Other(made))), Set(Maths::TBSpline(Set(this->points), 2, Maths::Clamped)),
          Set(Outline(TList(list))), Set(std::move(list))})
        this->ExpectPoints(set);
    static_assert(!std::is_convertible_v<const Other&, Set> && !std::is_convertible_v<const TList<T>&, Set>);
}

TYPED_TEST(SetConstruction, MovesBlocksAndLeavesEmptyObjectsThatServe)
{
    using F = TypeParam;
    using T = typename F::T;
    using Set = typename F::PointSet;
    using Positions = typename Related<Set>::Positions;
    static_assert(std::is_nothrow_move_constructible_v<Set> && std::is_nothrow_move_constructible_v<Positions> &&
                  std::is_nothrow_move_constructible_v<OpenSpline<F>>);

    Set source(this->points), target = {this->points[1]};
    const auto* const block = source.GetStream();
    target = std::move(source);
    Set last(std::move(target));
    EXPECT_EQ(last.GetStream(), block);
    this->ExpectPoints(last);
    for (Set* left : {&source, &target}) {
        EXPECT_TRUE(left->GetStream() == nullptr && left->GetCount() == 0 &&
                    left->GetBoundingBox() == Set().GetBoundingBox());
        left->AddRange(this->points.data(), 2);
        this->ExpectPoints(*left);
    }

    Positions line((Set(this->points)));
    line.Parameterize();
    const T length = line.GetLength();
    Positions other(std::move(line));
    EXPECT_TRUE(line.GetLength() == 0 && other.GetLength() == length && other.Evaluate(1) == this->points[1]);
    line = std::move(other);
    EXPECT_TRUE(other.GetCount() == 0 && line.GetLength() == length && line.Evaluate(0) == this->points[0]);

    OpenSpline<F> curve = Straight<F>(3, Clamped, 4), fresh(3, Clamped, 0, 5);
    const OpenSpline<F> copy(curve);
    OpenSpline<F> moved(std::move(curve));
    EXPECT_EQ(Values(moved.knots), Values(copy.knots));
    EXPECT_EQ(curve.knotCount + curve.knots.GetCount() + curve.coefficients.GetCount(), 0u);
    curve = std::move(moved);
    EXPECT_EQ(curve.Evaluate(T(0.25)), OpenSpline<F>(copy).Evaluate(T(0.25)));
    moved.AddRange(copy), fresh.AddRange(copy);
    EXPECT_EQ(Values(moved.knots), Values(fresh.knots)) << "a moved spline is built anew";
}

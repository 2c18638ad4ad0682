#include <tests/pointsets/OpenSet.h>

#include <limits>

using namespace CorvexTest;

template <class F>
struct RegistrationTest : ::testing::Test
{};
TYPED_TEST_SUITE(RegistrationTest, PointFamily, TypeNames);

// Pairs of points on the axes and maps of x and y among the axes: the cross-covariance has one value in each row and
// column, and everything is exact.
TYPED_TEST(RegistrationTest, FindsTheMotionAndRepairsAReflectionWhereADirectionIsFree)
{
    using F = TypeParam;
    const typename F::T bound = static_cast<typename F::T>(1e-6f) / 2, above = std::nextafter(bound, bound + 1);
    const struct
    {
        const char* name;
        typename F::T map[4], motion[4], lastSign;
        bool result;
    } rows[] = {{"turned", {0, 1, -1, 0}, {0, 1, -1, 0}, 1, true},
                {"mirrored and flat: the last column is negated", {0, 0, 0, -1}, {1, 0, 0, -1}, -1, true},
                {"mirrored, a singular value at the tolerance", {bound, 0, 0, -1}, {1, 0, 0, -1}, -1, true},
                {"mirrored, none within it", {above, 0, 0, -1}, {1, 0, 0, -1}, 1, false}};
    const auto centre = Point<F>(0, 4, 2, 1), otherCentre = Point<F>(-1, 2, 5, 3), untouched = Point<F>(7, 7, 7, 7);
    for (unsigned int run = 0; run < 8; ++run) {
        const auto& row = rows[run / 2];
        SCOPED_TRACE(row.name);
        OpenSet<F> b = {Point<F>(1, 0, 0, 0), Point<F>(-1, 0, 0, 0), Point<F>(0, 2, 0, 0), Point<F>(0, -2, 0, 0),
                        Point<F>(0, 0, 4, 0), Point<F>(0, 0, -4, 0), Point<F>(0, 0, 0, 8), Point<F>(0, 0, 0, -8)};
        OpenSet<F> a(b);
        (a *= Maths::TMatrix2x2<typename F::T>(row.map)) += centre;
        b += otherCentre;
        Maths::TMatrixMxN<typename F::T> motion(F::dimension, F::dimension), rotation, centred;
        motion.ToIdentity();
        for (unsigned int i = 0; i < 4; ++i) motion[i / 2][i % 2] = row.motion[i];
        motion[F::dimension - 1][F::dimension - 1] *= row.lastSign;
        const auto shift = row.result ? centre - otherCentre * motion : untouched;
        EXPECT_EQ(a.ToTransToCentMatrix(&centred), centre);

        OpenSet<F> target(a), moved(b);
        auto translation = untouched;
        EXPECT_EQ(target.Register(&moved, &rotation, &translation, run % 2 == 0), row.result);
        EXPECT_FALSE(OpenSet<F>().Register(&moved, &rotation, &translation, true)) << "the counts differ";
        EXPECT_EQ(translation, shift);
        for (unsigned int i = 0; i < a.GetCount(); ++i) {
            EXPECT_EQ(target[i], row.result ? a[i] : typename F::Vector(centred[i]));
            EXPECT_EQ(moved[i], !row.result ? b[i] - otherCentre : run % 2 == 0 ? b[i] * motion + shift : b[i]);
        }
        for (auto* set : {&target, &moved}) EXPECT_TRUE(set->GetBoundingBox() == OpenSet<F>(*set).GetBoundingBox());
        if (row.result) motion.Transpose();
        EXPECT_TRUE(rotation == motion) << "for column vectors after a success, for row vectors after a failure";
    }
}

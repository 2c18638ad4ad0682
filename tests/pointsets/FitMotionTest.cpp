#include <tests/support/Types.h>

#include <cmath>
#include <random>

using namespace CorvexTest;
using namespace CorvexTest::Maths;

template <class T>
struct FitMotionTest : ::testing::Test
{
    using V = TVector3<T>;
    using Set = TPointSet<T, Maths::TVector3>;
    // What 60 points at coordinates of some tens leave of a fit's figures, measured in rounding steps of T.
    static constexpr T bound = T(4000) * std::numeric_limits<T>::epsilon();

    V Move(const V& point) const { return TVector4<T>(point) * motion; }
    V Turn(const V& direction) const { return direction * motion; }
    void ExpectSame(const V& found, const V& expected, const char* what) const
    {
        EXPECT_LE(found.DiffVectLen(expected), bound) << what;
    }

    TMatrix4x4<T> motion;
    Set points{0u, 60u}, moved{0u, 60u};

    /// 60 points on an uneven rim, bent out of its plane.
    FitMotionTest()
    {
        std::mt19937 random(36);
        for (unsigned int i = 0; i < 60; ++i) {
            const double angle = 0.1 * i, noise = static_cast<double>(random() % 1000) * 1e-5;
            points.Add(V(T(9 * std::cos(angle) + noise), T(8 * std::sin(angle)), T(2 * std::cos(2 * angle) - noise)));
        }
        motion.Rotate(T(0.7), V(1, 2, 3), true, true);
        motion.Translate(V(10, -20, 5), true, true);
        moved = points;
        moved *= motion;
    }
};
TYPED_TEST_SUITE(FitMotionTest, Scalars, TypeNames);

TYPED_TEST(FitMotionTest, FitsMoveWithTheirPoints)
{
    using T = TypeParam;
    SCOPED_TRACE("seed 36");
    T spread[2], squares[2] = {};
    TPlane<T> planes[2];
    TLine3<T> lines[2];
    TCircle3<T> circles[2];
    TSphere<T> spheres[2];
    typename TestFixture::Set* const sets[2] = {&this->points, &this->moved};
    const auto expectSameResiduals = [&](const char* what) {
        EXPECT_NEAR(spread[0], spread[1], this->bound) << what;
        EXPECT_NEAR(squares[0], squares[1], this->bound * (squares[0] + 1)) << what;
    };

    for (int i = 0; i < 2; ++i) ASSERT_TRUE(planes[i].Fit(*sets[i], &spread[i], &squares[i]));
    expectSameResiduals("plane");
    this->ExpectSame(planes[1].point, this->Move(planes[0].point), "plane");
    EXPECT_NEAR(std::fabs(planes[1].normal % this->Turn(planes[0].normal)), 1, this->bound);

    squares[0] = squares[1] = 0;
    for (int i = 0; i < 2; ++i) ASSERT_TRUE(lines[i].Fit(*sets[i], &spread[i], &squares[i]));
    expectSameResiduals("line");
    EXPECT_NEAR(std::fabs(lines[1].direction % this->Turn(lines[0].direction)), 1, this->bound);

    for (int i = 0; i < 2; ++i) static_cast<void>(circles[i].Fit(*sets[i], &spread[i], &squares[i], T(0), 12));
    expectSameResiduals("circle");
    this->ExpectSame(circles[1].centre, this->Move(circles[0].centre), "circle");
    EXPECT_NEAR(circles[0].radius, circles[1].radius, this->bound);

    for (int i = 0; i < 2; ++i) ASSERT_TRUE(spheres[i].Fit(*sets[i], &spread[i], 12));
    EXPECT_NEAR(spread[0], spread[1], this->bound) << "sphere";
    this->ExpectSame(spheres[1].sphere, this->Move(spheres[0].sphere), "sphere");
}

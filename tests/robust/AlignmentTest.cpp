#include "Support.h"

using namespace CorvexTest;
using Maths::Robust::Alignment;
using Maths::Robust::NearestAlignment;
using Points = TPointSet<double, TVector3>;
using Vector = TVector3<double>;
using Matrix = Maths::TMatrix3x3<double>;

namespace
{

Matrix Rotation(Random& random)
{
    const double w = random.Uniform(), x = random.Uniform(), y = random.Uniform(), z = random.Uniform();
    const double two = 2.0 / (w * w + x * x + y * y + z * z);
    return {1 - two * (y * y + z * z), two * (x * y - w * z),     two * (x * z + w * y),
            two * (x * y + w * z),     1 - two * (x * x + z * z), two * (y * z - w * x),
            two * (x * z - w * y),     two * (y * z + w * x),     1 - two * (x * x + y * y)};
}

Points Cloud(Random& random, unsigned int count, const Vector& size)
{
    Points points;
    for (unsigned int i = 0; i < count; ++i) points.Add(random.Within(size));
    return points;
}

Points Box(double x, double y, double z)
{
    Points points;
    for (int i = 0; i < 8; ++i) points.Add(Vector(i & 1 ? x : -x, i & 2 ? y : -y, i & 4 ? z : -z));
    return points;
}

/// A matrix times each point as a column, and a shift.
Points Moved(Points points, const Matrix& matrix, const Vector& shift = {0, 0, 0})
{
    const double* const e = matrix.elements;
    for (Vector& point : points) {
        const auto [x, y, z] = point;
        point = {e[0] * x + e[1] * y + e[2] * z, e[3] * x + e[4] * y + e[5] * z, e[6] * x + e[7] * y + e[8] * z};
        point += shift;
    }
    return points;
}

void ExpectNear(const Matrix& found, const Matrix& expected, double tolerance)
{
    for (unsigned int k = 0; k < 9; ++k) EXPECT_NEAR(found.elements[k], expected.elements[k], tolerance);
}

const Matrix mirror(-1, 0, 0, 0, 1, 0, 0, 0, 1);

} // namespace

TEST(Alignment, OfAMirroredBoxTurnsItsThinSideOver)
{
    const Points box = Box(1.0, 0.7, 0.4);
    const Alignment alignment(box, Moved(box, mirror));
    ASSERT_TRUE(alignment);
    ExpectNear(alignment.rotation, {-1, 0, 0, 0, 1, 0, 0, 0, -1}, 1e-15);
    EXPECT_NEAR(alignment.rms, 0.8, 1e-15);
}

TEST(Alignment, WeighsEachPairAndLeavesOutThoseOfNoWeight)
{
    Random random(13);
    const Points measured = Cloud(random, 12, {1, 1, 1});
    Points nominal = Moved(measured, Rotation(random)), repeated, images;
    TList<double> weights;
    for (unsigned int i = 0; i < 12; ++i) {
        nominal[i] += random.Within(Vector(0.1, 0.1, 0.1));
        weights.Add(i % 4 * 1e300);
        for (unsigned int k = 0; k < i % 4; ++k) {
            repeated.Add(measured[i]);
            images.Add(nominal[i]);
        }
    }
    const Alignment weighted(measured, nominal, weights), counted(repeated, images);
    ASSERT_TRUE(weighted);
    ExpectNear(weighted.rotation, counted.rotation, 1e-15);
    EXPECT_NEAR(weighted.rms, counted.rms, 1e-15);
    EXPECT_NEAR(weighted.largest, counted.largest, 1e-15);

    const auto statusOf = [&](double weight) {
        weights[1] = weight;
        return Alignment(measured, nominal, weights).status;
    };
    EXPECT_EQ(statusOf(-1.0), Status::Degenerate);
    EXPECT_EQ(statusOf(infinity<double>), Status::NotFinite);
    for (unsigned int i = 2; i < 12; ++i) weights[i] = 0.0;
    EXPECT_EQ(statusOf(1.0), Status::TooFewPoints);
}

// What turns it about its axis are the least of the moments; the image is not rounded.
TEST(Alignment, CarriesABarOfManyPointsOntoItsImage)
{
    Random random(15);
    const Matrix turn(0, 0, 1, 1, 0, 0, 0, 1, 0);
    const Points bar = Cloud(random, 1500, {1, 0.17, 0.17});
    const Alignment alignment(bar, Moved(bar, turn));
    ASSERT_TRUE(alignment);
    ExpectNear(alignment.rotation, turn, 2e-16);
    EXPECT_LT(alignment.largest, 1e-16);
}

TEST(Alignment, TellsWhyThereIsNone)
{
    Points cube = Box(1, 1, 1), line, same;
    for (int i = 0; i < 8; ++i) {
        line.Add(Vector(0.1, 0.2, 0.7) * i);
        same.Add(Vector(1, 2, 3));
    }
    EXPECT_TRUE(Alignment(cube, cube));
    for (const auto& other : {Moved(cube, mirror), line, same, Points()})
        EXPECT_EQ(Alignment(cube, other).status, Status::Degenerate);
    EXPECT_EQ(Alignment(line, cube).status, Status::Degenerate);
    EXPECT_EQ(Alignment(Points(), Points()).status, Status::TooFewPoints);
    cube[3].y = NaN<double>;
    EXPECT_EQ(Alignment(cube, line).status, Status::NotFinite);
}

TEST(NearestAlignment, FindsTheMotionOfAScanWhosePointsNobodyMatched)
{
    Random random(14);
    const Points cloud = Cloud(random, 4000, {1, 1, 1});
    // A turn by three hundredths and a small move; the scan misses points and has them in another order.
    Matrix turn(1, -0.03, 0, 0.03, 1, 0, 0, 0, 1);
    turn.ToOrthonormal();
    Points scan;
    for (unsigned int i = cloud.GetCount(); i > 0; i -= 8) scan.Add(cloud[i - 1]);
    scan = Moved(scan, turn, {0.01, -0.02, 0.01});
    const NearestAlignment alignment(scan, cloud);
    ASSERT_TRUE(alignment);
    EXPECT_LT(alignment.largest, 1e-14);
    turn.Transpose();
    ExpectNear(alignment.rotation, turn, 1e-14);
    EXPECT_EQ(NearestAlignment(scan, cloud, 1).status, Status::NotConverged);
    EXPECT_EQ(NearestAlignment(scan, Points()).status, Status::TooFewPoints);
    scan[7].x = infinity<double>;
    EXPECT_EQ(NearestAlignment(scan, cloud).status, Status::NotFinite);
}

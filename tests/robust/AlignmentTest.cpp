#include <CorvexMaths/robust/Robust.h>

#include <benchmarks/accuracy/Reference.h>
#include <tests/support/Types.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace Halmont::Orrin::CorvexMaths;
using Robust::Alignment;
using Robust::Status;

namespace
{

using Points = TPointSet<double, TVector3>;

class Random
{
public:
    explicit Random(unsigned int seed) : generator(seed) { std::printf("seed %u\n", seed); }

    double Uniform() { return std::ldexp(static_cast<double>(generator()), -31) - 1.0; }
    TVector3<double> Vector(const TVector3<double>& shape)
    {
        const double x = Uniform();
        const double y = Uniform();
        return {shape.x * x, shape.y * y, shape.z * Uniform()};
    }
    TMatrix3x3<double> Rotation()
    {
        const double w = Uniform();
        const double x = Uniform();
        const double y = Uniform();
        const double z = Uniform();
        const double two = 2.0 / (w * w + x * x + y * y + z * z);
        return {1 - two * (y * y + z * z), two * (x * y - w * z),     two * (x * z + w * y),
                two * (x * y + w * z),     1 - two * (x * x + z * z), two * (y * z - w * x),
                two * (x * z - w * y),     two * (y * z + w * x),     1 - two * (x * x + y * y)};
    }

private:
    std::mt19937 generator;
};

/// Rotation times a column.
TVector3<double> Turned(const TMatrix3x3<double>& rotation, const TVector3<double>& p)
{
    const double* const e = rotation.elements;
    return {e[0] * p.x + e[1] * p.y + e[2] * p.z, e[3] * p.x + e[4] * p.y + e[5] * p.z,
            e[6] * p.x + e[7] * p.y + e[8] * p.z};
}

double Rms(const Points& measured, const Points& nominal, const TMatrix3x3<double>& rotation)
{
    const TVector3<double> from = measured.GetCentre();
    const TVector3<double> to = nominal.GetCentre();
    double sum = 0.0;
    for (unsigned int i = 0; i < measured.GetCount(); ++i) {
        const TVector3<double> rest = Turned(rotation, measured[i] - from) - (nominal[i] - to);
        sum += rest % rest;
    }
    return std::sqrt(sum / measured.GetCount());
}

} // namespace

TEST(Alignment, AgreesWithTheReferenceOfSixtyDigits)
{
    unsigned int count = 0;
    for (const Accuracy::Set& set : Accuracy::Read(CORVEX_ACCURACY_REFERENCE)) {
        if (set.feature != "Motion") continue;
        ++count;
        SCOPED_TRACE(set.name);
        const Accuracy::Result result = Accuracy::RobustFit<double>(set);
        ASSERT_EQ(result.status, Status::Done);
        for (const Accuracy::Value& value : set.values) {
            SCOPED_TRACE(value.name);
            EXPECT_LE(value.Error(result.values.at(value.name)), set.Bound(value) / 2.0);
        }
    }
    EXPECT_EQ(count, 20u);
}

TEST(Alignment, FindsTheMotionOfThreePointsAndOfFlatAndThinParts)
{
    Random random(11);
    const TVector3<double> shapes[] = {{1, 1, 1}, {1, 1, 0}, {1, 1, 1e-9}, {1, 1e-6, 1e-6}};
    for (const TVector3<double>& shape : shapes) {
        for (const unsigned int count : {3u, 4u, 20u, 2000u}) {
            SCOPED_TRACE(testing::Message() << shape.y << " " << shape.z << " " << count);
            const TMatrix3x3<double> rotation = random.Rotation();
            Points measured;
            Points nominal;
            for (unsigned int i = 0; i < count; ++i) {
                measured.Add(random.Vector(shape));
                nominal.Add(Turned(rotation, measured[i]) + TVector3<double>(3, -4, 5));
            }
            const Alignment alignment(measured, nominal);
            ASSERT_TRUE(alignment);
            // Three random points of a shape are at times much thinner than it.
            const double tolerance = 1e-11 / shape.y;
            for (unsigned int k = 0; k < 9; ++k) {
                EXPECT_NEAR(alignment.rotation.elements[k], rotation.elements[k], tolerance);
            }
            EXPECT_LE(alignment.largest, 4e-15);
            EXPECT_NEAR(alignment.rotation.Determinant(), 1.0, 1e-14);
        }
    }
}

TEST(Alignment, OfAMirroredCloudIsTheBestRotationAllTheSame)
{
    Random random(12);
    for (unsigned int trial = 0; trial < 50; ++trial) {
        Points measured;
        Points nominal;
        for (unsigned int i = 0; i < 9; ++i) {
            measured.Add(random.Vector({1.0, 0.7, 0.4}));
            nominal.Add(TVector3<double>(-measured[i].x, measured[i].y, measured[i].z));
        }
        const Alignment alignment(measured, nominal);
        ASSERT_TRUE(alignment);
        EXPECT_NEAR(alignment.rotation.Determinant(), 1.0, 1e-14);
        EXPECT_NEAR(alignment.rms, Rms(measured, nominal, alignment.rotation), 1e-14);
        for (unsigned int other = 0; other < 50; ++other) {
            EXPECT_GE(Rms(measured, nominal, random.Rotation()), alignment.rms);
        }
    }
}

TEST(Alignment, WeighsEachPairAndLeavesOutThoseOfNoWeight)
{
    Random random(13);
    const TMatrix3x3<double> rotation = random.Rotation();
    Points measured;
    Points nominal;
    TList<double> weights;
    Points repeated;
    Points images;
    for (unsigned int i = 0; i < 12; ++i) {
        const unsigned int weight = i % 4;
        measured.Add(random.Vector({1, 1, 1}));
        nominal.Add(Turned(rotation, measured[i]) + random.Vector({0.1, 0.1, 0.1}));
        weights.Add(weight * 1e300);
        for (unsigned int k = 0; k < weight; ++k) {
            repeated.Add(measured[i]);
            images.Add(nominal[i]);
        }
    }
    const Alignment weighted(measured, nominal, weights);
    const Alignment counted(repeated, images);
    ASSERT_TRUE(weighted);
    for (unsigned int k = 0; k < 9; ++k) {
        EXPECT_NEAR(weighted.rotation.elements[k], counted.rotation.elements[k], 1e-15);
    }
    EXPECT_NEAR(weighted.rms, counted.rms, 1e-15);
    EXPECT_NEAR(weighted.largest, counted.largest, 1e-15);

    weights[1] = -1.0;
    EXPECT_EQ(Alignment(measured, nominal, weights).status, Status::Degenerate);
    weights[1] = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Alignment(measured, nominal, weights).status, Status::NotFinite);
    for (unsigned int i = 2; i < 12; ++i) weights[i] = 0.0;
    weights[1] = 1.0;
    EXPECT_EQ(Alignment(measured, nominal, weights).status, Status::TooFewPoints);
}

TEST(Alignment, TellsWhyThereIsNone)
{
    Points cube;
    Points mirrored;
    Points line;
    for (int i = 0; i < 8; ++i) {
        const TVector3<double> corner((i & 1) * 2 - 1, (i & 2) - 1, (i & 4) / 2 - 1);
        cube.Add(corner);
        mirrored.Add(TVector3<double>(-corner.x, corner.y, corner.z));
        line.Add(TVector3<double>(0.1, 0.2, 0.7) * i);
    }
    EXPECT_TRUE(Alignment(cube, cube));
    EXPECT_EQ(Alignment(cube, mirrored).status, Status::Degenerate);
    EXPECT_EQ(Alignment(cube, line).status, Status::Degenerate);
    EXPECT_EQ(Alignment(line, cube).status, Status::Degenerate);
    const Points same(std::vector<TVector3<double>>(8, TVector3<double>(1, 2, 3)).data(), 8u);
    EXPECT_EQ(Alignment(cube, same).status, Status::Degenerate);
    EXPECT_EQ(Alignment(cube, Points()).status, Status::Degenerate);
    EXPECT_EQ(Alignment(Points(), Points()).status, Status::TooFewPoints);
    cube[3].y = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Alignment(cube, mirrored).status, Status::NotFinite);
}

TEST(NearestAlignment, FindsTheMotionOfAScanWhosePointsNobodyMatched)
{
    Random random(14);
    Points cloud;
    for (unsigned int i = 0; i < 4000; ++i) cloud.Add(random.Vector({1, 1, 1}));
    // A turn by three hundredths and a small move; the scan misses points and has them in another order.
    const TMatrix3x3<double> turn(1, -0.03, 0, 0.03, 1, 0, 0, 0, 1);
    TMatrix3x3<double> rotation = turn;
    rotation.ToOrthonormal();
    Points scan;
    for (unsigned int i = cloud.GetCount(); i > 0; i -= 8) {
        scan.Add(Turned(rotation, cloud[i - 1]) + TVector3<double>(0.01, -0.02, 0.01));
    }
    const Robust::NearestAlignment alignment(scan, cloud);
    ASSERT_TRUE(alignment);
    EXPECT_LT(alignment.largest, 1e-14);
    for (unsigned int k = 0; k < 9; ++k) {
        EXPECT_NEAR(alignment.rotation.elements[k], rotation.elements[k % 3 * 3 + k / 3], 1e-14);
    }
    EXPECT_EQ(Robust::NearestAlignment(scan, cloud, 1).status, Status::NotConverged);
    EXPECT_EQ(Robust::NearestAlignment(scan, Points()).status, Status::TooFewPoints);
    scan[7].x = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Robust::NearestAlignment(scan, cloud).status, Status::NotFinite);
}

// A program of a user: members compiled into the library and members compiled here, of several families, and a class
// derived across the boundary. It prints exact values.

#include <CorvexMaths/CorvexMaths.h>

#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;

static_assert(__cplusplus >= 201703L, "the language level comes with the library");

namespace
{

/// Hears of its vertices, through the virtual table that the library fills: of each that comes and each that leaves.
class CountingPolygon : public TPolygon<double, TVector2>
{
public:
    unsigned int heard = 0, removed = 0;

protected:
    void ElementAdded(TVector2<double>& vertex) override
    {
        TPolygon::ElementAdded(vertex);
        ++heard;
    }
    void ElementRemoved(TVector2<double>&) override { ++removed; }
};

} // namespace

int main()
{
    CountingPolygon plate;
    const TVector2<double> corners[] = {{0, 0}, {4, 0}, {4, 2}, {0, 2}};
    for (const TVector2<double>& corner : corners) plate.Add(corner);
    const TPolygon<double, TVector2> copy(corners, 4);
    std::printf("plate: %u heard, area %g and %g\n", plate.heard, plate.GetSimpleArea(), copy.GetSimpleArea());
    plate.SimplifyDPM(9);
    plate.MinkowskiSum(corners, 3);
    std::printf("simplified and summed: %u removed, %u heard\n", plate.removed, plate.heard);

    const TVector3<float> across = TVector3<float>(2, 0, 0) * TVector3<float>(0, 2, 0);
    TMatrixMxN<double> matrix(2, 2);
    matrix.ToIdentity();
    matrix *= 4.0;
    const bool inverted = matrix.Invert();
    std::printf("vectors and matrices: %g, %d %g\n", static_cast<double>(across.z), inverted, matrix[1][1]);

    TCRSMatrixMxN<double> doubling(2, 2, 2), product; // forms its product in chunks, as many as there are threads
    doubling.AddElement(2, 0, 0);
    doubling.AddElement(2, 1, 1);
    doubling.Multiply(matrix, &product);
    std::printf("sparse: %d elements, the last %g\n", product.elementCount, product.values[1]);

    try {
        std::printf("integers: %g\n", (Int128::Mul(1LL << 62, 4) / Int128(1LL << 60)).AsDouble());
        (void)(Int128(1) / Int128(0));
    } catch (const char* message) {
        std::printf("caught: %s\n", message);
    }
}

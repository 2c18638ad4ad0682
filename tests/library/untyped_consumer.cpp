// A program of a user who compiles without type information and derives classes of his own: their hooks are called, for
// each vertex that leaves and each sum that comes.

#include <CorvexMaths/CorvexMaths.h>

using namespace Halmont::Orrin::CorvexMaths;

namespace
{

class Outline : public TPolygon<double, TVector2>
{
public:
    unsigned int addedCount = 0, removedCount = 0;

protected:
    void ElementAdded(TVector2<double>&) override { ++addedCount; }
    void ElementRemoved(TVector2<double>&) override { ++removedCount; }
};

} // namespace

int main()
{
    Outline outline;
    for (unsigned int i = 0; i < 5; ++i) outline.Add(TVector2<double>(i, i % 2));
    outline.SimplifyDPM(1);
    if (outline.removedCount != 3) return 1;

    const TVector2<double> corners[3];
    outline.addedCount = 0;
    outline.MinkowskiSum(corners, 3);
    return outline.addedCount == 2 * 3 ? 0 : 1;
}

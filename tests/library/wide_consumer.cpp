// A program of a user who compiles for a processor with fused multiply-adds: pairs of a sum and a difference of
// products, which g++ fuses wherever it has the instructions. Looked at, never run.

#include <CorvexMaths/CorvexMaths.h>

using namespace Halmont::Orrin::CorvexMaths;

void TurnAll(TVector2<double>* vectors, const TVector2<double>* others, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i)
        vectors[i] = TVector2<double>(vectors[i].SignedArea(others[i]), vectors[i] % others[i]);
}

TVector3<float> Cross(const TVector3<float>& a, const TVector3<float>& b)
{
    return a * b + b * (a % b);
}

// What the standard library and a plain loop do for comparison.

#include "PeersGeometry.h"

#include <cstdlib>
#include <memory>

namespace Peers
{

namespace
{

struct Vector2
{
    double x, y;
};

struct Vector3
{
    double x, y, z;
};

int CompareNumbers(const void* a, const void* b)
{
    const double first = *static_cast<const double*>(a);
    const double second = *static_cast<const double*>(b);
    return first < second ? -1 : first > second ? 1 : 0;
}

std::vector<Vector2> MakePoints(const Coordinates& coordinates)
{
    std::vector<Vector2> points;
    for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2) points.push_back({coordinates[i], coordinates[i + 1]});
    return points;
}

} // namespace

Work StandardVectorAppend3(std::size_t count)
{
    const auto summary = std::make_shared<Values>();
    return {[=] {
                std::vector<Vector3> vectors;
                for (std::size_t i = 0; i < count; ++i) vectors.push_back({static_cast<double>(i), 1, 2});
                *summary = {static_cast<double>(vectors.size()), vectors.back().x};
            },
            [=] { return *summary; }};
}

Work StandardVectorAppend(std::size_t count)
{
    const auto summary = std::make_shared<Values>();
    return {[=] {
                Values numbers;
                for (std::size_t i = 0; i < count; ++i) numbers.push_back(static_cast<double>(i));
                *summary = {static_cast<double>(numbers.size()), numbers.back()};
            },
            [=] { return *summary; }};
}

Work StandardSort(const Values& numbers)
{
    const auto sorted = std::make_shared<Values>();
    return {[=] { std::qsort(sorted->data(), sorted->size(), sizeof(double), CompareNumbers); },
            [=] { return *sorted; }, [=] { *sorted = numbers; }};
}

Work PlainMinkowskiSum(const Coordinates& first, const Coordinates& second)
{
    const std::vector<Vector2> a = MakePoints(first);
    const std::vector<Vector2> b = MakePoints(second);
    const auto sums = std::make_shared<std::vector<Vector2>>(a.size() * b.size());
    const auto box = std::make_shared<Values>();
    return {[=] {
                Vector2 least = {a[0].x + b[0].x, a[0].y + b[0].y};
                Vector2 greatest = least;
                Vector2* sum = sums->data();
                for (const Vector2& p : a) {
                    for (const Vector2& q : b) {
                        *sum = {p.x + q.x, p.y + q.y};
                        if (sum->x < least.x) least.x = sum->x;
                        if (sum->y < least.y) least.y = sum->y;
                        if (sum->x > greatest.x) greatest.x = sum->x;
                        if (sum->y > greatest.y) greatest.y = sum->y;
                        ++sum;
                    }
                }
                *box = {least.x, least.y, greatest.x, greatest.y};
            },
            [=] {
                Values summary = *box;
                summary.insert(summary.end(), {sums->back().x, sums->back().y});
                return summary;
            }};
}

} // namespace Peers

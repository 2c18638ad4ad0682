#include <CorvexMaths/regions/TRegion.h>

#include <CorvexMaths/regions/internal/Arrangement.h>
#include <CorvexMaths/regions/internal/Triangulation.h>

#include <array>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
std::vector<TTriangle2<T>> TRegion<T>::Triangulate() const
{
    std::vector<TTriangle2<T>> triangles;
    if (!outlines) return triangles;
    const Kernels::Grid grid(stepExponent);
    const auto place = [&](const Kernels::GridPoint& point) {
        return TVector2<T>(static_cast<T>(grid.FromGrid(point.x)), static_cast<T>(grid.FromGrid(point.y)));
    };
    const std::vector<std::array<Kernels::GridPoint, 3>> found = Kernels::Triangulate(outlines->rings);
    triangles.reserve(found.size());
    for (const std::array<Kernels::GridPoint, 3>& corners : found)
        triangles.emplace_back(place(corners[0]), place(corners[1]), place(corners[2]));
    return triangles;
}

template std::vector<TTriangle2<float>> TRegion<float>::Triangulate() const;
template std::vector<TTriangle2<double>> TRegion<double>::Triangulate() const;

} // namespace Halmont::Orrin::CorvexMaths

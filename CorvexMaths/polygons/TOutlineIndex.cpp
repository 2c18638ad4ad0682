#include <CorvexMaths/polygons/TOutlineIndex.h>

#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/polygons/internal/ContainmentTree.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

template <class T, template <class> class V>
std::shared_ptr<const Kernels::ContainmentTree<T>> MakeTree(const TPointSet<T, V>& outline)
{
    if (outline.GetCount() == 0) return nullptr;
    return std::make_shared<const Kernels::ContainmentTree<T>>(ValuesOf<T, V>(outline), componentsOf<T, V>,
                                                               outline.GetCount());
}

} // namespace

template <class T>
TOutlineIndex<T>::TOutlineIndex(const TPointSet<T, TVector2>& outline)
    : boundingBox(outline.GetBoundingBox()), tree(MakeTree<T, TVector2>(outline))
{}

template <class T>
TOutlineIndex<T>::TOutlineIndex(const TPointSet<T, TVector3>& outline)
    : boundingBox(outline.GetBoundingBox()), tree(MakeTree<T, TVector3>(outline))
{}

template <class T>
TOutlineIndex<T>::TOutlineIndex(const TPointSet<T, TVector4>& outline)
    : boundingBox(outline.GetBoundingBox()), tree(MakeTree<T, TVector4>(outline))
{}

template <class T>
bool TOutlineIndex<T>::IsWithin(const TVector2<T>& point) const
{
    return tree && boundingBox.IsWithin(point, T(0)) && tree->GetScore(point.x, point.y) != 0;
}

CORVEX_INSTANTIATE_SCALARS(, class, TOutlineIndex);

} // namespace Halmont::Orrin::CorvexMaths

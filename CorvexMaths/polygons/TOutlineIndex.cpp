#include <CorvexMaths/polygons/TOutlineIndex.h>

#include <CorvexMaths/pointsets/PointValues.inl>
#include <CorvexMaths/polygons/internal/ContainmentTree.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

template <class T, template <class> class V>
const Kernels::ContainmentTree<T>* MakeTree(const TPointSet<T, V>& outline)
{
    if (outline.GetCount() == 0) return nullptr;
    return new Kernels::ContainmentTree<T>(ValuesOf<T, V>(outline), componentsOf<T, V>, outline.GetCount());
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
TOutlineIndex<T>::TOutlineIndex(const TOutlineIndex& other) : boundingBox(other.boundingBox), tree(other.tree)
{
    if (tree) tree->Join();
}

template <class T>
TOutlineIndex<T>& TOutlineIndex<T>::operator=(const TOutlineIndex& other)
{
    // The other first: it may share the tree, or be this very index.
    if (other.tree) other.tree->Join();
    if (tree && tree->Leave()) delete tree;
    tree = other.tree;
    boundingBox = other.boundingBox;
    return *this;
}

template <class T>
TOutlineIndex<T>::~TOutlineIndex()
{
    if (tree && tree->Leave()) delete tree;
}

template <class T>
bool TOutlineIndex<T>::IsWithin(const TVector2<T>& point) const
{
    return tree && boundingBox.IsWithin(point, T(0)) && tree->GetScore(point.x, point.y) != 0;
}

CORVEX_INSTANTIATE_SCALARS(, class, TOutlineIndex);

} // namespace Halmont::Orrin::CorvexMaths

// The interface of the containers.

#include "tests/library/Interface.h"

#include <CorvexMaths/containers/TLinkUni.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/containers/TMap.h>
#include <CorvexMaths/containers/TPair.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class T>
struct ContainerInterfaceTest : testing::Test
{};
TYPED_TEST_SUITE(ContainerInterfaceTest, Scalars, TypeNames);

/// A list that shows what it hands down.
template <class E, class L = TList<E>>
struct OpenList : L
{
    using L::ElementAdded, L::ElementsAdded, L::ElementRemoved, L::ElementsRemoved, L::Cleared;
    using L::storage, L::count, L::growSize, L::capacity, L::useExponentialGrowth;
};

template <class E, class L = TList<E>, class Open = OpenList<E>>
void NameList()
{
    static_assert(std::has_virtual_destructor_v<L> && Copies<L>);
    static_assert(Makes<L> && Makes<L, Index> && Makes<L, Index, Index>);
    static_assert(Makes<L, L&> && Makes<L, L*, Index> && Makes<L, const E*, Index, Index>);

    Has<L, E&(Index) const, E&() const, E*() const>({&L::operator[]}, {&L::GetFirst, &L::GetLast}, {&L::GetStream});
    Has<L, Index() const, void(bool)>({&L::GetCount, &L::GetGrowSize}, {&L::SetUseExponentialGrowth, &L::Clear});
    Has<L, void(Index)>({&L::SetGrowSize, &L::RemoveFromEnd, &L::RemoveFromFront, &L::Grow, &L::Expand});
    Has<L, void(const E&), void(const E*, Index)>({&L::Add, &L::AddUnique}, {&L::AddRange});
    Has<L, void(const E*)>({&L::template Add<const E*>, &L::template AddUnique<const E*>});
    Has<L, void(const L&), void(const E&, Index), void(L&, Index)>({&L::AddRange}, {&L::Insert}, {&L::InsertRange});
    Has<L, void(E*, Index), void(E*, Index, Index)>({&L::template Insert<E*>}, {&L::InsertRange});
    Has<L, void(const E&, bool), void(const E*, bool)>({&L::Remove}, {&L::template Remove<const E*>});
    Has<L, void(Index, bool), void()>({&L::RemoveAt}, {&L::Contract, &L::Reverse, &L::Sort, &L::SortDescending});
    Has<L, void(int (*)(const void*, const void*)), int(const E&) const>({&L::Sort}, {&L::Search});
    Has<L, bool(const E&, E**, E**, Index*, Index*, bool) const>({&L::BinarySearch});
    Has<L, bool(const E&, Index*, Index*, bool) const>({&L::BinarySearch});
    Has<L, bool(const E&, E**, Index*) const, bool(const E&, Index*) const>({&L::BinarySearch}, {&L::BinarySearch});
    HasStatic<int(const void*, const void*)>({&L::CompareElements, &L::CompareElementsDesc});
    Has<Open, void(E&), E*>({&Open::ElementAdded, &Open::ElementRemoved}, {&Open::storage});
    Has<Open, void(E*, Index), void()>({&Open::ElementsAdded, &Open::ElementsRemoved}, {&Open::Cleared});
    Has<Open, Index, bool>({&Open::count, &Open::growSize, &Open::capacity}, {&Open::useExponentialGrowth});
    const Open list;
    EXPECT_TRUE(InOrder(list.storage, list.count, list.growSize, list.capacity, list.useExponentialGrowth));
}

template <class Cell>
struct OpenMap : TMap<Cell>
{
    using TMap<Cell>::width, TMap<Cell>::height, TMap<Cell>::columns;
};

template <class Cell, class M = TMap<Cell>, class Open = OpenMap<Cell>>
void NameMap()
{
    static_assert(std::has_virtual_destructor_v<M> && Copies<M>);
    static_assert(Makes<M> && Makes<M, Index> && Makes<M, Index, Index>);
    Has<M, Cell*(Index) const, Index() const>({&M::operator[]}, {&M::GetWidth, &M::GetHeight});
    Has<M, void(Index, Index), void(Index)>({&M::Alter}, {&M::Grow, &M::Shrink, &M::RemoveRow, &M::RemoveColumn});
    Has<M, void()>({&M::AddRow, &M::AddColumn, &M::Clear});
    Has<Open, Index, Cell**>({&Open::width, &Open::height}, {&Open::columns});
    const Open map;
    EXPECT_TRUE(InOrder(map.width, map.height, map.columns));
}

template <class A, class B, class P = TPair<A, B>>
void NamePair()
{
    static_assert(Makes<P> && Makes<P, A, B> && Copies<P> && !std::is_polymorphic_v<P>);
    Has<P, A, B, bool(const P&) const>({&P::first}, {&P::second}, {&P::operator==, &P::operator<, &P::operator>});
}

/// A link that shows what it hands down, and overrides what must be virtual.
template <class E>
struct OpenLink : TLinkUni<E>
{
    using TLinkUni<E>::next;
    void InsertAfter(TLinkUni<E>* node) override { TLinkUni<E>::InsertAfter(node); }
    void MakeCircular() override { TLinkUni<E>::MakeCircular(); }
};

template <class T, class V2 = TVector2<T>, class V3 = TVector3<T>, class V4 = TVector4<T>>
void NameListMapAndPair()
{
    NameList<int>(), NameList<T>(), NameList<V2>(), NameList<V3>(), NameList<V4>();
    NameList<TEdge2<T>>(), NameList<TEdge3<T>>(), NameList<TMatrix4x4<T>>(), NameList<TPolygon<T, TVector2>*>();
    NameList<TPair<T, V2>>(), NameList<TPair<V3, Index>>();
    NameMap<TPolygon<T, TVector3>*>(), NameMap<TPair<V2, V2>>();
    NamePair<T, V2>(), NamePair<T, V3>(), NamePair<T, V4>(), NamePair<V2, V2>(), NamePair<V3, Index>();
}

template <class T, class E = TVector3<T>, class L = TLinkUni<E>>
void NameLink()
{
    static_assert(std::has_virtual_destructor_v<L> && Makes<L> && Copies<L>);
    Has<L, E, L*() const, void(L*)>({&L::value}, {&L::GetNext}, {&L::SetNext, &L::Add, &L::InsertAfter});
    Has<L, L*(), void(), Index() const>({&L::GetLast}, {&L::MakeCircular}, {&L::GetCount});
    HasStatic<void(L*)>({&L::ReleaseMemory, &L::ReleaseMemoryCircular});
    Has<OpenLink<E>, L*>({&OpenLink<E>::next});
    const OpenLink<E> link;
    EXPECT_TRUE(InOrder(link.value, link.next));
}

} // namespace

TYPED_TEST(ContainerInterfaceTest, Members)
{
    NameListMapAndPair<TypeParam>(), NameLink<TypeParam>();
}

// The interface of boxes, edges, lines, planes, triangles and round bodies.

#include "tests/library/Interface.h"

#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/primitives/TSpiral.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class T>
struct PrimitiveInterfaceTest : testing::Test
{};
TYPED_TEST_SUITE(PrimitiveInterfaceTest, Scalars, TypeNames);

/// What the edges of two and three dimensions share.
template <class E, class V, class T, class Line, class Matrix, class... Coordinates>
void NameEdge()
{
    static_assert(Makes<E> && Makes<E, const V&, const V&> && Makes<E, Coordinates...> && Copies<E>);
    Has<E, V[2], V() const, Line() const>({&E::Vertex}, {&E::GetMid, &E::GetDirection}, {&E::GetLine});
    Has<E, E(const V&) const, E&(const V&)>({&E::operator+, &E::operator-}, {&E::operator+=, &E::operator-=});
    Has<E, E(const Matrix&) const, E&(const Matrix&)>({&E::operator*}, {&E::operator*=});
    Has<E, bool(const E&) const>({&E::operator==, &E::operator>, &E::operator<});
    Has<E, T(const V&, bool*, bool*) const>({&E::DistanceToPoint});
}

/// What the lines of two and three dimensions share.
template <class L, class V, class T, class... Coordinates>
void NameLine()
{
    static_assert(Makes<L> && Makes<L, const V&, const V&> && Makes<L, Coordinates...> && Copies<L>);
    Has<L, bool(const V&, const V&), V(const T&) const>({&L::Fit}, {&L::Evaluate});
}

/// What the triangles of two and three dimensions share.
template <class R, class V>
void NameTriangle()
{
    static_assert(Makes<R> && Makes<R, const V&, const V&, const V&> && Copies<R>);
    Has<R, V[3]>({&R::corners});
}

/// What cones and cylinders share.
template <class S, class T, class V = TVector3<T>>
void NameRevolution()
{
    static_assert(Makes<S> && Makes<S, T, T> && Makes<S, T, T, const V&, const V&>);
    static_assert(Makes<S, T, T, T, T, T, T, T, T> && Copies<S>);
    Has<S, V, T>({&S::axis}, {&S::radius, &S::height});
}

template <class T, class V2 = TVector2<T>, class V3 = TVector3<T>, class E2 = TEdge2<T>, class E3 = TEdge3<T>,
          class L2 = TLine2<T>, class L3 = TLine3<T>, class B = TBox<T>, class M = TMatrix4x4<T>, class P = TPlane<T>,
          class R3 = TTriangle3<T>, class S = TSphere<T>, class C2 = TCircle2<T>,
          class Points = TPointSet<T, TVector3>&>
void NameBoxesEdgesAndLines()
{
    static_assert(Makes<B> && Makes<B, T> && Makes<B, const V3&, const V3&, T> && Copies<B>);
    Has<B, bool(const B&) const, B(const M&) const>({&B::operator==, &B::operator!=}, {&B::operator*});
    Has<B, B&(const M&), void(), void(const V3&)>({&B::operator*=}, {&B::Reset, &B::EnsureVolume}, {&B::Extend});
    Has<B, void(const T&, const T&, const T&), void(const B&)>({&B::Extend}, {&B::Extend});
    Has<B, void(const T&), V3() const, bool(const V3&, T) const>({&B::Extend}, {&B::GetCentre}, {&B::IsWithin});
    Has<B, T() const>(
        {&B::GetWidth, &B::GetDepth, &B::GetHeight, &B::GetMaxDim, &B::GetMinDim, &B::GetArea, &B::GetVolume});
    Has<B, void(V3*) const, bool(const V2&, T) const>({&B::GetCorners, &B::GetDiagonals}, {&B::IsWithin});
    Has<B, bool(const TVector4<T>&, T) const, bool(const B&, const bool&) const>({&B::IsWithin}, {&B::IsWithin});
    Has<B, bool(const L3&, T) const, bool(const L2&, V2*, V2*, T) const>({&B::IsWithin}, {&B::IntersectWith});
    Has<B, bool(const L3&, V3*, V3*, T) const>({&B::IntersectWith});

    NameEdge<E2, V2, T, L2, TMatrix2x2<T>, T, T, T, T>();
    Has<E2, bool(const V2&) const, bool(const V2&, T) const>({&E2::IsWithin}, {&E2::IsWithinCollinear});
    Has<E2, bool(const E2&, T, T) const, bool(const E2&, V2*, bool*, T) const>({&E2::Intersects}, {&E2::IntersectWith});
    Has<E2, bool(const C2&, V2*, V2*, bool*, bool*) const>({&E2::IntersectWith});

    NameEdge<E3, V3, T, L3, TMatrix3x3<T>, T, T, T, T, T, T>();
    Has<E3, V3(const V3&) const, bool(const P&, V3*, T) const>({&E3::GetClosestPoint}, {&E3::IntersectWith});
    Has<E3, int(const V3&, const V3&, const V3&, V3*, T) const>({&E3::IntersectWith});

    NameLine<L2, V2, T, T, T, T, T>();
    Has<L2, T(const T&) const, T() const>({&L2::EvaluateCart, &L2::GetIntercept}, {&L2::GetGrad, &L2::GetIntercept});
    Has<L2, T(const V2&) const, bool(const L2&, V2*, T) const>({&L2::DistanceToPoint}, {&L2::IntersectWith});
    Has<L2, bool(const C2&, V2*, V2*) const>({&L2::IntersectWith});

    NameLine<L3, V3, T, T, T, T, T, T, T>();
    Has<L3, bool(Points, T*, T*), T(const V3&, T) const>({&L3::Fit}, {&L3::DistanceToPoint});
    Has<L3, bool(const L3&, V3*, V3*, T) const>({&L3::ClosestPoints});
    Has<L3, bool(const V3&, const V3&, const V3&, V3*, T*, T) const>(
        {&L3::IntersectWith, &L3::IntersectWithBFC, &L3::IntersectWithFFC});
    Has<L3, bool(const R3&, V3*, T*, T) const>({&L3::IntersectWith, &L3::IntersectWithBFC, &L3::IntersectWithFFC});
    Has<L3, bool(const B&, V3*, V3*, T) const>({&L3::IntersectWith});
    Has<L3, bool(const S&, V3*, V3*, T) const>({&L3::IntersectWith});
    Has<L3, bool(const P&, V3*, T) const>({&L3::IntersectWith});
}

template <class T, class V2 = TVector2<T>, class V3 = TVector3<T>, class E2 = TEdge2<T>, class E3 = TEdge3<T>,
          class L2 = TLine2<T>, class L3 = TLine3<T>, class P = TPlane<T>, class R2 = TTriangle2<T>,
          class R3 = TTriangle3<T>, class C2 = TCircle2<T>, class C3 = TCircle3<T>,
          class Points = TPointSet<T, TVector3>&>
void NamePlanesTrianglesAndCircles()
{
    static_assert(Makes<P> && Makes<P, T, T, T, T, T, T> && Copies<P>);
    static_assert(Makes<P, const V3&, const V3&> && Makes<P, const V3&, const V3&, const V3&>);
    Has<P, bool(const P&) const, void(const V3&, const V3&, const V3&)>({&P::operator==}, {&P::Fit});
    Has<P, bool(Points, T*, T*), T(const V3&) const>({&P::Fit}, {&P::SignedDistanceToPoint, &P::DistanceToPoint});
    Has<P, bool(const L3&, V3*, T) const, bool(const E3&, V3*, T) const>({&P::IntersectWith}, {&P::IntersectWith});
    Has<P, bool(const P&, L3*, T) const, bool(const R3&) const>({&P::IntersectWith}, {&P::Intersects});
    Has<P, bool(const R3&, V3*, V3*, Index*, Index*, T) const>({&P::IntersectWith});
    Has<P, bool(const V3&, const V3&, const V3&, V3*, V3*, Index*, Index*, T) const>({&P::IntersectWith});
    Has<P, bool(const V3&, const V3&, const V3&) const>({&P::Intersects});

    NameTriangle<R2, V2>();
    HasStatic<T(const V2&, const V2&, const V2&)>({&R2::GetDoubleArea});
    Has<R2, T() const, bool(const V2&) const>({&R2::GetDoubleArea}, {&R2::WithinCone});
    HasStatic<bool(const V2&, const V2&, const V2&, const V2&)>({&R2::WithinCone});

    NameTriangle<R3, V3>();
    Has<R3, T() const, T(V3&, T) const, V3&(V3&)>({&R3::GetArea}, {&R3::DistanceToPoint}, {&R3::ClosestVert});
    Has<R3, bool(const L3&, V3*, T*, T) const>({&R3::IntersectWith, &R3::IntersectWithBFC, &R3::IntersectWithFFC});

    static_assert(Makes<C2> && Makes<C2, T, T, T> && Makes<C2, T, const V2&> && Copies<C2>);
    Has<C2, bool(const V2&, const V2&, const V2&), bool(const V2&, T) const>({&C2::Fit}, {&C2::Contains});
    Has<C2, bool(const TList<V2>&, Index, T) const>({&C2::Contains});
    Has<C2, bool(const L2&, V2*, V2*) const>({&C2::IntersectWith});
    Has<C2, bool(const E2&, V2*, V2*, bool*, bool*) const>({&C2::IntersectWith});
    Has<C2, void(const TList<V2>&)>({&C2::MinimumBoundingCircle});

    static_assert(Makes<C3> && Makes<C3, T, const V3&, const V3&> && Copies<C3>);
    Has<C3, bool(const V3&, const V3&, const V3&, T), bool(Points, T*, T*, T, Index)>({&C3::Fit}, {&C3::Fit});
    Has<C3, bool(const L3&, V3*) const>({&C3::IntersectWith});
}

template <class T, class V3 = TVector3<T>, class S = TSphere<T>, class Cone = TCone<T>, class Cylinder = TCylinder<T>,
          class Spiral = TSpiral3<T>, class Line = TLine3<T>>
void NameRoundBodiesAndSpiral()
{
    static_assert(std::has_virtual_destructor_v<S> && Makes<S> && Copies<S>);
    static_assert(Makes<S, T> && Makes<S, T, const V3&> && Makes<S, T, T, T, T>);
    Has<S, TVector4<T>, bool(const Line&, V3*, V3*, T) const>({&S::sphere}, {&S::IntersectWith});
    Has<S, bool(TPointSet<T, TVector3>&, T*, Index)>({&S::Fit});

    NameRevolution<Cone, T>();
    static_assert(std::is_trivially_copyable_v<Cone> && std::is_standard_layout_v<Cone> &&
                  sizeof(Cone) == 8 * sizeof(T));
    Has<Cone, V3, bool(const Line&, V3*, V3*) const>({&Cone::apex}, {&Cone::IntersectWith});
    const Cone cone;
    EXPECT_TRUE(InOrder(cone.apex, cone.axis, cone.radius, cone.height));

    NameRevolution<Cylinder, T>();
    static_assert(std::has_virtual_destructor_v<Cylinder>);
    Has<Cylinder, V3, bool(Line, V3*, V3*, bool) const>({&Cylinder::centre}, {&Cylinder::IntersectWith});
    const Cylinder cylinder;
    EXPECT_TRUE(InOrder(cylinder.centre, cylinder.axis, cylinder.radius, cylinder.height));

    static_assert(Makes<Spiral, V3, V3, T, int, T, T> && Makes<Spiral, Spiral&> && Copies<Spiral> &&
                  !std::is_polymorphic_v<Spiral>);
    Has<Spiral, TList<V3>>({&Spiral::points});
}

} // namespace

TYPED_TEST(PrimitiveInterfaceTest, Members)
{
    NameBoxesEdgesAndLines<TypeParam>(), NamePlanesTrianglesAndCircles<TypeParam>(),
        NameRoundBodiesAndSpiral<TypeParam>();
}

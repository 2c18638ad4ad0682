// The interface of point sets and of what derives from them: parameterisations, polygons and splines.

#include "tests/library/Interface.h"

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

template <class F>
struct PointSetInterfaceTest : testing::Test
{};
TYPED_TEST_SUITE(PointSetInterfaceTest, PointFamily, TypeNames);

/// The classes beside a point set, of its own arguments.
template <class PointSet>
struct Beside;
template <class T, template <class> class V>
struct Beside<TPointSet<T, V>>
{
    using Parameterization = TParameterization<T, V>;
    using Spline = TBSpline<T, V>;
};

/// Shows what a class hands down.
template <class Base>
struct OpenSet : Base
{
    using Base::Base, Base::boundingBox, Base::keepBox, Base::dimension, Base::useExponentialGrowth;
    using Base::ElementAdded, Base::ElementsAdded, Base::ElementRemoved, Base::ElementsRemoved, Base::Cleared;
};

template <class Base>
struct OpenParameterization : OpenSet<Base>
{
    using Base::parameters, Base::length;
};

template <class Base>
struct OpenPolygon : OpenSet<Base>
{
    using Base::OffsetEdge, Base::AddOffsetPoints, Base::SimplifySection;
    using Base::sortedList, Base::GetSignedSimpleArea, Base::GetSimpleArea, Base::GetSignedTriangleAreaWithOrigin;
};

template <class Base>
struct OpenSpline : OpenSet<Base>
{
    using OpenSet<Base>::OpenSet;
    using Base::knotCount, Base::coefficientCount, Base::knots, Base::coefficients, Base::type, Base::order;
};

/// Whether the final overrider of each hook but Cleared stands in Class, and that of Cleared in PointSet.
template <class Open, class Class, class PointSet, class V>
constexpr bool OverridesHooks()
{
    return std::is_same_v<decltype(&Open::ElementAdded), void (Class::*)(V&)> &&
           std::is_same_v<decltype(&Open::ElementsAdded), void (Class::*)(V*, Index)> &&
           std::is_same_v<decltype(&Open::ElementRemoved), void (Class::*)(V&)> &&
           std::is_same_v<decltype(&Open::ElementsRemoved), void (Class::*)(V*, Index)> &&
           std::is_same_v<decltype(&Open::Cleared), void (PointSet::*)()>;
}

/// Whether a point set, parameterisation or polygon of the family F can be made of all that it should be made of.
template <class Class, class F, class T = typename F::T, class V = typename F::Vector>
constexpr bool IsMadeLikeAPointSet()
{
    return Makes<Class> && Makes<Class, Index> && Makes<Class, Index, Index> && Makes<Class, V*, Index> &&
           Makes<Class, const V*, Index> && Makes<Class, TPointSet<T, TVector2>&> &&
           Makes<Class, TPointSet<T, TVector3>&> && Makes<Class, TPointSet<T, TVector4>&> && Makes<Class, Class&> &&
           Copies<Class> && std::has_virtual_destructor_v<Class>;
}

template <class S, class... Factors>
void NameProductsInPlace()
{
    (Has<S, S&(const Factors&)>({&S::operator*=}), ...);
}

template <class F, class T = typename F::T, class V = typename F::Vector, class S = typename F::PointSet,
          class P = typename Beside<S>::Parameterization, class OpenS = OpenSet<S>, class Q = OpenParameterization<P>,
          class List = TList<V>, class Matrix = TMatrixMxN<T>, class Plane = TVector2<T>>
void NamePointSetAndParameterization()
{
    static_assert(IsMadeLikeAPointSet<S, F>() && std::is_convertible_v<S*, List*>);
    Has<S, const TBox<T>&() const, V() const>({&S::GetBoundingBox}, {&S::GetCentre});
    Has<S, void(), S&(const V&)>({&S::RecalculateBoundingBox}, {&S::operator+=, &S::operator-=});
    Has<S, bool(const Plane&, const Plane&, const V&, const T&, const T&) const>({&S::WithinRectangle});
    NameProductsInPlace<S, T, TMatrix2x2<T>, TMatrix3x3<T>, TMatrix4x4<T>, TMatrixMxN<T>>();
    Has<S, void(Matrix*) const, V(Matrix*) const>({&S::ToMatrix}, {&S::ToTransToCentMatrix});
    Has<S, bool(S*, Matrix*, V*, bool), void(Index, bool)>({&S::Register}, {&S::Smooth});
    Has<S, void(const T&, bool), void(const V*, Index)>({&S::Infill}, {&S::MinkowskiSum, &S::MinkowskiDifference});
    Has<S, void(const List&)>({&S::MinkowskiSum, &S::MinkowskiDifference});
    Has<S, void(const V*, Index, const V*, Index)>({&S::MinkowskiSum, &S::MinkowskiDifference});
    Has<S, void(const List&, const List&)>({&S::MinkowskiSum, &S::MinkowskiDifference});
    Has<S, bool(const Plane&, Index, Index) const, bool(const T&, const T&) const>({&S::IsWithin}, {&S::IsWithin});
    Has<S, bool(const T&, const T&, Index, Index) const, bool(const Plane&) const>({&S::IsWithin}, {&S::IsWithin});
    Has<S, void(Index, Index, const Plane&, int*) const>({&S::ExamineSegment});
    Has<S, bool(TEdge2<T>&, List*) const>({&S::IntersectWith});

    static_assert(OverridesHooks<OpenS, S, S, V>());
    Has<OpenS, TBox<T>, bool, Index>({&OpenS::boundingBox}, {&OpenS::keepBox}, {&OpenS::dimension});
    const OpenS set;
    EXPECT_TRUE(InOrder(set.useExponentialGrowth, set.boundingBox, set.keepBox, set.dimension));

    static_assert(IsMadeLikeAPointSet<P, F>() && std::is_convertible_v<P*, S*>);
    Has<P, void(), V(const T&) const, T() const>({&P::Parameterize}, {&P::Evaluate}, {&P::GetLength});
    Has<P, T(T, T) const>({&P::GetLength});

    static_assert(OverridesHooks<Q, S, S, V>());
    Has<Q, TList<T>, T>({&Q::parameters}, {&Q::length});
    const Q curve;
    EXPECT_TRUE(InOrder(curve.dimension, curve.parameters, curve.length));
}

template <class F, class T = typename F::T, class V = typename F::Vector, class S = typename F::PointSet,
          class P = typename F::Polygon, class B = typename Beside<S>::Spline, class Q = OpenPolygon<P>,
          class D = OpenSpline<B>, class Edge = TEdge2<T>>
void NamePolygonAndSpline()
{
    static_assert(IsMadeLikeAPointSet<P, F>() && std::is_convertible_v<P*, S*>);
    Has<P, T() const>({&P::GetSignedSimpleArea, &P::GetSimpleArea, &P::GetWindingAngle});
    Has<P, Index() const, void(TList<Edge>*) const>({&P::GetBottomLeft}, {&P::GetEdges});
    Has<P, P(const TVector3<T>&) const, bool(T, T)>({&P::GetOpenConvexBoundary}, {&P::Offset});
    Has<P, void()>({&P::MakeCCW, &P::MakeConvexHull, &P::ReorderCEC, &P::RemoveDuplicateVertices, &P::MakeSimplePolygon,
                    &P::TrimCrossings});
    Has<P, void(T)>({&P::Simplify, &P::SimplifyDPM});

    static_assert(OverridesHooks<Q, S, S, V>());
    Has<Q, T(Index, Index) const>({&Q::GetSignedSimpleArea, &Q::GetSimpleArea, &Q::GetSignedTriangleAreaWithOrigin});
    Has<Q, Edge(const Edge&, const T&) const>({&Q::OffsetEdge});
    Has<Q, void(const Edge&, const Edge&, const T&, bool)>({&Q::AddOffsetPoints});
    Has<Q, void(Index, Index, bool*, T) const, TList<TPair<T, V>>>({&Q::SimplifySection}, {&Q::sortedList});
    const Q polygon;
    EXPECT_TRUE(InOrder(polygon.dimension, polygon.sortedList));

    static_assert(std::is_same_v<std::underlying_type_t<KnotType>, unsigned int> && Uniform == 0 && Clamped == 1);
    static_assert(std::has_virtual_destructor_v<B> && std::is_convertible_v<B*, S*>);
    static_assert(Makes<B, Index, KnotType, Index, Index> && Makes<B, S&, Index, KnotType> && Makes<B, B&> &&
                  Copies<B>);
    Has<B, V(T), void(S*, T, bool), Index() const>({&B::Evaluate}, {&B::Evaluate}, {&B::GetOrder});
    Has<B, KnotType() const, void(Index), void(KnotType)>({&B::GetType}, {&B::SetOrder}, {&B::SetType});
    Has<B, void(S&, Index, bool), void(), T(T, T, T), T(T)>({&B::Fit}, {&B::Wrap}, {&B::GetLength}, {&B::GetLength});

    static_assert(OverridesHooks<D, B, S, V>());
    Has<D, Index, TList<T>>({&D::knotCount, &D::coefficientCount, &D::order}, {&D::knots, &D::coefficients});
    Has<D, KnotType>({&D::type});
    const D spline(3u, Clamped, 0u, 5u);
    EXPECT_TRUE(InOrder(spline.dimension, spline.knotCount, spline.coefficientCount, spline.knots, spline.coefficients,
                        spline.type, spline.order));
}

} // namespace

TYPED_TEST(PointSetInterfaceTest, Members)
{
    NamePointSetAndParameterization<TypeParam>(), NamePolygonAndSpline<TypeParam>();
}

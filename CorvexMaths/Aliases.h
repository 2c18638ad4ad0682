#pragma once

/// Short names for the classes over `float` and `double`: `Vector3d` is `TVector3<double>`, `Polygon2f` is
/// `TPolygon<float, TVector2>`. No other header includes this one, so the names are there for those who ask for them.
/// It declares the classes without defining them: what a program uses it includes, by CorvexMaths.h or one by one.

#include <CorvexMaths/Forward.h>

namespace Halmont::Orrin::CorvexMaths
{

/// @{
/// Vectors.
using Vector2f = TVector2<float>;
using Vector2d = TVector2<double>;
using Vector3f = TVector3<float>;
using Vector3d = TVector3<double>;
using Vector4f = TVector4<float>;
using Vector4d = TVector4<double>;
/// @}

/// @{
/// Complex numbers and quaternions.
using Complexf = TComplex<float>;
using Complexd = TComplex<double>;
using Quaternionf = TQuaternion<float>;
using Quaterniond = TQuaternion<double>;
/// @}

/// @{
/// Dense matrices, of fixed and of run-time size.
using Matrix2f = TMatrix2x2<float>;
using Matrix2d = TMatrix2x2<double>;
using Matrix3f = TMatrix3x3<float>;
using Matrix3d = TMatrix3x3<double>;
using Matrix4f = TMatrix4x4<float>;
using Matrix4d = TMatrix4x4<double>;
using MatrixMxNf = TMatrixMxN<float>;
using MatrixMxNd = TMatrixMxN<double>;
/// @}

/// @{
/// Sparse matrices.
using MatrixFragmentf = TMatrixFragment<float>;
using MatrixFragmentd = TMatrixFragment<double>;
using CCSMatrixMxNf = TCCSMatrixMxN<float>;
using CCSMatrixMxNd = TCCSMatrixMxN<double>;
using CRSMatrixMxNf = TCRSMatrixMxN<float>;
using CRSMatrixMxNd = TCRSMatrixMxN<double>;
/// @}

/// @{
/// Primitives.
using Boxf = TBox<float>;
using Boxd = TBox<double>;
using Edge2f = TEdge2<float>;
using Edge2d = TEdge2<double>;
using Edge3f = TEdge3<float>;
using Edge3d = TEdge3<double>;
using Line2f = TLine2<float>;
using Line2d = TLine2<double>;
using Line3f = TLine3<float>;
using Line3d = TLine3<double>;
using Planef = TPlane<float>;
using Planed = TPlane<double>;
using Triangle2f = TTriangle2<float>;
using Triangle2d = TTriangle2<double>;
using Triangle3f = TTriangle3<float>;
using Triangle3d = TTriangle3<double>;
using Circle2f = TCircle2<float>;
using Circle2d = TCircle2<double>;
using Circle3f = TCircle3<float>;
using Circle3d = TCircle3<double>;
using Spheref = TSphere<float>;
using Sphered = TSphere<double>;
using Conef = TCone<float>;
using Coned = TCone<double>;
using Cylinderf = TCylinder<float>;
using Cylinderd = TCylinder<double>;
using Spiral3f = TSpiral3<float>;
using Spiral3d = TSpiral3<double>;
/// @}

/// @{
/// Point sets, polygons, parameterizations and splines, over vectors of the size in the name.
using PointSet2f = TPointSet<float, TVector2>;
using PointSet2d = TPointSet<double, TVector2>;
using PointSet3f = TPointSet<float, TVector3>;
using PointSet3d = TPointSet<double, TVector3>;
using PointSet4f = TPointSet<float, TVector4>;
using PointSet4d = TPointSet<double, TVector4>;
using Polygon2f = TPolygon<float, TVector2>;
using Polygon2d = TPolygon<double, TVector2>;
using Polygon3f = TPolygon<float, TVector3>;
using Polygon3d = TPolygon<double, TVector3>;
using Polygon4f = TPolygon<float, TVector4>;
using Polygon4d = TPolygon<double, TVector4>;
using Parameterization2f = TParameterization<float, TVector2>;
using Parameterization2d = TParameterization<double, TVector2>;
using Parameterization3f = TParameterization<float, TVector3>;
using Parameterization3d = TParameterization<double, TVector3>;
using Parameterization4f = TParameterization<float, TVector4>;
using Parameterization4d = TParameterization<double, TVector4>;
using BSpline2f = TBSpline<float, TVector2>;
using BSpline2d = TBSpline<double, TVector2>;
using BSpline3f = TBSpline<float, TVector3>;
using BSpline3d = TBSpline<double, TVector3>;
using BSpline4f = TBSpline<float, TVector4>;
using BSpline4d = TBSpline<double, TVector4>;
/// @}

/// @{
/// Regions of the plane.
using Regionf = TRegion<float>;
using Regiond = TRegion<double>;
/// @}

} // namespace Halmont::Orrin::CorvexMaths

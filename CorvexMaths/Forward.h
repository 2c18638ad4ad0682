#pragma once

/// Forward declarations of every class template of the library, each with its visibility.

#include <CorvexMaths/Export.h>

namespace Halmont::Orrin::CorvexUtilities
{

template <class T>
class CORVEX_API TList;
template <class T>
class CORVEX_API TMap;
template <class A, class B>
struct CORVEX_API TPair;
template <class T>
class CORVEX_API TLinkUni;

} // namespace Halmont::Orrin::CorvexUtilities

namespace Halmont::Orrin::CorvexMaths
{

// The containers are used throughout the mathematics under their own names.
using CorvexUtilities::TLinkUni;
using CorvexUtilities::TList;
using CorvexUtilities::TMap;
using CorvexUtilities::TPair;

// Vectors.
template <class T>
struct CORVEX_API TVector2;
template <class T>
struct CORVEX_API TVector3;
template <class T>
struct CORVEX_API TVector4;

// Matrices.
template <class T>
struct CORVEX_API TMatrix2x2;
template <class T>
struct CORVEX_API TMatrix3x3;
template <class T>
struct CORVEX_API TMatrix4x4;
template <class T>
class CORVEX_API TMatrixMxN;

// Primitives.
template <class T>
struct CORVEX_API TBox;
template <class T>
struct CORVEX_API TEdge2;
template <class T>
struct CORVEX_API TEdge3;
template <class T>
struct CORVEX_API TLine2;
template <class T>
struct CORVEX_API TLine3;
template <class T>
struct CORVEX_API TPlane;
template <class T>
struct CORVEX_API TTriangle2;
template <class T>
struct CORVEX_API TTriangle3;
template <class T>
struct CORVEX_API TCircle2;
template <class T>
struct CORVEX_API TCircle3;
template <class T>
class CORVEX_API TSphere;

// Point sets, polygons and splines: over a scalar T and one of the vector templates V.
template <class T, template <class> class V>
class CORVEX_API TPointSet;
template <class T, template <class> class V>
class CORVEX_API TPolygon;
template <class T, template <class> class V>
class CORVEX_API TBSpline;

} // namespace Halmont::Orrin::CorvexMaths

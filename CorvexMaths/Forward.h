#pragma once

/// Forward declarations of every class template of the library, each with its visibility.

#include <CorvexMaths/Deleted.h>
#include <CorvexMaths/Export.h>

#include <type_traits>

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

/// Enables an explicit conversion from the same class over another scalar.
template <class S, class T>
using EnableForOther = std::enable_if_t<!std::is_same_v<S, T>, int>;

// Vectors.
template <class T>
struct CORVEX_API TVector2;
template <class T>
struct CORVEX_API TVector3;
template <class T>
struct CORVEX_API TVector4;

// Rotations.
template <class T>
struct CORVEX_API TComplex;
template <class T>
struct CORVEX_API TQuaternion;

// Matrices.
template <class T>
struct CORVEX_API TMatrix2x2;
template <class T>
struct CORVEX_API TMatrix3x3;
template <class T>
struct CORVEX_API TMatrix4x4;
template <class T>
class CORVEX_API TMatrixMxN;

// Sparse matrices.
template <class T>
struct CORVEX_API TMatrixFragment;
template <class T>
class CORVEX_API TCCSMatrixMxN;
template <class T>
class CORVEX_API TCRSMatrixMxN;

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
template <class T>
struct CORVEX_API TCone;
template <class T>
class CORVEX_API TCylinder;
template <class T>
struct CORVEX_API TSpiral3;

// Point sets, polygons and splines: over a scalar T and one of the vector templates V.
template <class T, template <class> class V>
class CORVEX_API TPointSet;
template <class T, template <class> class V>
class CORVEX_API TPolygon;
template <class T>
class CORVEX_API TOutlineIndex;
template <class T, template <class> class V>
class CORVEX_API TParameterization;
template <class T, template <class> class V>
class CORVEX_API TBSpline;

// Regions of the plane.
template <class T>
class CORVEX_API TRegion;

// Exact integers and sets.
struct CORVEX_API Int128;
template <class T>
class CORVEX_API TSetGenerator;

} // namespace Halmont::Orrin::CorvexMaths

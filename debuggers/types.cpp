// What gdb needs to know of the classes that the library holds ready. Compilers leave their description to the library,
// and an installed one has been stripped of it; so it comes as a file of its own, compiled of this source and never
// linked, that corvexmaths_gdb.py hands to gdb.

#include <CorvexMaths/CorvexMaths.h>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;

template <class T, template <class> class V>
struct PointClasses
{
    TPointSet<T, V> set;
    TParameterization<T, V> parameterization;
    TPolygon<T, V> polygon;
    TBSpline<T, V> spline;
    TList<TPair<T, V<T>>> sorted;
};

template <class T>
struct ScalarClasses
{
    TList<T> list;
    TMap<T> map;
    TComplex<T> complex;
    TQuaternion<T> quaternion;
    TMatrix2x2<T> matrix2;
    TMatrix3x3<T> matrix3;
    TMatrix4x4<T> matrix4;
    TMatrixMxN<T> matrix;
    TMatrixFragment<T> fragment;
    TCCSMatrixMxN<T> columns;
    TCRSMatrixMxN<T> rows;
    TBox<T> box;
    TEdge2<T> edge2;
    TEdge3<T> edge3;
    TLine2<T> line2;
    TLine3<T> line3;
    TPlane<T> plane;
    TTriangle2<T> triangle2;
    TTriangle3<T> triangle3;
    TCircle2<T> circle2;
    TCircle3<T> circle3;
    TSphere<T> sphere;
    TCone<T> cone;
    TCylinder<T> cylinder;
    TSpiral3<T> spiral;
    PointClasses<T, TVector2> in2;
    PointClasses<T, TVector3> in3;
    PointClasses<T, TVector4> in4;
};

struct Classes
{
    ScalarClasses<float> single;
    ScalarClasses<double> twofold;
    TList<int> integers;
    TMap<int> table;
    Int128 large;
};

} // namespace

/// Mentions all of them, which is what makes a compiler describe them.
extern "C" void* CorvexDescribedClasses(Classes* classes)
{
    return classes;
}

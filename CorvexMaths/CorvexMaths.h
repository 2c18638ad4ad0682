#pragma once

/// Includes every public header of the library but Stream.h, which prints, and Aliases.h, which has short names.

#include <CorvexMaths/Deleted.h>
#include <CorvexMaths/Export.h>
#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Numbers.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/RealPointer.h>

#include <CorvexMaths/containers/Instantiations.h>
#include <CorvexMaths/containers/StableSort.h>
#include <CorvexMaths/containers/TLinkUni.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/containers/TMap.h>
#include <CorvexMaths/containers/TPair.h>

#include <CorvexMaths/vectors/TComplex.h>
#include <CorvexMaths/vectors/TQuaternion.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

#include <CorvexMaths/matrices/TMatrix2x2.h>
#include <CorvexMaths/matrices/TMatrix3x3.h>
#include <CorvexMaths/matrices/TMatrix4x4.h>
#include <CorvexMaths/matrices/TMatrixMxN.h>

#include <CorvexMaths/sparse/TCCSMatrixMxN.h>
#include <CorvexMaths/sparse/TCRSMatrixMxN.h>
#include <CorvexMaths/sparse/TMatrixFragment.h>

#include <CorvexMaths/primitives/TBox.h>
#include <CorvexMaths/primitives/TCircle.h>
#include <CorvexMaths/primitives/TCone.h>
#include <CorvexMaths/primitives/TCylinder.h>
#include <CorvexMaths/primitives/TEdge.h>
#include <CorvexMaths/primitives/TLine.h>
#include <CorvexMaths/primitives/TPlane.h>
#include <CorvexMaths/primitives/TSphere.h>
#include <CorvexMaths/primitives/TSpiral.h>
#include <CorvexMaths/primitives/TTriangle.h>

#include <CorvexMaths/pointsets/TParameterization.h>
#include <CorvexMaths/pointsets/TPointSet.h>

#include <CorvexMaths/polygons/TOutlineIndex.h>
#include <CorvexMaths/polygons/TPolygon.h>

#include <CorvexMaths/splines/TBSpline.h>

#include <CorvexMaths/regions/TRegion.h>

#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/exact/TSetGenerator.h>

#include <CorvexMaths/robust/Robust.h>

#pragma once

/// Every answer of the Robust family: fits, alignment, hulls, splines and zones that hold on every input, or say why
/// there is none.

#include <CorvexMaths/robust/Alignment.h>
#include <CorvexMaths/robust/CircleFit.h>
#include <CorvexMaths/robust/CircleZone.h>
#include <CorvexMaths/robust/ClosestPoint.h>
#include <CorvexMaths/robust/ConeFit.h>
#include <CorvexMaths/robust/ConvexHull.h>
#include <CorvexMaths/robust/CylinderFit.h>
#include <CorvexMaths/robust/FitAnswer.h>
#include <CorvexMaths/robust/LineFit.h>
#include <CorvexMaths/robust/LineZone.h>
#include <CorvexMaths/robust/MinimumCircle.h>
#include <CorvexMaths/robust/NearestAlignment.h>
#include <CorvexMaths/robust/PlaneFit.h>
#include <CorvexMaths/robust/PlaneZone.h>
#include <CorvexMaths/robust/Predicates.h>
#include <CorvexMaths/robust/SphereFit.h>
#include <CorvexMaths/robust/SplineFit.h>
#include <CorvexMaths/robust/SplineLength.h>
#include <CorvexMaths/robust/Status.h>

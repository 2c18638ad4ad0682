// What compiled in silence when a vector, a complex number or a quaternion stood for its address, and printing without
// the header for it. Each line with a comment must be an error with the words of the comment; see silent_errors.sh.

#include <CorvexMaths/CorvexMaths.h>

#include <iostream>
#include <sstream>

using namespace Halmont::Orrin::CorvexMaths;

const TMatrix3x3<double> Matrix;
const Robust::PlaneFit<double> Fit{TPointSet<double, TVector3>()};

void Try(TVector2<float> v, const TVector3<double> w, TVector4<float> h, TComplex<double> c, const TQuaternion<float> q,
         TList<double> lengths)
{
    std::cout << v;            // include <CorvexMaths/Stream.h>
    std::ostringstream() << w; // include <CorvexMaths/Stream.h>
    std::wcout << c;           // include <CorvexMaths/Stream.h>
    std::cout << lengths;      // include <CorvexMaths/Stream.h>
    std::cout << Matrix;       // include <CorvexMaths/Stream.h>
    std::cout << Fit;          // include <CorvexMaths/Stream.h>
    if (v) return;             // not a condition
    const bool isSet = w;      // not a condition
    lengths.RemoveAt(0, v);    // not a condition
    while (w && q) return;     // not a condition
    (void)!h;                  // not a condition
    (void)(v <= v);            // compare components or lengths
    (void)(w >= w);            // compare components or lengths
    (void)(h + 1);             // add a vector of equal components
    (void)(0.5 + w);           // add a vector of equal components
    (void)(v - 1u);            // subtract a vector of equal components
    (void)(v == nullptr);      // compare it with a value of its own class
    (void)(nullptr != w);      // compare it with a value of its own class
    (void)(h == 0);            // compare it with a value of its own class
    (void)(w < 1);             // compare components or lengths
    (void)(q == q);            // compare components
    (void)(c < c);             // compare components
    (void)(c != 0);            // compare it with a value of its own class
}

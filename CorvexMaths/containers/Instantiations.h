#pragma once

/// The containers of vectors that the library holds ready, so that programs need not compile them anew. Lists of `int`,
/// `float` and `double` come with TList.h, those of higher classes with their headers.

#include <CorvexMaths/containers/TLinkUni.h>
#include <CorvexMaths/containers/TList.h>
#include <CorvexMaths/containers/TMap.h>
#include <CorvexMaths/containers/TPair.h>
#include <CorvexMaths/vectors/TVector2.h>
#include <CorvexMaths/vectors/TVector3.h>
#include <CorvexMaths/vectors/TVector4.h>

namespace Halmont::Orrin::CorvexUtilities
{

extern template class TList<CorvexMaths::TVector2<float>>;
extern template class TList<CorvexMaths::TVector3<float>>;
extern template class TList<CorvexMaths::TVector4<float>>;
extern template struct TPair<float, CorvexMaths::TVector2<float>>;
extern template struct TPair<float, CorvexMaths::TVector3<float>>;
extern template struct TPair<float, CorvexMaths::TVector4<float>>;
extern template struct TPair<CorvexMaths::TVector3<float>, unsigned int>;
extern template struct TPair<CorvexMaths::TVector2<float>, CorvexMaths::TVector2<float>>;
extern template class TList<TPair<float, CorvexMaths::TVector2<float>>>;
extern template class TList<TPair<float, CorvexMaths::TVector3<float>>>;
extern template class TList<TPair<float, CorvexMaths::TVector4<float>>>;
extern template class TList<TPair<CorvexMaths::TVector3<float>, unsigned int>>;
extern template class TMap<TPair<CorvexMaths::TVector2<float>, CorvexMaths::TVector2<float>>>;
extern template class TLinkUni<CorvexMaths::TVector3<float>>;

extern template class TList<CorvexMaths::TVector2<double>>;
extern template class TList<CorvexMaths::TVector3<double>>;
extern template class TList<CorvexMaths::TVector4<double>>;
extern template struct TPair<double, CorvexMaths::TVector2<double>>;
extern template struct TPair<double, CorvexMaths::TVector3<double>>;
extern template struct TPair<double, CorvexMaths::TVector4<double>>;
extern template struct TPair<CorvexMaths::TVector3<double>, unsigned int>;
extern template struct TPair<CorvexMaths::TVector2<double>, CorvexMaths::TVector2<double>>;
extern template class TList<TPair<double, CorvexMaths::TVector2<double>>>;
extern template class TList<TPair<double, CorvexMaths::TVector3<double>>>;
extern template class TList<TPair<double, CorvexMaths::TVector4<double>>>;
extern template class TList<TPair<CorvexMaths::TVector3<double>, unsigned int>>;
extern template class TMap<TPair<CorvexMaths::TVector2<double>, CorvexMaths::TVector2<double>>>;
extern template class TLinkUni<CorvexMaths::TVector3<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

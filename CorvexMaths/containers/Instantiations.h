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

/// The containers of vectors of T.
#define CORVEX_INSTANTIATE_CONTAINERS(linkage, T)                                                                      \
    linkage template class TList<CorvexMaths::TVector2<T>>;                                                            \
    linkage template class TList<CorvexMaths::TVector3<T>>;                                                            \
    linkage template class TList<CorvexMaths::TVector4<T>>;                                                            \
    linkage template struct TPair<T, CorvexMaths::TVector2<T>>;                                                        \
    linkage template struct TPair<T, CorvexMaths::TVector3<T>>;                                                        \
    linkage template struct TPair<T, CorvexMaths::TVector4<T>>;                                                        \
    linkage template struct TPair<CorvexMaths::TVector3<T>, unsigned int>;                                             \
    linkage template struct TPair<CorvexMaths::TVector2<T>, CorvexMaths::TVector2<T>>;                                 \
    linkage template class TList<TPair<T, CorvexMaths::TVector2<T>>>;                                                  \
    linkage template class TList<TPair<T, CorvexMaths::TVector3<T>>>;                                                  \
    linkage template class TList<TPair<T, CorvexMaths::TVector4<T>>>;                                                  \
    linkage template class TList<TPair<CorvexMaths::TVector3<T>, unsigned int>>;                                       \
    linkage template class TMap<TPair<CorvexMaths::TVector2<T>, CorvexMaths::TVector2<T>>>;                            \
    linkage template class TLinkUni<CorvexMaths::TVector3<T>>

CORVEX_INSTANTIATE_CONTAINERS(extern, float);
CORVEX_INSTANTIATE_CONTAINERS(extern, double);

} // namespace Halmont::Orrin::CorvexUtilities

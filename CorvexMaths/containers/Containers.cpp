/// Compiles the containers of numbers and of vectors; those of higher classes are compiled with these classes.

#include <CorvexMaths/containers/Instantiations.h>

namespace Halmont::Orrin::CorvexUtilities
{

template class TList<int>;
template class TList<float>;
template class TList<double>;

template class TList<CorvexMaths::TVector2<float>>;
template class TList<CorvexMaths::TVector3<float>>;
template class TList<CorvexMaths::TVector4<float>>;
template struct TPair<float, CorvexMaths::TVector2<float>>;
template struct TPair<float, CorvexMaths::TVector3<float>>;
template struct TPair<float, CorvexMaths::TVector4<float>>;
template struct TPair<CorvexMaths::TVector3<float>, unsigned int>;
template struct TPair<CorvexMaths::TVector2<float>, CorvexMaths::TVector2<float>>;
template class TList<TPair<float, CorvexMaths::TVector2<float>>>;
template class TList<TPair<float, CorvexMaths::TVector3<float>>>;
template class TList<TPair<float, CorvexMaths::TVector4<float>>>;
template class TList<TPair<CorvexMaths::TVector3<float>, unsigned int>>;
template class TMap<TPair<CorvexMaths::TVector2<float>, CorvexMaths::TVector2<float>>>;
template class TLinkUni<CorvexMaths::TVector3<float>>;

template class TList<CorvexMaths::TVector2<double>>;
template class TList<CorvexMaths::TVector3<double>>;
template class TList<CorvexMaths::TVector4<double>>;
template struct TPair<double, CorvexMaths::TVector2<double>>;
template struct TPair<double, CorvexMaths::TVector3<double>>;
template struct TPair<double, CorvexMaths::TVector4<double>>;
template struct TPair<CorvexMaths::TVector3<double>, unsigned int>;
template struct TPair<CorvexMaths::TVector2<double>, CorvexMaths::TVector2<double>>;
template class TList<TPair<double, CorvexMaths::TVector2<double>>>;
template class TList<TPair<double, CorvexMaths::TVector3<double>>>;
template class TList<TPair<double, CorvexMaths::TVector4<double>>>;
template class TList<TPair<CorvexMaths::TVector3<double>, unsigned int>>;
template class TMap<TPair<CorvexMaths::TVector2<double>, CorvexMaths::TVector2<double>>>;
template class TLinkUni<CorvexMaths::TVector3<double>>;

} // namespace Halmont::Orrin::CorvexUtilities

/// Compiles the containers of numbers and of vectors; those of higher classes are compiled with these classes.

#include <CorvexMaths/containers/Instantiations.h>

namespace Halmont::Orrin::CorvexUtilities
{

template class TList<int>;
CORVEX_INSTANTIATE_SCALARS(, class, TList);
CORVEX_INSTANTIATE_CONTAINERS(, float);
CORVEX_INSTANTIATE_CONTAINERS(, double);

} // namespace Halmont::Orrin::CorvexUtilities

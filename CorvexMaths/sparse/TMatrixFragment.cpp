#include <CorvexMaths/sparse/TMatrixFragment.h>

namespace Halmont::Orrin::CorvexMaths
{

template <class T>
void TMatrixFragment<T>::SetDimensions(unsigned int n)
{
    const unsigned int growSize = n < 2 ? 1 : n / 2;
    values.Grow(n);
    values.SetGrowSize(growSize);
    rows.Grow(n);
    rows.SetGrowSize(growSize);
    columns.Grow(n);
    columns.SetGrowSize(growSize);
}

CORVEX_INSTANTIATE_SCALARS(, struct, TMatrixFragment);

} // namespace Halmont::Orrin::CorvexMaths

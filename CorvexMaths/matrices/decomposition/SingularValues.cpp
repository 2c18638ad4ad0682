#include <CorvexMaths/matrices/decomposition/SingularValues.h>

#include <CorvexMaths/matrices/decomposition/Forms.inl>

#include <memory>

namespace Halmont::Orrin::CorvexMaths
{

template <class M, class T, unsigned int N>
bool SquareMatrixOperations<M, T, N>::SVD(M* u, M* w, M* v, unsigned int iterationLimit) const
{
    CORVEX_PRECONDITION("SquareMatrixOperations::SVD", u != nullptr && w != nullptr && v != nullptr, u, w, v);
    CORVEX_PRECONDITION("SquareMatrixOperations::SVD", u != w && u != v && w != v, u, w, v);
    *u = Self();
    T* uRows[N];
    T* wRows[N];
    T* vRows[N];
    T work[N];
    u->GetRows(uRows);
    w->GetRows(wRows);
    v->GetRows(vRows);
    return Kernels::SVDRows(uRows, wRows, vRows, work, N, N, iterationLimit);
}

template <class T>
bool TMatrixMxN<T>::SVD(TMatrixMxN* u, TMatrixMxN* w, TMatrixMxN* v, unsigned int iterationLimit) const
{
    CORVEX_PRECONDITION("TMatrixMxN::SVD", u != nullptr && w != nullptr && v != nullptr, u, w, v);
    CORVEX_PRECONDITION("TMatrixMxN::SVD", u != w && u != v && w != v, u, w, v);
    // What is taken from this matrix is taken before w and v are sized, for either may be this matrix. Only a copy
    // into panels comes later, as their first sweep.
    const unsigned int rowCount = m;
    const unsigned int order = n;
    const bool inPanels = Kernels::GoesInPanels(rowCount, order);
    const T* source = elements;
    if (inPanels && w != this && v != this) {
        u->AssignMemory(rowCount, order);
    } else {
        *u = *this;
        source = u->elements;
    }
    w->AssignMemory(order, order);
    v->AssignMemory(order, order);
    const std::unique_ptr<T[]> work(new T[order]);
    if (inPanels)
        return Kernels::DecomposeInPanels(source, u->rows, w->rows, v->rows, work.get(), rowCount, order,
                                          iterationLimit);
    return Kernels::SVDRows(u->rows, w->rows, v->rows, work.get(), rowCount, order, iterationLimit);
}

#define CORVEX_INSTANTIATE_SVD(T)                                                                                      \
    template bool Kernels::SVDRows(T**, T**, T**, T*, unsigned int, unsigned int, unsigned int);                       \
    template bool Kernels::SVDWithoutU(const T*, const T*, T*, T**, T**, unsigned int, unsigned int, unsigned int);    \
    CORVEX_INSTANTIATE_FIXED_SVD(TMatrix2x2<T>, T, 2)                                                                  \
    CORVEX_INSTANTIATE_FIXED_SVD(TMatrix3x3<T>, T, 3)                                                                  \
    CORVEX_INSTANTIATE_FIXED_SVD(TMatrix4x4<T>, T, 4)                                                                  \
    template bool TMatrixMxN<T>::SVD(TMatrixMxN*, TMatrixMxN*, TMatrixMxN*, unsigned int) const;                       \
    template bool Kernels::SVDSolveColumns(TMatrixMxN<T>&, TMatrixMxN<T>&, TMatrixMxN<T>&, const TMatrixMxN<T>&,       \
                                           TMatrixMxN<T>*);                                                            \
    template bool Kernels::SVDSolve(T*, const T*, T*, unsigned int, unsigned int);
#define CORVEX_INSTANTIATE_FIXED_SVD(M, T, N)                                                                          \
    template bool SquareMatrixOperations<M, T, N>::SVD(M*, M*, M*, unsigned int) const;

CORVEX_INSTANTIATE_SVD(float)
CORVEX_INSTANTIATE_SVD(double)
#undef CORVEX_INSTANTIATE_SVD
#undef CORVEX_INSTANTIATE_FIXED_SVD

} // namespace Halmont::Orrin::CorvexMaths

// What OpenBLAS and the LAPACK in it do for comparison, on one thread. Their Fortran entries are called, since another
// library in the same program may bring C entries of its own.

#include "PeersAlgebra.h"

#include <memory>

extern "C" {
void openblas_set_num_threads(int count);
void sgemm_(const char* transA, const char* transB, const int* m, const int* n, const int* k, const float* alpha,
            const float* a, const int* lda, const float* b, const int* ldb, const float* beta, float* c,
            const int* ldc);
void dgemm_(const char* transA, const char* transB, const int* m, const int* n, const int* k, const double* alpha,
            const double* a, const int* lda, const double* b, const int* ldb, const double* beta, double* c,
            const int* ldc);
void dgesvd_(const char* jobU, const char* jobVT, const int* m, const int* n, double* a, const int* lda, double* s,
             double* u, const int* ldu, double* vt, const int* ldvt, double* work, const int* workSize, int* info);
void dgesdd_(const char* job, const int* m, const int* n, double* a, const int* lda, double* s, double* u,
             const int* ldu, double* vt, const int* ldvt, double* work, const int* workSize, int* indices, int* info);
}

namespace Peers
{

namespace
{

auto multiply(float)
{
    return sgemm_;
}
auto multiply(double)
{
    return dgemm_;
}

/// The decomposition of a copy of a matrix, which the routines destroy, into arrays made beforehand.
class Decomposition
{
public:
    Decomposition(const Array<double>& byRows, int rows, int columns, bool divides)
        : m(rows),
          n(columns),
          dividesAndConquers(divides),
          matrix(byRows.size()),
          copy(byRows.size()),
          s(static_cast<std::size_t>(n)),
          u(byRows.size()),
          vt(s.size() * s.size()),
          work(1),
          indices(8 * s.size())
    {
        openblas_set_num_threads(1);
        for (std::size_t r = 0, i = 0; r < static_cast<std::size_t>(m); ++r)
            for (std::size_t c = 0; c < s.size(); ++c) matrix[c * static_cast<std::size_t>(m) + r] = byRows[i++];
        Call(-1);
        work.resize(static_cast<std::size_t>(work[0]));
    }

    void Run()
    {
        copy = matrix;
        Call(static_cast<int>(work.size()));
    }

    /// Descending, as the routines leave them; none where they failed.
    Values GetSingularValues() const { return info == 0 ? s : Values(); }

private:
    int m, n;
    bool dividesAndConquers;
    int info = 0;
    std::vector<double> matrix, copy, s, u, vt, work;
    std::vector<int> indices;

    /// With a size of -1 the routine asks for its workspace only.
    void Call(int size)
    {
        if (dividesAndConquers)
            dgesdd_("S", &m, &n, copy.data(), &m, s.data(), u.data(), &m, vt.data(), &n, work.data(), &size,
                    indices.data(), &info);
        else
            dgesvd_("S", "S", &m, &n, copy.data(), &m, s.data(), u.data(), &m, vt.data(), &n, work.data(), &size,
                    &info);
    }
};

Work Decompose(const Array<double>& matrix, int rows, int columns, bool divides)
{
    const auto decomposition = std::make_shared<Decomposition>(matrix, rows, columns, divides);
    return {[=] { decomposition->Run(); }, [=] { return decomposition->GetSingularValues(); }};
}

} // namespace

template <class T>
Work BlasProduct(const Array<T>& a, const Array<T>& b, int order)
{
    openblas_set_num_threads(1);
    const auto c = std::make_shared<std::vector<T>>(a.size());
    return {[=] {
                const T one(1);
                const T zero(0);
                // Matrices by rows are transposed ones by columns.
                multiply(T())("N", "N", &order, &order, &order, &one, b.data(), &order, a.data(), &order, &zero,
                              c->data(), &order);
            },
            [=] { return Values(c->begin(), c->end()); }};
}

Work LapackGesvd(const Array<double>& matrix, int rows, int columns)
{
    return Decompose(matrix, rows, columns, false);
}

Work LapackGesdd(const Array<double>& matrix, int rows, int columns)
{
    return Decompose(matrix, rows, columns, true);
}

template Work BlasProduct(const Array<float>&, const Array<float>&, int);
template Work BlasProduct(const Array<double>&, const Array<double>&, int);

} // namespace Peers

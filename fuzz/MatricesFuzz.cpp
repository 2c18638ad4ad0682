// The dense matrices, of fixed and of run-time size, with the vectors that they meet.

#include "Input.h"

#include <memory>
#include <vector>

namespace CorvexFuzz
{

/// Gives a matrix elements of some structure: any, small, symmetric, of rank 1, diagonal, with a row of zeros. Beyond a
/// few elements they follow from a seed, so that large matrices need few bytes.
template <class T, class M>
void Fill(M& matrix, Input& input)
{
    const unsigned int kind = input.Below(8);
    const unsigned int m = matrix.GetM();
    const unsigned int n = matrix.GetN();
    std::uint32_t seed = input.Byte();
    for (unsigned int r = 0; r < m; ++r) {
        for (unsigned int c = 0; c < n; ++c) {
            seed = seed * 1664525u + 1013904223u;
            const T drawn = static_cast<T>(static_cast<int>(seed >> 24) - 128) / 16;
            const bool isMirrored = kind == 2 && c < r && c < m && r < n;
            const bool isZero = (kind == 3 && r != c) || (kind == 4 && r == m / 2);
            matrix[r][c] = isMirrored                ? matrix[c][r]
                           : isZero                  ? T(0)
                           : kind == 5 && r > 0      ? matrix[0][c] * static_cast<T>(r)
                           : kind == 6 || m * n > 16 ? drawn
                           : kind == 7               ? input.Scalar<T>()
                                                     : input.Finite<T>();
        }
    }
    if (m * n > 16 && input.Flag()) matrix[input.Below(m)][input.Below(n)] = input.Scalar<T>();
}

template <class T>
bool AreSameNumbers(const TMatrixMxN<T>& a, const TMatrixMxN<T>& b)
{
    if (a.GetM() != b.GetM() || a.GetN() != b.GetN()) return false;
    for (unsigned int r = 0; r < a.GetM(); ++r)
        if (!AreSameNumbers(a[r], b[r], a.GetN())) return false;
    return true;
}

template <class T>
struct MatrixState
{
    using Dense = TMatrixMxN<T>;

    TMatrix2x2<T> order2[3];
    TMatrix3x3<T> order3[3];
    TMatrix4x4<T> order4[3];
    Dense dense[4];
    TVector2<T> two;
    TVector3<T> three;
    TVector4<T> four;

    static const Operation<MatrixState> operations[];

    void Check()
    {
        Require((order2[0] == order2[1]) != (order2[0] != order2[1]));
        Require((order3[0] == order3[1]) != (order3[0] != order3[1]));
        Require((order4[0] == order4[1]) != (order4[0] != order4[1]));
        Require((dense[0] == dense[1]) != (dense[0] != dense[1]));
    }

    TMatrix2x2<T>& Choose(Input& in, TMatrix2x2<T>*) { return order2[in.Below(3)]; }
    TMatrix3x3<T>& Choose(Input& in, TMatrix3x3<T>*) { return order3[in.Below(3)]; }
    TMatrix4x4<T>& Choose(Input& in, TMatrix4x4<T>*) { return order4[in.Below(3)]; }
    Dense& Choose(Input& in, Dense*) { return dense[in.Below(4)]; }
    template <class M>
    M& Choose(Input& in)
    {
        return Choose(in, static_cast<M*>(nullptr));
    }

    /// Matrices of their own, for outputs that must be distinct.
    template <class M>
    struct Outputs
    {
        M u, w, v;
    };

    // What all matrices share.

    template <class M>
    static void FillElements(MatrixState& s, Input& in)
    {
        Fill<T>(s.Choose<M>(in), in);
    }

    template <class M>
    static void Copy(MatrixState& s, Input& in)
    {
        M& target = s.Choose<M>(in);
        const M& source = s.Choose<M>(in);
        const M copy(source);
        target = source;
        Require(AreSameNumbers(copy, target));
    }

    template <class M>
    static void SetSimple(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        const bool isNull = in.Flag();
        isNull ? matrix.ToNull() : matrix.ToIdentity();
        for (unsigned int r = 0; r < matrix.GetM(); ++r)
            for (unsigned int c = 0; c < matrix.GetN(); ++c) Require(matrix[r][c] == (!isNull && r == c ? 1 : 0));
    }

    template <class M>
    static void Transpose(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        M twice(matrix);
        twice.Transpose();
        twice.Transpose();
        Require(AreSameNumbers(twice, matrix));
        matrix.Transpose();
    }

    /// A scalar from outside or of the matrix itself.
    template <class M>
    static void Scale(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        const T outside = in.Scalar<T>();
        const bool isOwn = in.Flag() && matrix.GetM() != 0 && matrix.GetN() != 0;
        const T& scalar = isOwn ? matrix[in.Below(matrix.GetM())][in.Below(matrix.GetN())] : outside;
        const bool isProduct = in.Flag();
        const M expected = isProduct ? matrix * scalar : matrix / scalar;
        if (isProduct)
            matrix *= scalar;
        else
            matrix /= scalar;
        Require(AreSameNumbers(matrix, expected) && AreSameNumbers(-(-matrix), matrix));
    }

    // What the fixed matrices share.

    template <class M>
    static constexpr unsigned int order = sizeof(M) == 4 * sizeof(T)   ? 2
                                          : sizeof(M) == 9 * sizeof(T) ? 3
                                                                       : 4;

    template <class M>
    static void Construct(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        T values[order<M> * order<M>];
        for (T& value : values) value = in.Finite<T>();
        const T* const readOnly = values;
        matrix = in.Flag() ? M(values) : M(readOnly);
        T* rows[order<M>];
        matrix.GetRows(rows);
        const M& same = matrix;
        for (unsigned int r = 0; r < order<M>; ++r)
            Require(rows[r] == matrix[r] && rows[r] == same[r] &&
                    AreSameNumbers(rows[r], readOnly + r * order<M>, order<M>));
    }

    template <class M>
    static void Convert(MatrixState& s, Input& in)
    {
        const M matrix = s.Choose<M>(in);
        s.order2[in.Below(3)] = matrix;
        s.order3[in.Below(3)] = matrix;
        s.order4[in.Below(3)] = matrix;
    }

    template <class M>
    static void Combine(MatrixState& s, Input& in)
    {
        M& a = s.Choose<M>(in);
        const M& b = s.Choose<M>(in);
        const unsigned int kind = in.Below(3);
        const M expected = kind == 0 ? a + b : kind == 1 ? a - b : a * b;
        Require(AreSameNumbers(kind == 0 ? a += b : kind == 1 ? a -= b : a *= b, expected));
    }

    template <class M>
    static void TimesVector(MatrixState& s, Input& in)
    {
        const M& matrix = s.Choose<M>(in);
        s.two = matrix * s.two;
        s.three = matrix * s.three;
        s.four = matrix * s.four;
    }

    template <class M>
    static void TimesDense(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        Dense& other = s.Choose<Dense>(in);
        const M& readOnly = matrix;
        const M fixedProduct = readOnly * other;
        Require(AreSameNumbers(fixedProduct, readOnly * static_cast<M>(other)));
        if (other.GetM() == order<M>) s.dense[in.Below(4)] = matrix * other;
        if (other.GetM() >= order<M> && other.GetN() >= order<M>) matrix *= other;
    }

    template <class M>
    static void Decompose(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        const M before = matrix;
        M& lu = s.Choose<M>(in);
        int pivots[order<M>];
        T parity;
        const bool isDone = matrix.LUD(&lu, pivots, &parity);
        Require(parity == T(1) || parity == T(-1));
        for (const int pivot : pivots) Require(pivot >= 0 && pivot < static_cast<int>(isDone ? order<M> : 1));
        if (!isDone) {
            Require(AreSameNumbers(lu, before) && parity == T(1));
            return;
        }
        T b[order<M>];
        T x[order<M>];
        for (T& value : b) value = in.Scalar<T>();
        M::BackSub(lu, pivots, b, x);
        M::BackSub(lu, pivots, b, b);
        Require(AreSameNumbers(x, b, order<M>));
    }

    template <class M>
    static void Invert(MatrixState& s, Input& in)
    {
        M& matrix = s.Choose<M>(in);
        const M before = matrix;
        M inverse;
        const bool isDone = before.Invert(&inverse);
        Require(matrix.Invert() == isDone && AreSameNumbers(matrix, inverse));
        Require(isDone || AreSameNumbers(matrix, before));
        const T determinant = s.Choose<M>(in).Determinant();
        Require(!isDone || IsSameNumber(determinant, determinant));
    }

    template <class M>
    static void FindSingularValues(MatrixState& s, Input& in)
    {
        const M& matrix = s.Choose<M>(in);
        Outputs<M> out;
        const unsigned int limit = in.Below(34);
        CheckSingularValues(out.w, matrix.SVD(&out.u, &out.w, &out.v, limit), limit);
        s.Choose<M>(in) = out.u;
        s.Choose<M>(in) = out.v;
        // Over itself.
        M& own = s.Choose<M>(in);
        own.SVD(&own, &out.w, &out.v, 30);
    }
    /// Values are negative only where they have not converged.
    template <class M>
    static void CheckSingularValues(const M& w, bool isDone, unsigned int limit)
    {
        const bool haveConverged = isDone && limit >= 1 && limit <= 30;
        for (unsigned int r = 0; r < w.GetM(); ++r)
            for (unsigned int c = 0; c < w.GetN(); ++c)
                Require(r == c ? !haveConverged || !(w[r][c] < 0) : w[r][c] == 0);
    }

    template <class M, class V>
    static void FindEigenvectors(MatrixState& s, Input& in)
    {
        T values[order<M>];
        V vectors[order<M>];
        s.Choose<M>(in).Eigenspace(values, vectors);
        s.two = vectors[0];
        s.three = vectors[1];
        s.four = vectors[order<M> - 1];
    }

    // Fixed and run-time size together: the leading block must be there.

    template <class M, class V>
    static void MeetDense(MatrixState& s, Input& in)
    {
        Dense& target = s.Choose<Dense>(in);
        M& fixed = s.Choose<M>(in);
        constexpr unsigned int n = order<M>;
        if (target.GetN() == n) {
            const Dense expected = target * fixed;
            Require(AreSameNumbers(target *= fixed, expected));
        }
        if (target.GetM() < n || target.GetN() < n) return;
        const bool isSum = in.Flag();
        const M expected = isSum ? target + fixed : target - fixed;
        isSum ? target += fixed : target -= fixed;
        Require(AreSameNumbers(static_cast<M>(target), expected));
        const V vector = in.FiniteVector<V, T>();
        Require(AreSameNumbers(target * vector, static_cast<M>(target) * vector));
    }

    /// Its block overlaps with matrices of any size.
    template <class M>
    static void FromDense(MatrixState& s, Input& in)
    {
        s.Choose<M>(in) = static_cast<M>(s.Choose<Dense>(in));
    }
};

/// Solves with the factors of a matrix of run-time size, in arrays of the caller or not.
template <class T>
void SolveDense(MatrixState<T>& s, Input& in)
{
    TMatrixMxN<T>& matrix = s.template Choose<TMatrixMxN<T>>(in);
    const unsigned int n = matrix.GetM();
    const TMatrixMxN<T> before(matrix);
    TMatrixMxN<T> lu;
    T parity;
    std::vector<int> pivots(n + 1);
    const bool isDone = matrix.LUD(&lu, pivots.data(), &parity);
    int* owned;
    T again;
    TMatrixMxN<T>& target = s.template Choose<TMatrixMxN<T>>(in);
    Require(matrix.LUD(&target, &owned, &again) == isDone && (owned != nullptr) == isDone);
    if (!isDone) {
        Require(matrix.GetM() != before.GetN() || (AreSameNumbers(lu, before) && AreSameNumbers(target, before)));
        return;
    }
    const std::unique_ptr<int[]> owner(owned);
    Require(AreSameNumbers(lu, target) && parity == again);
    for (unsigned int i = 0; i < n; ++i)
        Require(owned[i] == pivots[i] && owned[i] >= 0 && owned[i] < static_cast<int>(n));
    std::vector<T> b(n + 1);
    for (unsigned int i = 0; i < n; ++i) b[i] = in.Finite<T>();
    T* solution;
    TMatrixMxN<T>::BackSub(lu, owned, b.data(), &solution);
    const std::unique_ptr<T[]> solutionOwner(solution);
    TMatrixMxN<T>::BackSub(lu, owned, b.data(), b.data());
    Require(AreSameNumbers(solution, b.data(), n));
}

/// Eigenvectors of a matrix of run-time size, in arrays of the caller or not.
template <class T>
void FindDenseEigenvectors(MatrixState<T>& s, Input& in)
{
    TMatrixMxN<T>& matrix = s.template Choose<TMatrixMxN<T>>(in);
    const unsigned int m = matrix.GetM();
    std::vector<T> values(m + 1, T(7));
    std::vector<T> block(m * m + 1);
    std::vector<T*> rows(m + 1);
    for (unsigned int r = 0; r < m; ++r) rows[r] = block.data() + r * m;
    const bool isDone = matrix.Eigenspace(values.data(), rows.data());
    Require(values[m] == T(7) && (!isDone || (m == matrix.GetN() && m != 0)));

    T untouched = T(0);
    T* untouchedRow = &untouched;
    T* ownedValues = &untouched;
    T** ownedVectors = &untouchedRow;
    Require(matrix.Eigenspace(&ownedValues, &ownedVectors) == isDone);
    if (m != matrix.GetN()) {
        Require(ownedValues == &untouched && ownedVectors == &untouchedRow);
    } else if (!isDone) {
        Require(!ownedValues && !ownedVectors);
    } else {
        Require(AreSameNumbers(ownedValues, values.data(), m));
        for (unsigned int r = 0; r < m; ++r) {
            Require(AreSameNumbers(ownedVectors[r], rows[r], m));
            delete[] ownedVectors[r];
        }
        delete[] ownedVectors;
        delete[] ownedValues;
    }
}

#define CORVEX_OF_FIXED(name)                                                                                          \
    {"TMatrix2x2: " #name, &MatrixState<T>::template name<TMatrix2x2<T>>},                                             \
        {"TMatrix3x3: " #name, &MatrixState<T>::template name<TMatrix3x3<T>>},                                         \
    {                                                                                                                  \
        "TMatrix4x4: " #name, &MatrixState<T>::template name<TMatrix4x4<T>>                                            \
    }
#define CORVEX_OF_ALL(name)                                                                                            \
    CORVEX_OF_FIXED(name),                                                                                             \
    {                                                                                                                  \
        "TMatrixMxN: " #name, &MatrixState<T>::template name<TMatrixMxN<T>>                                            \
    }
#define CORVEX_WITH_VECTORS(name)                                                                                      \
    {"TMatrix2x2: " #name, &MatrixState<T>::template name<TMatrix2x2<T>, TVector2<T>>},                                \
        {"TMatrix3x3: " #name, &MatrixState<T>::template name<TMatrix3x3<T>, TVector3<T>>},                            \
    {                                                                                                                  \
        "TMatrix4x4: " #name, &MatrixState<T>::template name<TMatrix4x4<T>, TVector4<T>>                               \
    }

template <class T>
const Operation<MatrixState<T>> MatrixState<T>::operations[] = {
    CORVEX_OF_ALL(FillElements),
    CORVEX_OF_ALL(Copy),
    CORVEX_OF_ALL(SetSimple),
    CORVEX_OF_ALL(Transpose),
    CORVEX_OF_ALL(Scale),
    CORVEX_OF_FIXED(Construct),
    CORVEX_OF_FIXED(Convert),
    CORVEX_OF_FIXED(Combine),
    CORVEX_OF_FIXED(TimesVector),
    CORVEX_OF_FIXED(TimesDense),
    CORVEX_OF_FIXED(Decompose),
    CORVEX_OF_FIXED(Invert),
    CORVEX_OF_FIXED(FindSingularValues),
    CORVEX_OF_FIXED(FromDense),
    CORVEX_WITH_VECTORS(FindEigenvectors),
    CORVEX_WITH_VECTORS(MeetDense),

    {"vectors",
     [](MatrixState& s, Input& in) {
         s.two = in.AnyVector<TVector2<T>, T>();
         s.three = in.AnyVector<TVector3<T>, T>();
         s.four = in.AnyVector<TVector4<T>, T>();
     }},
    {"matrices of columns",
     [](MatrixState& s, Input& in) {
         s.order2[0] = TMatrix2x2<T>(s.two, in.FiniteVector<TVector2<T>, T>());
         s.order3[0] = TMatrix3x3<T>(s.three, s.two, in.FiniteVector<TVector3<T>, T>());
         s.order4[0] = TMatrix4x4<T>(s.four, s.three, s.two, in.FiniteVector<TVector4<T>, T>());
     }},
    {"matrices of elements",
     [](MatrixState& s, Input& in) {
         const T a = in.Scalar<T>();
         const T b = in.Scalar<T>();
         s.order2[0] = TMatrix2x2<T>(a, b, b, a);
         s.order3[0] = TMatrix3x3<T>(a, b, 0, b, 1, 0, 0, 0, b);
         s.order4[0] = TMatrix4x4<T>(a, b, 0, 0, b, 1, 0, 0, 0, 0, b, 0, 0, 1, 0, a);
     }},

    // Transforms.
    {"TMatrix3x3::Multiply",
     [](MatrixState& s, Input& in) {
         const unsigned int index = in.Below(3);
         TMatrix3x3<T>& transform = s.order3[(index + 1) % 3];
         TMatrix3x3<T> expected = transform;
         const bool onRight = in.Flag();
         const bool asRows = in.Flag();
         if (!asRows) expected.Transpose();
         s.order3[index].Multiply(&transform, onRight, asRows);
         Require(AreSameNumbers(transform, expected));
     }},
    {"TMatrix3x3::Rotate",
     [](MatrixState& s, Input& in) {
         const T angle = in.Scalar<T>();
         const bool onRight = in.Flag();
         s.order3[in.Below(3)].Rotate(angle, s.three, onRight, in.Flag());
     }},
    {"TMatrix3x3::Scale",
     [](MatrixState& s, Input& in) {
         const bool onRight = in.Flag();
         s.order3[in.Below(3)].Scale(s.three.x, s.three.y, s.three.z, onRight, in.Flag());
     }},
    {"TMatrix3x3::ToOrthonormal", [](MatrixState& s, Input& in) { s.order3[in.Below(3)].ToOrthonormal(); }},
    {"TMatrix4x4::Rotate",
     [](MatrixState& s, Input& in) {
         const T angle = in.Scalar<T>();
         const bool onRight = in.Flag();
         s.order4[in.Below(3)].Rotate(angle, s.three, onRight, in.Flag());
     }},
    {"TMatrix4x4::Rotate about a point",
     [](MatrixState& s, Input& in) {
         TMatrix4x4<T>& matrix = s.order4[in.Below(3)];
         const T angle = in.Scalar<T>();
         const TVector3<T> point = s.four;
         const bool onRight = in.Flag();
         const bool asRows = in.Flag();
         matrix.Rotate(in.Flag() ? angle : matrix[1][2], s.three, point, onRight, asRows);
     }},
    {"TMatrix4x4::Scale",
     [](MatrixState& s, Input& in) {
         const bool onRight = in.Flag();
         s.order4[in.Below(3)].Scale(s.three.x, s.three.y, s.three.z, onRight, in.Flag());
     }},
    {"TMatrix4x4::Scale about a point",
     [](MatrixState& s, Input& in) {
         const bool onRight = in.Flag();
         const TVector3<T> before = s.three;
         s.order4[in.Below(3)].Scale(s.three, s.four.x, s.four.y, s.four.z, onRight, in.Flag());
         Require(HaveSameBits(s.three, before));
     }},
    {"TMatrix4x4::Translate",
     [](MatrixState& s, Input& in) {
         const bool onRight = in.Flag();
         s.order4[in.Below(3)].Translate(s.three, onRight, in.Flag());
     }},
    {"TMatrix4x4: order",
     [](MatrixState& s, Input&) { Require(s.order4[0] < s.order4[1] && !(s.order4[0] > s.order4[1])); }},

    // Matrices of run-time size.
    {"TMatrixMxN(m, n)",
     [](MatrixState& s, Input& in) {
         const unsigned int m = in.Below(10);
         const unsigned int n = in.Below(10);
         Dense made(m, n);
         Require(made.GetM() == m && made.GetN() == n);
         Fill<T>(made, in);
         s.Choose<Dense>(in) = made;
     }},
    {"TMatrixMxN: square",
     [](MatrixState& s, Input& in) {
         const unsigned int n = in.Below(10);
         Dense made(n, n);
         Fill<T>(made, in);
         s.Choose<Dense>(in) = made;
     }},
    {"TMatrixMxN: large",
     [](MatrixState& s, Input& in) {
         static const unsigned int sizes[][2] = {{33, 17}, {17, 33}, {33, 33}, {40, 3}, {4, 24}, {20, 20}};
         const auto& size = sizes[in.Below(6)];
         Dense made(size[0], size[1]);
         Fill<T>(made, in);
         s.Choose<Dense>(in) = made;
     }},
    {"TMatrixMxN::AssignMemory",
     [](MatrixState& s, Input& in) {
         Dense& matrix = s.Choose<Dense>(in);
         const Dense before(matrix);
         matrix.AssignMemory(before.GetM(), before.GetN());
         Require(AreSameNumbers(matrix, before));
         const unsigned int m = in.Below(10);
         matrix.AssignMemory(m, in.Below(10));
         matrix.ToNull();
     }},
    {"TMatrixMxN: sums",
     [](MatrixState& s, Input& in) {
         Dense& a = s.Choose<Dense>(in);
         Dense& b = s.Choose<Dense>(in);
         if (b.GetM() < a.GetM() || b.GetN() < a.GetN()) return;
         const bool isSum = in.Flag();
         const Dense expected = isSum ? a + b : a - b;
         Require(AreSameNumbers(isSum ? a += b : a -= b, expected));
     }},
    {"TMatrixMxN: product",
     [](MatrixState& s, Input& in) {
         const Dense& a = s.Choose<Dense>(in);
         Dense& b = s.Choose<Dense>(in);
         const Dense product = a * b;
         const bool isFormed = a.GetN() == b.GetM();
         Require(product.GetM() == (isFormed ? a.GetM() : 0) && product.GetN() == (isFormed ? b.GetN() : 0));
         s.Choose<Dense>(in) = product;
     }},
    {"TMatrixMxN: product in place",
     [](MatrixState& s, Input& in) {
         Dense& a = s.Choose<Dense>(in);
         Dense& b = s.Choose<Dense>(in);
         if (a.GetN() != b.GetM()) return;
         const Dense expected = a * b;
         a *= b;
         Require(&a == &b || AreSameNumbers(a, expected));
     }},
    {"TMatrixMxN: LUD, BackSub", &SolveDense<T>},
    {"TMatrixMxN::LUD over itself",
     [](MatrixState& s, Input& in) {
         Dense& matrix = s.Choose<Dense>(in);
         std::vector<int> pivots(matrix.GetM() + 1);
         T parity;
         matrix.LUD(&matrix, pivots.data(), &parity);
     }},
    {"TMatrixMxN::Invert",
     [](MatrixState& s, Input& in) {
         Dense& matrix = s.Choose<Dense>(in);
         const Dense before(matrix);
         Dense inverse;
         const bool isDone = before.Invert(&inverse);
         Require(matrix.Invert() == isDone && AreSameNumbers(matrix, inverse));
         Require(isDone || AreSameNumbers(matrix, before));
     }},
    {"TMatrixMxN::Determinant",
     [](MatrixState& s, Input& in) {
         const Dense& matrix = s.Choose<Dense>(in);
         const T determinant = matrix.Determinant();
         Require(matrix.GetM() == matrix.GetN() || determinant == T(0));
         Require(matrix.GetM() != 0 || matrix.GetN() != 0 || determinant == T(1));
     }},
    {"TMatrixMxN::SVD",
     [](MatrixState& s, Input& in) {
         const unsigned int index = in.Below(4);
         Dense& matrix = s.dense[index];
         const unsigned int n = matrix.GetN();
         // The outputs may be the matrix itself: which of them is, if any, is chosen too.
         const unsigned int own = in.Below(4);
         Dense* const u = &s.dense[own == 0 ? index : (index + 1) % 4];
         Dense* const w = &s.dense[own == 1 ? index : (index + 2) % 4];
         Dense* const v = &s.dense[own == 2 ? index : (index + 3) % 4];
         const unsigned int m = matrix.GetM();
         const unsigned int limit = in.Below(34);
         CheckSingularValues(*w, matrix.SVD(u, w, v, limit), limit);
         Require(u->GetM() == m && u->GetN() == n && w->GetM() == n && w->GetN() == n);
         Require(v->GetM() == n && v->GetN() == n);
     }},
    {"TMatrixMxN::Eigenspace", &FindDenseEigenvectors<T>},
};

} // namespace CorvexFuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return CorvexFuzz::RunOneOf<CorvexFuzz::MatrixState<float>, CorvexFuzz::MatrixState<double>>(data, size);
}

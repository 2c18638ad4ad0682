// Dense matrices, those of a fixed order and those of any size, and the transforms they build.

#include "Operations.h"

#include <tests/support/Rows.h>
#include <tests/support/plain/PlainLU.h>
#include <tests/support/plain/PlainProduct.h>
#include <tests/support/plain/PlainSVD.h>

#include <algorithm>

namespace CorvexCatalogue
{
namespace
{

/// Whether a matrix has these elements to the bit.
template <class T, class M>
bool HasElements(const M& matrix, const Rows<T>& rows)
{
    if (matrix.GetM() != rows.GetM() || matrix.GetN() != rows.GetN()) return false;
    for (unsigned int r = 0; r < rows.GetM(); ++r)
        for (unsigned int c = 0; c < rows.GetN(); ++c)
            if (!AreSame(matrix[r][c], rows[r][c])) return false;
    return true;
}

/// What all matrices share, on three of a class.
template <class M>
struct MatrixState : State
{
    using State::State;
    using T = ScalarOf<M>;
    using Dense = TMatrixMxN<T>;
    static constexpr bool isDense = std::is_same_v<M, Dense>;
    M a, b, c;

    void Fill() override
    {
        const unsigned int m = isDense ? in.Size(17) : a.GetM(), n = isDense && in.Flag() ? in.Size(17) : m;
        for (M* matrix : {&a, &b}) *matrix = DrawMatrix<T>(in, m, n);
        c = DrawMatrix<T>(in, isDense && in.Flag() ? n : m, n);
    }
    void Show() const override { out << a << b << c; }
    void Check() override { Require((a == b) != (a != b)); }

    /// A matrix to decompose: one of the state, or of a size at which the kernels change their ways.
    M Draw(unsigned int mostRows, unsigned int mostColumns, bool isSquare)
    {
        if (!isDense || in.Flag()) return a;
        const unsigned int m = in.Size(mostRows), n = isSquare ? m : in.Size(mostColumns);
        return DrawMatrix<T>(in, m, n);
    }
    static Rows<T> Multiply(const Rows<T>& left, const Rows<T>& right)
    {
        Rows<T> product(left.GetM(), right.GetN());
        PlainMultiplyRows<T>(product.rows.data(), left.rows.data(), right.rows.data(), left.GetM(), left.GetN(),
                             right.GetN());
        return product;
    }

    void Change()
    {
        M copy(a);
        Require(HasElements(copy, Rows<T>(a)));
        out << -copy << static_cast<TMatrix2x2<T>>(copy) << static_cast<TMatrix3x3<T>>(copy);
        out << static_cast<TMatrix4x4<T>>(copy) << (a == b) << (a == copy);
        copy.Transpose();
        out << copy;
        copy.Transpose();
        Require(AreSame(copy, a) && AreSame(-(-copy), a));
        c = a;
        const bool isNull = in.Flag();
        isNull ? a.ToNull() : a.ToIdentity();
        for (unsigned int r = 0; r < a.GetM(); ++r)
            for (unsigned int k = 0; k < a.GetN(); ++k) Require(a[r][k] == (!isNull && r == k ? 1 : 0));
    }
    /// By a scalar from outside, or by an element.
    void Scale()
    {
        const T drawn = in.template Scalar<T>();
        const bool isOwn = in.Flag() && a.GetM() != 0 && a.GetN() != 0;
        const unsigned int row = isOwn ? in.Below(a.GetM()) : 0, column = isOwn ? in.Below(a.GetN()) : 0;
        const T& factor = isOwn ? a[row][column] : drawn;
        const T value = factor;
        const M product = a * value, quotient = a / value;
        out << product << quotient;
        const bool isProduct = in.Flag();
        isProduct ? a *= factor : a /= factor;
        Require(AreSame(a, isProduct ? product : quotient));
    }
    void Sums()
    {
        if (b.GetM() < a.GetM() || b.GetN() < a.GetN()) return;
        M& other = in.Flag() ? b : a;
        const M sum = a + other, difference = a - other;
        out << sum << difference;
        const bool isSum = in.Flag();
        isSum ? a += other : a -= other;
        Require(AreSame(a, isSum ? sum : difference));
    }
    void Decompose()
    {
        M matrix = Draw(130, 130, in.Below(8) != 0), lu = matrix;
        const unsigned int n = matrix.GetM();
        Rows<T> plain(matrix);
        std::vector<int> pivots(n + 1, 7), plainPivots(pivots);
        std::vector<T> scale(n), x(n + 1, T(3)), plainX(x), values(n + 1);
        T parity = 5, plainParity = 5;
        const bool isDone = matrix.LUD(&lu, pivots.data(), &parity);
        out << isDone << lu << parity << matrix.Determinant();
        if (n != matrix.GetN()) return Require(!isDone);
        Require(isDone == PlainLUDRows<T>(plain.rows.data(), plainPivots.data(), scale.data(), &plainParity, int(n)));
        Require(HasElements(lu, plain) && parity == plainParity);
        if (!isDone) return;
        Require(pivots == plainPivots);
        for (unsigned int i = in.Below(n + 1); i < n; ++i) values[i] = in.template Scalar<T>();
        M::BackSub(lu, pivots.data(), values.data(), x.data());
        PlainBackSubRows<T>(plain.rows.data(), plainPivots.data(), values.data(), plainX.data(), int(n));
        Require(AreSame(x, plainX));
        M::BackSub(lu, pivots.data(), values.data(), values.data());
        x.resize(n);
        values.resize(n);
        Require(AreSame(x, values));
        out << x;

        Spoil(matrix);
        Rows<T> spoilt(matrix);
        const bool isSpoiltDone = matrix.LUD(&lu, pivots.data(), &parity);
        Require(isSpoiltDone ==
                PlainLUDRows<T>(spoilt.rows.data(), plainPivots.data(), scale.data(), &plainParity, int(n)));
        Require(HasElements(lu, spoilt) && parity == plainParity && (!isSpoiltDone || pivots == plainPivots));
    }
    /// A row with a value that is not a number is no pivot while there are others, so that one above may stay it.
    void Spoil(M& matrix)
    {
        if (matrix.GetM() == 0) return;
        const unsigned int row = in.Below(matrix.GetM()), column = in.Below(matrix.GetM());
        matrix[row][column] = std::numeric_limits<T>::quiet_NaN();
    }
    /// By the plain form's solutions for the unit vectors.
    static void RequireInverse(Rows<T> lu, const M& inverse)
    {
        const unsigned int n = lu.GetM();
        Rows<T> expected(n, n);
        std::vector<int> pivots(n);
        std::vector<T> unit(n), x(n);
        T parity;
        PlainLUDRows<T>(lu.rows.data(), pivots.data(), unit.data(), &parity, int(n));
        for (unsigned int k = 0; k < n; ++k) {
            for (unsigned int r = 0; r < n; ++r) unit[r] = static_cast<T>(r == k);
            PlainBackSubRows<T>(lu.rows.data(), pivots.data(), unit.data(), x.data(), int(n));
            for (unsigned int r = 0; r < n; ++r) expected[r][k] = x[r];
        }
        Require(HasElements(inverse, expected));
    }
    void Invert()
    {
        M matrix = Draw(130, 130, true), inverse = matrix;
        const Rows<T> before(matrix);
        const bool isDone = matrix.Invert(&inverse);
        out << isDone << inverse;
        Require(matrix.Invert() == isDone && (isDone ? AreSame(matrix, inverse) : HasElements(matrix, before)));
        if (!isDone) return;
        RequireInverse(before, inverse);
        Spoil(inverse);
        const Rows<T> spoilt(inverse);
        if (inverse.Invert(&matrix)) RequireInverse(spoilt, matrix);
    }
    void FindSingularValues()
    {
        M matrix = Draw(300, 40, in.Below(4) == 0);
        if (matrix.GetM() * matrix.GetN() > 8000) matrix = a;
        const unsigned int m = matrix.GetM(), n = matrix.GetN(), kind = in.Below(64), own = in.Below(4);
        const unsigned int limit = kind < 34 ? kind : 30;
        Rows<T> u(matrix), w(n, n), v(n, n);
        std::vector<T> work(n);
        // The matrix may be one of its results.
        M outputs[3];
        M* results[] = {&outputs[0], &outputs[1], &outputs[2]};
        if (own < 3) results[own] = &matrix;
        const bool isDone = matrix.SVD(results[0], results[1], results[2], limit);
        Require(isDone == Plain::SVDRows(*u, *w, *v, work.data(), m, n, limit));
        Require(HasElements(*results[0], u) && HasElements(*results[1], w) && HasElements(*results[2], v));
        out << isDone << *results[0] << *results[1] << *results[2];
    }

    static std::vector<Operation> GetShared()
    {
        return {{"changes", &MatrixState::Change}, {"scalars", &MatrixState::Scale},
                {"sums", &MatrixState::Sums},      {"LUD", &MatrixState::Decompose},
                {"Invert", &MatrixState::Invert},  {"SVD", &MatrixState::FindSingularValues}};
    }
};

template <class M, class V>
struct FixedState : MatrixState<M>
{
    using Base = MatrixState<M>;
    using Base::a, Base::b, Base::Base, Base::c, Base::in, Base::out;
    using typename Base::T, typename Base::Dense;
    static constexpr unsigned int order = sizeof(V) / sizeof(T);

    void Construct()
    {
        const M same = a;
        const T* const elements = same[0];
        T* rows[order];
        c = M(elements);
        c.GetRows(rows);
        for (unsigned int r = 0; r < order; ++r) Require(rows[r] == c[r]);
        Require(AreSame(c, a) && AreSame(M(c[0]), a));
        V columns[4];
        for (V& column : columns) column = in.template Vector<V>();
        const auto& [p, q, s, t] = columns;
        if constexpr (order == 2) {
            out << M(p, q) << M(p.x, q.x, p.y, q.y);
        } else if constexpr (order == 3) {
            out << M(p, q, s) << M(p.x, p.y, p.z, q.x, q.y, q.z, s.x, s.y, s.z);
        } else {
            out << M(p, q, s, t) << (a < b) << (a > b);
            out << M(p.x, p.y, p.z, p.w, q.x, q.y, q.z, q.w, s.x, s.y, s.z, s.w, t.x, t.y, t.z, t.w);
        }
    }
    void Multiply()
    {
        const M& other = in.Flag() ? b : a;
        const Rows<T> expected = Base::Multiply(Rows<T>(a), Rows<T>(other));
        Require(HasElements(a * other, expected));
        a *= other;
        Require(HasElements(a, expected));
    }
    void MultiplyDense()
    {
        Dense wide = DrawMatrix<T>(in, order, in.Size(9)), block = DrawMatrix<T>(in, order + in.Below(3), order + 1);
        const Dense product = a * wide;
        Require(HasElements(product, Base::Multiply(Rows<T>(a), Rows<T>(wide))));
        const M& same = a;
        const M expected = a * static_cast<M>(block), partly = same * wide;
        Require(AreSame(partly, same * static_cast<M>(wide)));
        a *= block;
        Require(AreSame(a, expected));
        out << product << partly;
    }
    void TimesVector()
    {
        const auto p = in.template Vector<TVector4<T>>();
        out << a * static_cast<TVector2<T>>(p) << a * static_cast<TVector3<T>>(p) << a * p;
    }
    void Eigenspace()
    {
        Rows<T> own(order + 1, order);
        Dense dense(order, order);
        std::copy_n(a[0], order * order, dense[0]);
        T values[order];
        V vectors[order];
        Require(a.Eigenspace(values, vectors) == dense.Eigenspace(own[0], *own + 1));
        for (unsigned int r = 0; r < order; ++r) {
            Require(AreSame(values[r], own[0][r]));
            for (unsigned int k = 0; k < order; ++k) Require(AreSame(vectors[r][k], own[r + 1][k]));
            out << values[r] << vectors[r];
        }
    }
    void Transform()
    {
        auto p = in.template Vector<TVector3<T>>();
        const T factor = in.template Finite<T>();
        const bool onRight = in.Flag(), asRows = in.Flag();
        a.Scale(p.x, p.y, p.z, onRight, asRows);
        if constexpr (order == 3) {
            M product = b;
            c.Multiply(&product, onRight, asRows);
            out << product;
            c.Multiply(&Itself(c), onRight, asRows);
            b.ToOrthonormal();
        } else {
            const TVector3<T> before = p;
            b.Scale(p, factor, p.y, T(-1), onRight, asRows);
            Require(AreSame(p, before));
            c.Translate(p, onRight, asRows);
        }
    }
    void Rotate()
    {
        const auto axis = in.template Vector<TVector3<T>>(), point = in.template Vector<TVector3<T>>();
        const T angle = in.template Scalar<T>();
        const bool onRight = in.Flag(), asRows = in.Flag();
        a.Rotate(angle, axis, onRight, asRows);
        if constexpr (order == 4) b.Rotate(in.Flag() ? angle : b[1][2], axis, point, onRight, asRows);
    }

    static std::vector<Operation> GetOperations()
    {
        std::vector<Operation> all = Base::GetShared();
        all.insert(all.end(), {{"constructors", &FixedState::Construct},
                               {"operator*", &FixedState::Multiply},
                               {"operator*(TMatrixMxN)", &FixedState::MultiplyDense},
                               {"operator*(vector)", &FixedState::TimesVector},
                               {"Eigenspace", &FixedState::Eigenspace}});
        if constexpr (order > 2) {
            all.emplace_back("Scale", &FixedState::Transform);
            all.emplace_back("Rotate", &FixedState::Rotate, Functions::Trigonometric);
        }
        return all;
    }
};

template <class T>
struct DenseState : MatrixState<TMatrixMxN<T>>
{
    using Base = MatrixState<TMatrixMxN<T>>;
    using Base::a, Base::b, Base::Base, Base::c, Base::in, Base::out;
    using typename Base::Dense;

    void AssignMemory()
    {
        const unsigned int m = in.Below(9), n = in.Below(9);
        const Dense before(a), zeros = Dense(a) * T(0), made(m, n);
        a.AssignMemory(a.GetM(), a.GetN());
        Require(AreSame(a, before) && made.GetM() == m && made.GetN() == n);
        out << (a == zeros) << (a == c) << (a == Dense());
        b.AssignMemory(m, n);
        b.ToIdentity();
    }
    void Multiply()
    {
        unsigned int m = in.Size(130), inner = in.Size(130), n = in.Size(130);
        while (m * inner * n > 200000) (m > n ? m : n) /= 2, inner = (inner + 1) / 2 + 1;
        Dense left = DrawMatrix<T>(in, m, inner), right = DrawMatrix<T>(in, inner, n);
        if (m == inner && in.Flag()) right = left;
        const Rows<T> expected = Base::Multiply(Rows<T>(left), Rows<T>(right));
        Dense tooTall(inner + 1, n);
        const Dense product = left * right, none = left * tooTall;
        Require(HasElements(product, expected) && none.GetM() == 0 && none.GetN() == 0);
        // In place, a matrix times itself reads what it has written.
        const bool isOwn = m == inner && inner == n && in.Flag();
        left *= isOwn ? left : right;
        Require(isOwn || HasElements(left, expected));
        out << product << left;
    }
    /// With a matrix of fixed order: sums with the leading block, products with as many columns, and vectors.
    template <class M, class V>
    void MeetFixed()
    {
        constexpr unsigned int order = sizeof(V) / sizeof(T);
        M fixed = DrawMatrix<T>(in, order, order);
        const unsigned int m = in.Size(17), more = in.Below(3);
        Dense tall = DrawMatrix<T>(in, m, order), wide = DrawMatrix<T>(in, order + more, order + in.Below(3));
        const Dense product = tall * fixed;
        Require(HasElements(product, Base::Multiply(Rows<T>(tall), Rows<T>(fixed))));
        Require(AreSame(tall *= fixed, product));
        const V vector = in.template Vector<V>();
        Require(AreSame(wide * vector, static_cast<M>(wide) * vector));
        const M sum = wide + fixed, difference = wide - fixed;
        out << product << sum << difference << wide * vector;
        const bool isSum = in.Flag();
        isSum ? wide += fixed : wide -= fixed;
        Require(AreSame(static_cast<M>(wide), isSum ? sum : difference));
    }
    /// The forms that allocate their results.
    void DecomposeAllocating()
    {
        Dense lu, same = a;
        std::vector<int> expected(a.GetM() + 1);
        std::vector<T> values(a.GetM() + 1), x(values);
        int* pivots = nullptr;
        T parity = 5, expectedParity = 5, *solution = nullptr;
        const bool isDone = a.LUD(&lu, &pivots, &parity);
        const std::unique_ptr<int[]> owner(pivots);
        Require(isDone == (pivots != nullptr) && isDone == same.LUD(&same, expected.data(), &expectedParity));
        if (!isDone) return;
        for (T& value : values) value = in.template Finite<T>();
        Dense::BackSub(lu, pivots, values.data(), &solution);
        const std::unique_ptr<T[]> solutionOwner(solution);
        Dense::BackSub(same, expected.data(), values.data(), x.data());
        Require(AreSame(lu, same) && parity == expectedParity);
        Require(std::equal(pivots, pivots + a.GetM(), expected.begin()));
        for (unsigned int i = 0; i < a.GetM(); ++i) Require(AreSame(x[i], solution[i]));
    }
    void Eigenspace()
    {
        const unsigned int order = a.GetM();
        Rows<T> own(order + 1, order);
        T untouched = T(0), *row = &untouched, *values = row, **vectors = &row;
        const bool isDone = a.Eigenspace(own[0], *own + 1);
        Require(a.Eigenspace(&values, &vectors) == isDone);
        if (order != a.GetN()) return Require(!isDone && values == row && vectors == &row);
        out << isDone << own.elements;
        if (!isDone) return Require(values == nullptr && vectors == nullptr);
        for (unsigned int r = 0; r < order; ++r) {
            Require(AreSame(values[r], own[0][r]) && std::equal(vectors[r], vectors[r] + order, own[r + 1]));
            delete[] vectors[r];
        }
        delete[] vectors;
        delete[] values;
    }

    static std::vector<Operation> GetOperations()
    {
        std::vector<Operation> all = Base::GetShared();
        all.insert(all.end(), {{"AssignMemory", &DenseState::AssignMemory},
                               {"operator*", &DenseState::Multiply},
                               {"TMatrix2x2", &DenseState::template MeetFixed<TMatrix2x2<T>, TVector2<T>>},
                               {"TMatrix3x3", &DenseState::template MeetFixed<TMatrix3x3<T>, TVector3<T>>},
                               {"TMatrix4x4", &DenseState::template MeetFixed<TMatrix4x4<T>, TVector4<T>>},
                               {"LUD(allocating)", &DenseState::DecomposeAllocating},
                               {"Eigenspace", &DenseState::Eigenspace}});
        return all;
    }
};

template <class T>
void AddAll()
{
    Add<FixedState<TMatrix2x2<T>, TVector2<T>>>(NameOf<T>("TMatrix2x2"), 1000);
    Add<FixedState<TMatrix3x3<T>, TVector3<T>>>(NameOf<T>("TMatrix3x3"), 1000);
    Add<FixedState<TMatrix4x4<T>, TVector4<T>>>(NameOf<T>("TMatrix4x4"), 1000);
    Add<DenseState<T>>(NameOf<T>("TMatrixMxN"), 1000);
}

const Family matrices([] {
    AddAll<float>();
    AddAll<double>();
});

} // namespace
} // namespace CorvexCatalogue

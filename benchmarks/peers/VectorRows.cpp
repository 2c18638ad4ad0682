// Vectors, points and small matrices against other libraries.

#include "PeersAlgebra.h"
#include "Rows.h"

#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexMaths;
using namespace Peers;

constexpr std::size_t vectorCount = 1000000;
constexpr std::size_t matrixCount = 1000; // What the second-level cache holds.

template <class T>
constexpr bool isDouble = sizeof(T) == sizeof(double);

/// How far results may differ that follow from one another by a few roundings.
template <class T>
constexpr double fewRoundings = isDouble<T> ? 1e-13 : 1e-5;

template <class T>
std::string Name(const std::string& row)
{
    return row + (isDouble<T> ? "/double" : "/float");
}

/// Random numbers, the same for all contenders.
template <class T>
Array<T> Scatter(std::size_t count, unsigned int seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<T> uniform(T(-1), T(1));
    Array<T> numbers(count);
    std::generate(numbers.begin(), numbers.end(), [&] { return uniform(random); });
    return numbers;
}

/// Vectors or fixed matrices of these scalars, which lie in them as in the array.
template <class V, class T>
std::shared_ptr<std::vector<V>> Group(const Array<T>& scalars)
{
    static_assert(std::is_trivially_copyable_v<V>);
    const auto group = std::make_shared<std::vector<V>>(scalars.size() * sizeof(T) / sizeof(V));
    std::memcpy(static_cast<void*>(group->data()), scalars.data(), scalars.size() * sizeof(T));
    return group;
}

/// All scalars of a number of vectors, matrices or scalars.
template <class T, class V>
Values Flatten(const V* group, std::size_t count)
{
    Array<T> scalars(count * sizeof(V) / sizeof(T));
    std::memcpy(scalars.data(), static_cast<const void*>(group), scalars.size() * sizeof(T));
    return Values(scalars.begin(), scalars.end());
}

/// An operation on each of a group.
template <class Result, class T, class V, class Operation>
Work Each(const std::shared_ptr<std::vector<V>>& in, Operation operation)
{
    const auto out = std::make_shared<std::vector<Result>>(in->size());
    return {[=] {
                const V* const from = in->data();
                Result* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) operation(from[i], &to[i]);
            },
            [=] { return Flatten<T>(out->data(), out->size()); }};
}

/// An operation on each pair of two groups.
template <class Result, class T, class V, class Operation>
Work EachPair(const std::shared_ptr<std::vector<V>>& a, const std::shared_ptr<std::vector<V>>& b, Operation operation)
{
    const auto out = std::make_shared<std::vector<Result>>(a->size());
    return {[=] {
                const V* const p = a->data();
                const V* const q = b->data();
                Result* const to = out->data();
                const std::size_t count = a->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = operation(p[i], q[i]);
            },
            [=] { return Flatten<T>(out->data(), out->size()); }};
}

template <class T>
void AddVectorRows()
{
    using Vector = TVector3<T>;
    const auto a = [] { return Scatter<T>(3 * vectorCount, 1); };
    const auto b = [] { return Scatter<T>(3 * vectorCount, 2); };

    const Row normalise(Name<T>("normalise"), fewRoundings<T>, vectorCount);
    normalise.Add("ours", [=] {
        return Each<Vector, T>(Group<Vector>(a()), [](Vector vector, Vector* out) {
            vector.Normalise();
            *out = vector;
        });
    });
    const Row dot(Name<T>("dot"), fewRoundings<T>, vectorCount);
    dot.Add("ours", [=] {
        return EachPair<T, T>(Group<Vector>(a()), Group<Vector>(b()),
                              [](const Vector& p, const Vector& q) { return p % q; });
    });
    const Row cross(Name<T>("cross"), fewRoundings<T>, vectorCount);
    cross.Add("ours", [=] {
        return EachPair<Vector, T>(Group<Vector>(a()), Group<Vector>(b()),
                                   [](const Vector& p, const Vector& q) { return p * q; });
    });

    normalise.Add("loop", [=] { return PlainNormalise(a()); });
    dot.Add("loop", [=] { return PlainDot(a(), b()); });
    cross.Add("loop", [=] { return PlainCross(a(), b()); });
    if constexpr (hasEigen) {
        normalise.Add("Eigen", [=] { return EigenNormalise(a()); });
        dot.Add("Eigen", [=] { return EigenDot(a(), b()); });
        cross.Add("Eigen", [=] { return EigenCross(a(), b()); });
    }
    if constexpr (hasGlm) {
        normalise.Add("GLM", [=] { return GlmNormalise(a()); });
        dot.Add("GLM", [=] { return GlmDot(a(), b()); });
        cross.Add("GLM", [=] { return GlmCross(a(), b()); });
    }
}

// Points.

template <class T>
std::shared_ptr<TPointSet<T, TVector3>> MakePoints(const Array<T>& scalars)
{
    const auto vectors = Group<TVector3<T>>(scalars);
    return std::make_shared<TPointSet<T, TVector3>>(vectors->data(), static_cast<unsigned int>(vectors->size()));
}

template <class T>
void AppendBox(const TBox<T>& box, Values* values)
{
    for (const TVector3<T>& corner : {box.minimum, box.maximum})
        values->insert(values->end(), {corner.x, corner.y, corner.z});
}

template <class T>
void AddTransformRows()
{
    const auto points = [] { return Scatter<T>(3 * vectorCount, 3); };
    // A turn with a shift across its axis, under which points that are moved again and again stay where they are on the
    // whole.
    const Array<T> motion = {T(0.6), T(0.8), 0, 0, T(-0.8), T(0.6), 0, 0, 0, 0, 1, 0, T(0.5), T(-0.25), 0, 1};

    const Row row(Name<T>("transform"), fewRoundings<T>, vectorCount);
    row.Add("ours", [=]() -> Work {
        const auto set = MakePoints(points());
        const TMatrix4x4<T> matrix(motion.data());
        return {[=] { *set *= matrix; },
                [=] {
                    Values values = Flatten<T>(set->GetStream(), set->GetCount());
                    AppendBox(set->GetBoundingBox(), &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) {
        row.Add("Eigen", [=] { return EigenTransform(points(), motion); });
        row.Add("EigenAtOnce", [=] { return EigenTransformAtOnce(points(), motion); });
    }
}

void AddBoxRow()
{
    const auto points = [] { return Scatter<double>(3 * vectorCount, 4); };
    const Row row("box/double", 0, vectorCount);
    row.Add("ours", [=]() -> Work {
        const auto set = MakePoints(points());
        return {[=] { set->RecalculateBoundingBox(); },
                [=] {
                    Values values;
                    AppendBox(set->GetBoundingBox(), &values);
                    return values;
                }};
    });
    if constexpr (hasEigen) row.Add("Eigen", [=] { return EigenBox(points()); });
}

// Small matrices.

/// Random matrices with a weight on the diagonal, so that no inverse is far from the others in size.
Array<double> MakeMatrices4()
{
    Array<double> scalars = Scatter<double>(16 * matrixCount, 5);
    for (std::size_t i = 0; i < scalars.size(); i += i % 16 == 15 ? 1 : 5) scalars[i] += 4;
    return scalars;
}

/// Covariance matrices of a few points.
Array<double> MakeSymmetricMatrices3()
{
    const Array<double> numbers = Scatter<double>(24 * matrixCount, 6);
    Array<double> scalars(9 * matrixCount);
    for (std::size_t i = 0; i < matrixCount; ++i)
        for (std::size_t r = 0; r < 3; ++r)
            for (std::size_t c = 0; c < 3; ++c)
                for (std::size_t k = 0; k < 24; k += 3)
                    scalars[9 * i + 3 * r + c] += numbers[24 * i + k + r] * numbers[24 * i + k + c];
    return scalars;
}

struct Eigenpairs
{
    double values[3];
    TVector3<double> vectors[3];
};

Work OurEigenvectors3()
{
    using Matrix = TMatrix3x3<double>;
    const auto in = Group<Matrix>(MakeSymmetricMatrices3());
    const auto out = std::make_shared<std::vector<Eigenpairs>>(in->size());
    return {[=] {
                const Matrix* const from = in->data();
                Eigenpairs* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) from[i].Eigenspace(to[i].values, to[i].vectors);
            },
            [=] {
                Values values;
                for (const Eigenpairs& pairs : *out) {
                    values.insert(values.end(), pairs.values, pairs.values + 3);
                    std::sort(values.end() - 3, values.end());
                }
                return values;
            }};
}

void AddSmallMatrixRows()
{
    using Matrix = TMatrix4x4<double>;
    const auto others = [] { return Scatter<double>(16 * matrixCount, 7); };

    const Row product("product4/double", fewRoundings<double>, matrixCount);
    product.Add("ours", [=] {
        return EachPair<Matrix, double>(Group<Matrix>(MakeMatrices4()), Group<Matrix>(others()),
                                        [](const Matrix& p, const Matrix& q) { return p * q; });
    });
    const Row inverse("inverse4/double", fewRoundings<double>, matrixCount);
    inverse.Add("ours", [] {
        return Each<Matrix, double>(Group<Matrix>(MakeMatrices4()),
                                    [](const Matrix& in, Matrix* out) { static_cast<void>(in.Invert(out)); });
    });
    const Row eigenvectors("eigenvectors3/double", fewRoundings<double>, matrixCount);
    eigenvectors.Add("ours", OurEigenvectors3);

    if constexpr (hasGlm) product.Add("GLM", [=] { return GlmProduct4(MakeMatrices4(), others()); });
    if constexpr (hasEigen) {
        inverse.Add("Eigen", [] { return EigenInverse4(MakeMatrices4()); });
        inverse.Add("EigenByCofactors", [] { return EigenInverse4ByCofactors(MakeMatrices4()); });
        eigenvectors.Add("Eigen", [] { return EigenEigenvectors3(MakeSymmetricMatrices3()); });
    }
}

const Registration rows([] {
    AddVectorRows<double>();
    AddVectorRows<float>();
    AddTransformRows<double>();
    AddTransformRows<float>();
    AddBoxRow();
    AddSmallMatrixRows();
});

} // namespace

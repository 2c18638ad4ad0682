// What Eigen does for comparison.

#include "PeersAlgebra.h"

#include <Eigen/Dense>
#include <Eigen/Sparse>
#include <unsupported/Eigen/Splines>

#include <cmath>
#include <memory>

namespace Peers
{

namespace
{

template <class T>
using Vector3 = Eigen::Matrix<T, 3, 1>;
template <class T>
using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic>;
template <class T>
using MatrixByRows = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
template <class T>
using Points = Eigen::Matrix<T, 3, Eigen::Dynamic>; // A column for each.
template <class T>
using Vectors = std::vector<Vector3<T>>;

using Eigen::Index;

template <class T>
Matrix<T> ToMatrix(const Array<T>& scalars, int rows, int columns)
{
    return Eigen::Map<const MatrixByRows<T>>(scalars.data(), rows, columns);
}

template <class T>
Points<T> ToPoints(const Array<T>& scalars)
{
    return Eigen::Map<const Points<T>>(scalars.data(), 3, static_cast<Index>(scalars.size() / 3));
}

template <class T>
std::shared_ptr<Vectors<T>> ToVectors(const Array<T>& scalars)
{
    const auto vectors = std::make_shared<Vectors<T>>(scalars.size() / 3);
    for (std::size_t i = 0; i < vectors->size(); ++i) (*vectors)[i] = Eigen::Map<const Vector3<T>>(&scalars[3 * i]);
    return vectors;
}

/// Square matrices of a fixed order, one after the other.
template <int N>
using FixedMatrices = std::vector<Eigen::Matrix<double, N, N>>;

template <int N>
std::shared_ptr<FixedMatrices<N>> ToFixedMatrices(const Array<double>& scalars)
{
    const auto matrices = std::make_shared<FixedMatrices<N>>(scalars.size() / (N * N));
    for (std::size_t i = 0; i < matrices->size(); ++i)
        (*matrices)[i] = Eigen::Map<const Eigen::Matrix<double, N, N, Eigen::RowMajor>>(&scalars[N * N * i]);
    return matrices;
}

/// Appends the elements of a matrix by rows.
template <class Derived>
void Append(const Eigen::MatrixBase<Derived>& matrix, Values* values)
{
    for (Index r = 0; r < matrix.rows(); ++r)
        for (Index c = 0; c < matrix.cols(); ++c) values->push_back(matrix(r, c));
}

template <class T>
Values ToValues(const Vectors<T>& vectors)
{
    Values values;
    for (const Vector3<T>& v : vectors) Append(v, &values);
    return values;
}

template <class Derived>
Values ToValues(const Eigen::MatrixBase<Derived>& matrix)
{
    Values values;
    Append(matrix, &values);
    return values;
}

} // namespace

// Vectors.

template <class T>
Work EigenNormalise(const Array<T>& vectors)
{
    const auto in = ToVectors(vectors);
    const auto out = std::make_shared<Vectors<T>>(in->size());
    return {[=] {
                const Vector3<T>* const from = in->data();
                Vector3<T>* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = from[i].normalized();
            },
            [=] { return ToValues(*out); }};
}

template <class T>
Work EigenDot(const Array<T>& a, const Array<T>& b)
{
    const auto left = ToVectors(a);
    const auto right = ToVectors(b);
    const auto out = std::make_shared<std::vector<T>>(left->size());
    return {[=] {
                const Vector3<T>* const p = left->data();
                const Vector3<T>* const q = right->data();
                T* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = p[i].dot(q[i]);
            },
            [=] { return Values(out->begin(), out->end()); }};
}

template <class T>
Work EigenCross(const Array<T>& a, const Array<T>& b)
{
    const auto left = ToVectors(a);
    const auto right = ToVectors(b);
    const auto out = std::make_shared<Vectors<T>>(left->size());
    return {[=] {
                const Vector3<T>* const p = left->data();
                const Vector3<T>* const q = right->data();
                Vector3<T>* const to = out->data();
                const std::size_t count = left->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = p[i].cross(q[i]);
            },
            [=] { return ToValues(*out); }};
}

// Points under a matrix, and their box.

template <class T>
struct Cloud
{
    Vectors<T> points;
    Eigen::AlignedBox<T, 3> box;

    Values ToValues() const
    {
        Values values = Peers::ToValues(points);
        Append(box.min(), &values);
        Append(box.max(), &values);
        return values;
    }
};

template <class T>
Work EigenTransform(const Array<T>& points, const Array<T>& matrix)
{
    const Eigen::Transform<T, 3, Eigen::Affine> motion(Eigen::Matrix<T, 4, 4>(ToMatrix(matrix, 4, 4).transpose()));
    const auto cloud = std::make_shared<Cloud<T>>(Cloud<T>{*ToVectors(points), {}});
    return {[=] {
                Eigen::AlignedBox<T, 3> around;
                for (Vector3<T>& point : cloud->points) {
                    point = motion * point;
                    around.extend(point);
                }
                cloud->box = around;
            },
            [=] { return cloud->ToValues(); }};
}

template <class T>
Work EigenTransformAtOnce(const Array<T>& points, const Array<T>& matrix)
{
    const Eigen::Transform<T, 3, Eigen::Affine> motion(Eigen::Matrix<T, 4, 4>(ToMatrix(matrix, 4, 4).transpose()));
    const auto cloud = std::make_shared<Points<T>>(ToPoints(points));
    const auto box = std::make_shared<Eigen::AlignedBox<T, 3>>();
    return {[=] {
                *cloud = motion * *cloud;
                *box = Eigen::AlignedBox<T, 3>(cloud->rowwise().minCoeff(), cloud->rowwise().maxCoeff());
            },
            [=] {
                Values values = ToValues(cloud->transpose());
                Append(box->min(), &values);
                Append(box->max(), &values);
                return values;
            }};
}

Work EigenBox(const Array<double>& points)
{
    const auto vectors = ToVectors(points);
    const auto box = std::make_shared<Eigen::AlignedBox3d>();
    return {[=] {
                Eigen::AlignedBox3d around;
                for (const Eigen::Vector3d& point : *vectors) around.extend(point);
                *box = around;
            },
            [=] {
                Values values = ToValues(box->min());
                Append(box->max(), &values);
                return values;
            }};
}

// Small matrices.

namespace
{

template <class Invert>
Work Inverse4(const Array<double>& matrices, const Invert& invert)
{
    const auto in = ToFixedMatrices<4>(matrices);
    const auto out = std::make_shared<FixedMatrices<4>>(in->size());
    return {[=] {
                const Eigen::Matrix4d* const from = in->data();
                Eigen::Matrix4d* const to = out->data();
                const std::size_t count = in->size();
                for (std::size_t i = 0; i < count; ++i) to[i] = invert(from[i]);
            },
            [=] {
                Values values;
                for (const Eigen::Matrix4d& matrix : *out) Append(matrix, &values);
                return values;
            }};
}

} // namespace

Work EigenInverse4(const Array<double>& matrices)
{
    return Inverse4(matrices, [](const Eigen::Matrix4d& m) -> Eigen::Matrix4d { return m.partialPivLu().inverse(); });
}

Work EigenInverse4ByCofactors(const Array<double>& matrices)
{
    return Inverse4(matrices, [](const Eigen::Matrix4d& m) -> Eigen::Matrix4d { return m.inverse(); });
}

Work EigenEigenvectors3(const Array<double>& matrices)
{
    struct Pair
    {
        Eigen::Vector3d values;
        Eigen::Matrix3d vectors;
    };
    const auto in = ToFixedMatrices<3>(matrices);
    const auto out = std::make_shared<std::vector<Pair>>(in->size());
    return {[=] {
                Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver;
                for (std::size_t i = 0; i < in->size(); ++i) {
                    solver.compute((*in)[i]);
                    (*out)[i] = {solver.eigenvalues(), solver.eigenvectors()};
                }
            },
            [=] {
                Values values;
                for (const Pair& pair : *out) Append(pair.values, &values);
                return values;
            }};
}

// Dense matrices.

template <class T>
Work EigenProduct(const Array<T>& a, const Array<T>& b, int order)
{
    const auto left = std::make_shared<Matrix<T>>(ToMatrix(a, order, order));
    const auto right = std::make_shared<Matrix<T>>(ToMatrix(b, order, order));
    const auto product = std::make_shared<Matrix<T>>(order, order);
    return {[=] { product->noalias() = *left * *right; }, [=] { return ToValues(*product); }};
}

Work EigenInverse(const Array<double>& matrix, int order)
{
    const auto in = std::make_shared<Matrix<double>>(ToMatrix(matrix, order, order));
    const auto out = std::make_shared<Matrix<double>>(order, order);
    return {[=] { *out = in->inverse(); }, [=] { return ToValues(*out); }};
}

namespace
{

template <class Decomposition>
Work Decompose(const Array<double>& matrix, int rows, int columns)
{
    const auto in = std::make_shared<Matrix<double>>(ToMatrix(matrix, rows, columns));
    const auto out =
        std::make_shared<Decomposition>(rows, columns, unsigned(Eigen::ComputeThinU) | Eigen::ComputeThinV);
    return {[=] { out->compute(*in); }, [=] { return ToValues(out->singularValues()); }};
}

} // namespace

Work EigenSingularValues(const Array<double>& matrix, int rows, int columns)
{
    return Decompose<Eigen::BDCSVD<Matrix<double>>>(matrix, rows, columns);
}

Work EigenSingularValuesByRotations(const Array<double>& matrix, int rows, int columns)
{
    return Decompose<Eigen::JacobiSVD<Matrix<double>>>(matrix, rows, columns);
}

Work EigenLeastSquares(const Array<double>& matrix, const Array<double>& rightSides, int rows, int columns)
{
    const auto a = std::make_shared<Matrix<double>>(ToMatrix(matrix, rows, columns));
    const auto b = std::make_shared<Matrix<double>>(ToMatrix(rightSides, rows, 3));
    const auto x = std::make_shared<Matrix<double>>();
    return {[=] { *x = a->bdcSvd(unsigned(Eigen::ComputeThinU) | Eigen::ComputeThinV).solve(*b); },
            [=] { return ToValues(*x); }};
}

// Fits.

namespace
{

/// Points less their centre, one to a row, and the right singular vectors of that matrix, by descending values.
struct Axes
{
    Eigen::Vector3d centre;
    Eigen::Matrix<double, Eigen::Dynamic, 3> centred;
    Eigen::Matrix3d vectors;

    explicit Axes(const Points<double>& points) : centre(points.rowwise().mean())
    {
        centred = (points.colwise() - centre).transpose();
        vectors = Eigen::JacobiSVD<decltype(centred)>(centred, Eigen::ComputeFullV).matrixV();
    }
};

/// Appends a direction, turned so that its largest component is positive.
void AppendDirection(const Eigen::Vector3d& direction, Values* values)
{
    Index largest = 0;
    direction.cwiseAbs().maxCoeff(&largest);
    Append(direction(largest) < 0 ? Eigen::Vector3d(-direction) : direction, values);
}

Work FitAxis(const Array<double>& points, Index axis)
{
    struct Fitted
    {
        Eigen::Vector3d centre, direction;
    };
    const auto in = std::make_shared<Points<double>>(ToPoints(points));
    const auto out = std::make_shared<Fitted>();
    return {[=] {
                const Axes axes(*in);
                *out = {axes.centre, axes.vectors.col(axis)};
            },
            [=] {
                Values values = ToValues(out->centre);
                AppendDirection(out->direction, &values);
                return values;
            }};
}

/// The fit of a circle or a sphere: unknowns are the centre and the radius.
template <int N>
class RoundFit
{
public:
    using Centre = Eigen::Matrix<double, N, 1>;
    using Rows = Eigen::Matrix<double, N, Eigen::Dynamic>; // A point to a column.

    Centre centre;
    double k = 0;
    double radius = 0;

    /// 2 p . c - k = |p|^2, where k = |c|^2 - r^2.
    explicit RoundFit(const Rows& all) : points(all), system(all.cols(), N + 1), right(all.cols())
    {
        system.template leftCols<N>() = 2 * points.transpose();
        system.col(N).setConstant(-1);
        right = points.colwise().squaredNorm().transpose();
        const Solution solution = Solve();
        centre = solution.template head<N>();
        k = solution(N);
        radius = std::sqrt(centre.squaredNorm() - k);
    }

    /// Steps on the distances until `measure` of a step says that it is the last.
    template <class Measure>
    void Refine(int steps, const Measure& isLast)
    {
        for (int i = 0; i < steps; ++i) {
            const Rows d = points.colwise() - centre;
            right = d.colwise().norm().transpose();
            system.template leftCols<N>() = -(d.transpose().array().colwise() / right.array());
            right = radius - right.array();
            const Solution step = Solve();
            if (isLast(&centre, &radius, Centre(step.template head<N>()), step(N))) return;
        }
    }

private:
    using Solution = Eigen::Matrix<double, N + 1, 1>;

    const Rows& points;
    Eigen::Matrix<double, Eigen::Dynamic, N + 1> system;
    Eigen::VectorXd right;
    Eigen::HouseholderQR<decltype(system)> qr;

    Solution Solve() { return qr.compute(system).solve(right); }
};

} // namespace

Work EigenPlaneFit(const Array<double>& points)
{
    return FitAxis(points, 2);
}

Work EigenLineFit(const Array<double>& points)
{
    return FitAxis(points, 0);
}

Work EigenSphereFit(const Array<double>& points, int steps)
{
    const auto in = std::make_shared<Points<double>>(ToPoints(points));
    const auto out = std::make_shared<Eigen::Vector4d>();
    return {[=] {
                const Eigen::Vector3d mean = in->rowwise().mean();
                const Points<double> centred = in->colwise() - mean;
                RoundFit<3> fit(centred);
                double last = 1e30;
                fit.Refine(steps, [&](Eigen::Vector3d* centre, double* radius, const Eigen::Vector3d& step, double dr) {
                    const double measure = step.squaredNorm();
                    if (measure <= 1e-16) return true;
                    *centre += step;
                    *radius += dr;
                    const bool isLast = measure >= last;
                    last = measure;
                    return isLast;
                });
                *out << fit.centre + mean, fit.radius;
            },
            [=] { return ToValues(*out); }};
}

Work EigenCircleFit(const Array<double>& points, double tolerance, int steps)
{
    struct Fitted
    {
        Eigen::Vector4d circle;
        Eigen::Vector3d normal;
    };
    const auto in = std::make_shared<Points<double>>(ToPoints(points));
    const auto out = std::make_shared<Fitted>();
    return {[=] {
                const Axes axes(*in);
                const Eigen::Matrix<double, 2, Eigen::Dynamic> plane =
                    (axes.centred * axes.vectors.leftCols<2>()).transpose();
                RoundFit<2> fit(plane);
                // From where our fit starts, so that both take two steps. The residual is linear in the radius, so any
                // start leads to the same circle, but here the measure of the first step holds its way from there.
                fit.radius = fit.k;
                double last = 1e30;
                fit.Refine(steps, [&](Eigen::Vector2d* centre, double* radius, const Eigen::Vector2d& step, double dr) {
                    *centre += step;
                    *radius += dr;
                    const double measure = centre->dot(step) + *radius * dr;
                    const bool isLast = measure < tolerance || measure >= last;
                    last = measure;
                    return isLast;
                });
                out->circle << axes.centre + axes.vectors.leftCols<2>() * fit.centre, fit.radius;
                out->normal = axes.vectors.col(2);
            },
            [=] {
                Values values = ToValues(out->circle);
                AppendDirection(out->normal, &values);
                return values;
            }};
}

namespace
{

enum class Kind
{
    Ring,
    Cylinder,
    Cone
};

/// The features about an axis: unknowns are shifts and tilts of a frame that moves along, radius and half angle.
template <Kind kind>
class AxisFit
{
public:
    static constexpr int K = kind == Kind::Cylinder ? 5 : 6;
    static constexpr int rows = kind == Kind::Ring ? 2 : 1;

    Eigen::Vector3d origin;
    Eigen::Matrix3d frame;
    double radius;
    double angle;

    AxisFit(const Points<double>& points, const Array<double>& about)
        : origin(about[0], about[1], about[2]), radius(about[6]), angle(about.size() > 7 ? about[7] : 0)
    {
        Point(Eigen::Vector3d(about[3], about[4], about[5]));
        const Index count = points.cols();
        Eigen::Matrix<double, Eigen::Dynamic, K> system(rows * count, K);
        Eigen::VectorXd right(rows * count);
        Eigen::HouseholderQR<decltype(system)> qr(rows * count, K);
        for (int i = 0; i < 50; ++i) {
            Linearise(points, &system, &right);
            const Eigen::Matrix<double, K, 1> step = qr.compute(system).solve(right);
            Move(step);
            if (step.norm() <= 1e-12) return;
        }
    }

private:
    void Point(const Eigen::Vector3d& direction)
    {
        frame.col(2) = direction.normalized();
        frame.col(0) = frame.col(2).unitOrthogonal();
        frame.col(1) = frame.col(2).cross(frame.col(0));
    }

    template <class System>
    void Linearise(const Points<double>& points, System* system, Eigen::VectorXd* right) const
    {
        const Index count = points.cols();
        const Points<double> local = frame.transpose() * (points.colwise() - origin);
        const Eigen::ArrayXd z = local.row(2).transpose().array();
        const Eigen::ArrayXd rho = local.template topRows<2>().colwise().norm().transpose().array();
        const Eigen::ArrayXd x = local.row(0).transpose().array() / rho;
        const Eigen::ArrayXd y = local.row(1).transpose().array() / rho;
        const auto column = [&](int k) { return system->col(k).head(count).array(); };
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        column(0) = -c * x;
        column(1) = -c * y;
        if constexpr (kind == Kind::Ring) {
            column(2) = 0;
            column(3) = -z * x;
            column(4) = -z * y;
            column(5) = -1;
            auto across = system->bottomRows(count);
            across.setZero();
            across.col(2).setConstant(-1);
            across.col(3) = local.row(0).transpose();
            across.col(4) = local.row(1).transpose();
            right->head(count) = radius - rho;
            right->tail(count) = -z;
        } else {
            const Eigen::ArrayXd lever = -c * z - s * rho;
            column(2) = x * lever;
            column(3) = y * lever;
            column(4) = -c;
            if constexpr (kind == Kind::Cone) column(5) = -s * (rho - radius) - c * z;
            *right = (s * z - c * (rho - radius)).matrix();
        }
    }

    void Move(const Eigen::Matrix<double, K, 1>& step)
    {
        constexpr int tilt = kind == Kind::Ring ? 3 : 2;
        origin += frame.leftCols<tilt>() * step.template head<tilt>();
        radius += step(tilt + 2);
        if (kind == Kind::Cone) angle += step(K - 1);
        Point(frame.col(2) + frame.leftCols<2>() * step.template segment<2>(tilt));
    }
};

template <Kind kind>
Work FitAbout(const Array<double>& points, const Array<double>& about)
{
    const auto in = std::make_shared<Points<double>>(ToPoints(points));
    const auto out = std::make_shared<Values>();
    return {[=] {
                const AxisFit<kind> fit(*in, about);
                const Eigen::Vector3d axis = fit.frame.col(2);
                Eigen::Vector3d place = fit.origin;
                if (kind == Kind::Cylinder) place -= axis.dot(place) * axis;
                if (kind == Kind::Cone) place -= fit.radius / std::tan(fit.angle) * axis;
                *out = ToValues(place);
                AppendDirection(axis, out.get());
                out->push_back(kind == Kind::Cone ? fit.angle : fit.radius);
            },
            [=] { return *out; }};
}

} // namespace

Work EigenFlatCircleFit(const Array<double>& points)
{
    using Flat = Eigen::Matrix<double, 2, Eigen::Dynamic>;
    const auto in = std::make_shared<Flat>(Eigen::Map<const Flat>(points.data(), 2, Index(points.size() / 2)));
    const auto out = std::make_shared<Eigen::Vector3d>();
    return {[=] {
                const Eigen::Vector2d mean = in->rowwise().mean();
                const Flat centred = in->colwise() - mean;
                RoundFit<2> fit(centred);
                fit.Refine(50, [](Eigen::Vector2d* centre, double* radius, const Eigen::Vector2d& step, double dr) {
                    *centre += step;
                    *radius += dr;
                    return step.norm() <= 1e-12;
                });
                *out << fit.centre + mean, fit.radius;
            },
            [=] { return ToValues(*out); }};
}

Work EigenRingFit(const Array<double>& points, const Array<double>& about)
{
    return FitAbout<Kind::Ring>(points, about);
}

Work EigenCylinderFit(const Array<double>& points, const Array<double>& about)
{
    return FitAbout<Kind::Cylinder>(points, about);
}

Work EigenConeFit(const Array<double>& points, const Array<double>& about)
{
    return FitAbout<Kind::Cone>(points, about);
}

Work EigenRegistration(const Array<double>& from, const Array<double>& to)
{
    const auto source = std::make_shared<Points<double>>(ToPoints(from));
    const auto target = std::make_shared<Points<double>>(ToPoints(to));
    const auto motion = std::make_shared<Eigen::Matrix4d>();
    return {[=] { *motion = Eigen::umeyama(*source, *target, false); },
            [=] {
                Values values = ToValues(motion->topLeftCorner<3, 3>());
                Append(motion->topRightCorner<3, 1>(), &values);
                return values;
            }};
}

Work EigenSpline(const Array<double>& controls, int steps)
{
    using Cubic = Eigen::Spline<double, 3, 3>;
    constexpr int order = 4;
    const int count = static_cast<int>(controls.size() / 3);
    Cubic::KnotVectorType knots(count + order);
    for (int i = 0; i < count + order; ++i)
        knots(i) = i < order ? 0 : i < count ? static_cast<double>(i - order + 1) / (count - order + 1) : 1;
    const auto spline = std::make_shared<Cubic>(knots, ToPoints(controls).array());
    const auto out = std::make_shared<Vectors<double>>();
    return {[=] {
                out->clear();
                for (int i = 0; i <= steps; ++i) out->emplace_back((*spline)(static_cast<double>(i) / steps));
            },
            [=] { return ToValues(*out); }};
}

// Sparse matrices.

namespace
{

using Sparse = Eigen::SparseMatrix<double, Eigen::RowMajor>;

std::shared_ptr<Sparse> ToSparse(const Array<Element>& elements, int rows, int columns)
{
    std::vector<Eigen::Triplet<double>> triplets;
    for (const Element& e : elements) triplets.emplace_back(e.row, e.column, e.value);
    const auto sparse = std::make_shared<Sparse>(rows, columns);
    sparse->setFromTriplets(triplets.begin(), triplets.end());
    return sparse;
}

/// The elements for which a condition on row and column holds.
template <class Condition>
Values ToValues(const Sparse& sparse, const Condition& counts)
{
    Values values;
    for (Index r = 0; r < sparse.rows(); ++r)
        for (Sparse::InnerIterator e(sparse, r); e; ++e)
            if (counts(e.row(), e.col())) values.insert(values.end(), {double(e.row()), double(e.col()), e.value()});
    return values;
}

Values ToValues(const Sparse& sparse)
{
    return ToValues(sparse, [](Index, Index) { return true; });
}

} // namespace

Work EigenSparseVector(const Array<Element>& a, int rows, int columns, const Array<double>& x)
{
    const auto sparse = ToSparse(a, rows, columns);
    const auto in = std::make_shared<Eigen::VectorXd>(ToMatrix(x, columns, 1));
    const auto out = std::make_shared<Eigen::VectorXd>(rows);
    return {[=] { out->noalias() = *sparse * *in; }, [=] { return ToValues(*out); }};
}

Work EigenSparseProduct(const Array<Element>& a, int rows, int columns)
{
    const auto left = ToSparse(a, rows, columns);
    const auto right = std::make_shared<Sparse>(left->transpose());
    const auto product = std::make_shared<Sparse>();
    return {[=] { *product = *left * *right; }, [=] { return ToValues(*product); }};
}

Work EigenSparseNormal(const Array<Element>& a, int rows, int columns)
{
    const auto right = ToSparse(a, rows, columns);
    const auto left = std::make_shared<Sparse>(right->transpose());
    const auto product = std::make_shared<Sparse>();
    return {[=] { *product = *left * *right; },
            [=] { return ToValues(*product, [](Index row, Index column) { return row <= column; }); }};
}

Work EigenSparseDense(const Array<Element>& a, int rows, int columns, const Array<double>& b)
{
    const auto left = std::make_shared<Sparse>(ToSparse(a, rows, columns)->transpose());
    const auto right = std::make_shared<Matrix<double>>(ToMatrix(b, rows, columns));
    const auto product = std::make_shared<Sparse>();
    return {[=] { *product = (*left * *right).sparseView(); }, [=] { return ToValues(*product); }};
}

template Work EigenNormalise(const Array<float>&);
template Work EigenNormalise(const Array<double>&);
template Work EigenDot(const Array<float>&, const Array<float>&);
template Work EigenDot(const Array<double>&, const Array<double>&);
template Work EigenCross(const Array<float>&, const Array<float>&);
template Work EigenCross(const Array<double>&, const Array<double>&);
template Work EigenTransform(const Array<float>&, const Array<float>&);
template Work EigenTransform(const Array<double>&, const Array<double>&);
template Work EigenTransformAtOnce(const Array<float>&, const Array<float>&);
template Work EigenTransformAtOnce(const Array<double>&, const Array<double>&);
template Work EigenProduct(const Array<float>&, const Array<float>&, int);
template Work EigenProduct(const Array<double>&, const Array<double>&, int);

} // namespace Peers

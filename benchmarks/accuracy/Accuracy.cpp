// How near fits come to the values of reference.txt, ours and those of others: a table of the greatest error in each
// group of sets, over the size of the feature or in radians.

#include <benchmarks/accuracy/Reference.h>

#if CORVEX_ACCURACY_EIGEN
#include <Eigen/Dense>
#include <Eigen/Geometry>
#endif
#if CORVEX_ACCURACY_CGAL
#include <CGAL/Simple_cartesian.h>
#include <CGAL/linear_least_squares_fitting_3.h>
#endif

#include <cstdio>
#include <functional>

namespace
{

using namespace Accuracy;

template <class Vector>
void PutPlace(const std::string& name, const Vector& v, unsigned int dimension, Result* result)
{
    for (unsigned int k = 0; k < dimension; ++k) result->values[name + "." + "xyz"[k]] = v[k];
}

/// A direction, turned so that its greatest component is positive.
template <class Vector>
void PutDirection(const std::string& name, const Vector& v, unsigned int dimension, Result* result)
{
    unsigned int greatest = 0;
    for (unsigned int k = 1; k < dimension; ++k) {
        if (std::fabs(v[k]) > std::fabs(v[greatest])) greatest = k;
    }
    for (unsigned int k = 0; k < dimension; ++k) {
        result->values[name + "." + "xyz"[k]] = v[greatest] < 0.0 ? -v[k] : v[k];
    }
}

/// The fits that the primitives have by themselves, with steps to spare, and the registration of point sets.
Result ContractFit(const Set& set)
{
    Result result;
    result.status = Robust::Status::Done;
    const char* const known[] = {"Line3", "Plane", "Circle3", "Sphere", "Motion"};
    if (std::find(std::begin(known), std::end(known), set.feature) == std::end(known)) return result;
    bool done = false;
    auto points = set.Points<double, TVector3>();
    if (set.feature == "Line3") {
        TLine3<double> line;
        done = line.Fit(points, nullptr, nullptr);
        PutPlace("origin", line.origin, 3, &result);
        PutDirection("direction", line.direction, 3, &result);
    }
    if (set.feature == "Plane") {
        TPlane<double> plane;
        done = plane.Fit(points, nullptr, nullptr);
        PutPlace("point", plane.point, 3, &result);
        PutDirection("normal", plane.normal, 3, &result);
    }
    if (set.feature == "Circle3") {
        TCircle3<double> circle;
        done = circle.Fit(points, nullptr, nullptr, 1e-20, 100);
        PutPlace("centre", circle.centre, 3, &result);
        PutDirection("normal", circle.normal, 3, &result);
        result.values["radius"] = circle.radius;
    }
    if (set.feature == "Sphere") {
        TSphere<double> sphere;
        done = sphere.Fit(points, nullptr, 100);
        PutPlace("centre", sphere.sphere, 3, &result);
        result.values["radius"] = sphere.sphere.w;
    }
    if (set.feature == "Motion") {
        auto nominal = set.Points<double, TVector3>(3);
        TMatrixMxN<double> rotation;
        TVector3<double> translation;
        done = nominal.Register(&points, &rotation, &translation, false);
        for (unsigned int i = 0; i < 9 && done; ++i) {
            result.values["rotation" + std::to_string(i / 3) + std::to_string(i % 3)] = rotation[i / 3][i % 3];
        }
        PutPlace("translation", translation, 3, &result);
    }
    result.status = done ? Robust::Status::Done : Robust::Status::Degenerate;
    return result;
}

#if CORVEX_ACCURACY_EIGEN

Eigen::MatrixXd ToMatrix(const Set& set, int from, int dimension)
{
    Eigen::MatrixXd points(static_cast<Eigen::Index>(set.points.size()), dimension);
    for (Eigen::Index i = 0; i < points.rows(); ++i) {
        for (int k = 0; k < dimension; ++k)
            points(i, k) = set.points[static_cast<std::size_t>(i)][static_cast<std::size_t>(from + k)];
    }
    return points;
}

/// Gauss-Newton steps for circles and spheres by Householder QR or the normal equations; lines and planes by the
/// singular vectors of the centred points or the eigenvectors of their covariance; motions by `Eigen::umeyama`.
Result EigenFit(const Set& set, bool byNormalEquations)
{
    Result result;
    const int dimension = set.feature == "Line2" || set.feature == "Circle2" ? 2 : 3;
    const Eigen::MatrixXd points = ToMatrix(set, 0, dimension);
    const Eigen::VectorXd mean = points.colwise().mean();
    const Eigen::MatrixXd centred = points.rowwise() - mean.transpose();
    result.status = Robust::Status::Done;
    if (set.feature == "Line2" || set.feature == "Line3" || set.feature == "Plane") {
        Eigen::MatrixXd axes; // The greatest extent first.
        if (byNormalEquations) {
            const Eigen::MatrixXd covariance = centred.transpose() * centred;
            axes = Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd>(covariance).eigenvectors().rowwise().reverse();
        } else {
            axes = Eigen::JacobiSVD<Eigen::MatrixXd>(centred, Eigen::ComputeThinV).matrixV();
        }
        const bool isPlane = set.feature == "Plane";
        const Eigen::VectorXd direction = axes.col(isPlane ? 2 : 0);
        PutPlace(isPlane ? "point" : "origin", mean, static_cast<unsigned int>(dimension), &result);
        PutDirection(isPlane ? "normal" : "direction", direction, static_cast<unsigned int>(dimension), &result);
    } else if (set.feature == "Circle2" || set.feature == "Sphere") {
        Eigen::MatrixXd rows(points.rows(), dimension + 1);
        rows << 2.0 * centred, Eigen::VectorXd::Ones(points.rows());
        const Eigen::VectorXd start = rows.householderQr().solve(centred.rowwise().squaredNorm().eval());
        Eigen::VectorXd centre = start.head(dimension);
        double radius = std::sqrt(start(dimension) + centre.squaredNorm());
        for (int step = 0; step < 100; ++step) {
            const Eigen::MatrixXd out = centred.rowwise() - centre.transpose();
            const Eigen::VectorXd lengths = out.rowwise().norm();
            rows << out.array().colwise() / lengths.array(), Eigen::VectorXd::Ones(points.rows());
            const Eigen::VectorXd rest = lengths.array() - radius;
            const Eigen::VectorXd move =
                byNormalEquations ? Eigen::VectorXd((rows.transpose() * rows).ldlt().solve(rows.transpose() * rest))
                                  : Eigen::VectorXd(rows.householderQr().solve(rest));
            centre += move.head(dimension);
            radius += move(dimension);
        }
        PutPlace("centre", (centre + mean).eval(), static_cast<unsigned int>(dimension), &result);
        result.values["radius"] = radius;
    } else if (set.feature == "Motion" && !byNormalEquations) {
        const Eigen::Matrix4d motion = Eigen::umeyama(points.transpose(), ToMatrix(set, 3, 3).transpose(), false);
        for (int i = 0; i < 9; ++i) {
            result.values["rotation" + std::to_string(i / 3) + std::to_string(i % 3)] = motion(i / 3, i % 3);
        }
        PutPlace("translation", motion.col(3), 3, &result);
    }
    return result;
}

#endif

#if CORVEX_ACCURACY_CGAL

/// Lines and planes by the covariance of the points.
Result CgalFit(const Set& set)
{
    using Kernel = CGAL::Simple_cartesian<double>;
    Result result;
    result.status = Robust::Status::Done;
    std::vector<Kernel::Point_3> points;
    Kernel::Point_3 centroid;
    if (set.feature != "Line3" && set.feature != "Plane") return result;
    for (const std::vector<double>& p : set.points) points.emplace_back(p[0], p[1], p[2]);
    if (set.feature == "Line3") {
        Kernel::Line_3 line;
        linear_least_squares_fitting_3(points.begin(), points.end(), line, centroid, CGAL::Dimension_tag<0>());
        const Kernel::Vector_3 along = line.to_vector() / std::sqrt(line.to_vector().squared_length());
        PutPlace("origin", centroid, 3, &result);
        PutDirection("direction", along, 3, &result);
    } else {
        Kernel::Plane_3 plane;
        linear_least_squares_fitting_3(points.begin(), points.end(), plane, centroid, CGAL::Dimension_tag<0>());
        const Kernel::Vector_3 across = plane.orthogonal_vector();
        PutPlace("point", centroid, 3, &result);
        PutDirection("normal", Kernel::Vector_3(across / std::sqrt(across.squared_length())), 3, &result);
    }
    return result;
}

#endif

/// What a contender came to in a group.
struct Entry
{
    double error = 0.0;
    unsigned int sets = 0;
    unsigned int failures = 0;
};

void Count(const Set& set, const Result& result, Entry* entry)
{
    if (result.status == Robust::Status::Done && result.values.empty()) return;
    ++entry->sets;
    if (result.status != Robust::Status::Done) {
        ++entry->failures;
        return;
    }
    for (const Value& value : set.values) {
        const auto found = result.values.find(value.name);
        if (found == result.values.end()) continue;
        const double error = value.Error(found->second) / (value.kind == "angle" ? 1.0 : set.size);
        if (!(error <= entry->error)) entry->error = error;
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) return 2;
    const std::pair<const char*, std::function<Result(const Set&)>> contenders[] = {
        {"own fit", ContractFit},
        {"robust", RobustFit<double>},
#if CORVEX_ACCURACY_EIGEN
        {"Eigen, QR or SVD", [](const Set& set) { return EigenFit(set, false); }},
        {"Eigen, squares", [](const Set& set) { return EigenFit(set, true); }},
#endif
#if CORVEX_ACCURACY_CGAL
        {"CGAL", CgalFit},
#endif
    };
    std::vector<std::string> order;
    std::map<std::string, std::vector<Entry>> table;
    for (const Set& set : Read(arguments[1])) {
        std::string key = set.feature + std::string(10 - set.feature.size(), ' ') + set.group;
        std::replace(key.begin(), key.end(), '_', ' ');
        if (table.count(key) == 0) {
            order.push_back(key);
            table[key].resize(std::size(contenders));
        }
        for (std::size_t i = 0; i < std::size(contenders); ++i) Count(set, contenders[i].second(set), &table[key][i]);
    }
    std::printf("%-32s", "feature   group");
    for (const auto& [name, fit] : contenders) std::printf("%18s", name);
    std::printf("\n");
    for (const std::string& key : order) {
        std::printf("%-32s", key.c_str());
        for (const Entry& entry : table[key]) {
            char text[40] = "-";
            if (entry.sets > 0 && entry.failures == entry.sets)
                std::snprintf(text, sizeof text, "none");
            else if (entry.failures > 0)
                std::snprintf(text, sizeof text, "%.0e, %u of %u", entry.error, entry.sets - entry.failures,
                              entry.sets);
            else if (entry.sets > 0)
                std::snprintf(text, sizeof text, "%.0e", entry.error);
            std::printf("%18s", text);
        }
        std::printf("\n");
    }
    return 0;
}

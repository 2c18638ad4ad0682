#include <CorvexMaths/robust/NearestAlignment.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace Halmont::Orrin::CorvexMaths::Robust
{

namespace
{

using Points = TPointSet<double, TVector3>;

/// The greatest absolute value of a coordinate; infinite where one is not finite.
template <class T>
double Reach(const TPointSet<T, TVector3>& points)
{
    double greatest = 0.0;
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        for (unsigned int k = 0; k < 3; ++k) {
            const double x = static_cast<double>(points[i][k]);
            if (!std::isfinite(x)) return std::numeric_limits<double>::infinity();
            greatest = std::max(greatest, std::fabs(x));
        }
    }
    return greatest;
}

/// A point set in double, scaled.
template <class T>
Points Scaled(const TPointSet<T, TVector3>& points, double scale)
{
    Points scaled(points.GetCount());
    for (unsigned int i = 0; i < points.GetCount(); ++i) {
        scaled.Add(TVector3<double>(static_cast<double>(points[i].x), static_cast<double>(points[i].y),
                                    static_cast<double>(points[i].z)) *
                   scale);
    }
    return scaled;
}

/// A balanced tree over points: the middle one of a range splits it along the axis of its greatest extent.
class NearestSearch
{
public:
    explicit NearestSearch(const Points& cloud)
        : points(cloud), order(new unsigned int[cloud.GetCount()]), axes(new unsigned char[cloud.GetCount()])
    {
        for (unsigned int i = 0; i < cloud.GetCount(); ++i) order[i] = i;
        Build(0, cloud.GetCount());
    }

    /// The index of the point nearest to p, beginning with a guess.
    unsigned int Find(const TVector3<double>& p, unsigned int guess) const
    {
        Best best{guess, Square(p, guess)};
        Descend(p, 0, points.GetCount(), &best);
        return best.index;
    }

private:
    struct Best
    {
        unsigned int index;
        double square;
    };
    const Points& points;
    std::unique_ptr<unsigned int[]> order;
    std::unique_ptr<unsigned char[]> axes;

    double Square(const TVector3<double>& p, unsigned int i) const
    {
        const TVector3<double> d = points[i] - p;
        return d % d;
    }

    void Build(unsigned int first, unsigned int last)
    {
        if (last - first < 2) return;
        TVector3<double> least = points[order[first]];
        TVector3<double> greatest = least;
        for (unsigned int i = first + 1; i < last; ++i) {
            for (unsigned int k = 0; k < 3; ++k) {
                least[k] = std::min(least[k], points[order[i]][k]);
                greatest[k] = std::max(greatest[k], points[order[i]][k]);
            }
        }
        unsigned int axis = 0;
        for (unsigned int k = 1; k < 3; ++k) {
            if (greatest[k] - least[k] > greatest[axis] - least[axis]) axis = k;
        }
        const unsigned int middle = first + (last - first) / 2;
        axes[middle] = static_cast<unsigned char>(axis);
        // Indices settle ties, so that the tree does not depend on the library's way of selecting.
        std::nth_element(&order[first], &order[middle], &order[last - 1] + 1, [&](unsigned int a, unsigned int b) {
            return points[a][axis] < points[b][axis] || (points[a][axis] == points[b][axis] && a < b);
        });
        Build(first, middle);
        Build(middle + 1, last);
    }

    void Descend(const TVector3<double>& p, unsigned int first, unsigned int last, Best* best) const
    {
        while (first < last) {
            const unsigned int middle = first + (last - first) / 2;
            const unsigned int here = order[middle];
            const double square = Square(p, here);
            // The lesser index of equally near points, so that the way through the tree has no say.
            if (square < best->square || (square == best->square && here < best->index)) *best = {here, square};
            if (last - first == 1) return;
            const unsigned int axis = axes[middle];
            const double beyond = p[axis] - points[here][axis];
            const bool isAbove = beyond > 0.0;
            if (isAbove)
                Descend(p, middle + 1, last, best);
            else
                Descend(p, first, middle, best);
            if (beyond * beyond > best->square) return;
            if (isAbove)
                last = middle;
            else
                first = middle + 1;
        }
    }
};

template <class T>
TVector3<double> Moved(const Alignment<T>& motion, const TVector3<double>& p)
{
    const auto& e = motion.rotation.elements;
    const auto row = [&](unsigned int k) { return e[k] * p.x + e[k + 1] * p.y + e[k + 2] * p.z; };
    return motion.translation + TVector3<double>(row(0), row(3), row(6));
}

} // namespace

template <class T>
NearestAlignment<T>::NearestAlignment(const TPointSet<T, TVector3>& measured, const TPointSet<T, TVector3>& cloud,
                                      unsigned int limit)
{
    const unsigned int count = measured.GetCount();
    if (count < 3 || cloud.GetCount() < 3) return;
    status = Status::NotFinite;
    const double reach = std::max(Reach(measured), Reach(cloud));
    if (!std::isfinite(reach)) return;
    // By a power of two to at most 1, so that the squares of distances neither overflow nor vanish.
    int exponent = 0;
    std::frexp(reach, &exponent);
    exponent = std::max(exponent, -1022);
    const Points from = Scaled(measured, std::ldexp(1.0, -exponent));
    const Points nominal = Scaled(cloud, std::ldexp(1.0, -exponent));

    const NearestSearch search(nominal);
    const std::unique_ptr<unsigned int[]> partners(new unsigned int[count]());
    Points to(from);
    Points moved(from);
    bool settled = false;
    while (!settled && iterations < limit) {
        settled = iterations > 0;
        ++iterations;
        for (unsigned int i = 0; i < count; ++i) {
            const unsigned int partner = search.Find(moved[i], partners[i]);
            settled = settled && partner == partners[i];
            partners[i] = partner;
            to[i] = nominal[partner];
        }
        if (settled) break;
        const Alignment<double> motion(from, to);
        status = motion.status;
        if (status != Status::Done) return;
        for (unsigned int i = 0; i < count; ++i) moved[i] = Moved(motion, from[i]);
        const auto length = [&](double x) { return static_cast<T>(std::ldexp(x, exponent)); };
        const TVector3<T> move(length(motion.translation.x), length(motion.translation.y),
                               length(motion.translation.z));
        if (!std::isfinite(move.x) || !std::isfinite(move.y) || !std::isfinite(move.z) ||
            !std::isfinite(length(motion.largest)))
        {
            status = Status::Degenerate;
            return;
        }
        for (unsigned int k = 0; k < 9; ++k) rotation.elements[k] = static_cast<T>(motion.rotation.elements[k]);
        translation = move;
        rms = length(motion.rms);
        largest = length(motion.largest);
    }
    status = settled ? Status::Done : Status::NotConverged;
}

template class NearestAlignment<float>;
template class NearestAlignment<double>;

} // namespace Halmont::Orrin::CorvexMaths::Robust

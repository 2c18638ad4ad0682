#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

/// The plane z = a x + b y + c that keeps the greatest distance along z from points least.
namespace Halmont::Orrin::CorvexMaths::Robust::Kernels
{

/// A linear program in three unknowns, solved by exchange of its reference of four points (E. Stiefel, 1959): the error
/// of the best plane of all points is that of the four points whose own best plane is worst. Each exchange takes in the
/// two points that stand out most and keeps the worst four of the six, so that the error grows until nothing stands
/// out.
class ChebyshevPlane
{
public:
    /// Coordinates of the points, to be filled.
    std::unique_ptr<double[]> x;
    std::unique_ptr<double[]> y;
    std::unique_ptr<double[]> z;
    /// The slopes of the plane.
    double a = 0.0;
    double b = 0.0;

    explicit ChebyshevPlane(unsigned int pointCount)
        : x(new double[pointCount]), y(new double[pointCount]), z(new double[pointCount]), count(pointCount)
    {}

    /// Finds the plane; false where the points lie on a line in x and y, as far as rounding lets that be seen.
    bool Solve()
    {
        unsigned int chosen[6];
        unsigned int size = Begin(chosen);
        if (size < 3) return false;
        double error = -1.0;
        for (unsigned int pass = 0; pass < 1000; ++pass) {
            Reference best;
            if (!Worst(chosen, size, &best)) return error >= 0.0;
            // Rounding alone keeps the error from growing.
            if (!(best.error > error)) return true;
            error = best.error;
            a = best.a;
            b = best.b;
            size = best.size;
            std::copy(best.points, best.points + size, chosen);

            const auto [least, greatest] = Range();
            const double spread = Rest(greatest) - Rest(least);
            if (!(spread > 2.0 * error)) return true;
            for (const unsigned int point : {least, greatest}) {
                if (std::find(chosen, chosen + size, point) == chosen + size) chosen[size++] = point;
            }
        }
        return true;
    }

private:
    struct Reference
    {
        double error = -1.0;
        double a = 0.0;
        double b = 0.0;
        unsigned int points[4];
        unsigned int size = 0;
    };
    const unsigned int count;

    double Rest(unsigned int i) const { return z[i] - a * x[i] - b * y[i]; }

    std::pair<unsigned int, unsigned int> Range() const
    {
        unsigned int least = 0;
        unsigned int greatest = 0;
        for (unsigned int i = 1; i < count; ++i) {
            if (Rest(i) < Rest(least)) least = i;
            if (Rest(i) > Rest(greatest)) greatest = i;
        }
        return {least, greatest};
    }

    /// Twice the signed area of three points in x and y.
    double Area(unsigned int i, unsigned int j, unsigned int k) const
    {
        return (x[j] - x[i]) * (y[k] - y[i]) - (x[k] - x[i]) * (y[j] - y[i]);
    }

    /// A wide triangle to begin with: the point furthest from the first, the one furthest from that, and the one
    /// furthest from their line.
    unsigned int Begin(unsigned int* chosen) const
    {
        const auto furthest = [&](auto measure) {
            unsigned int best = 0;
            for (unsigned int i = 1; i < count; ++i) {
                if (measure(i) > measure(best)) best = i;
            }
            return best;
        };
        const auto from = [&](unsigned int j) {
            return [this, j](unsigned int i) { return (x[i] - x[j]) * (x[i] - x[j]) + (y[i] - y[j]) * (y[i] - y[j]); };
        };
        chosen[0] = furthest(from(0));
        chosen[1] = furthest(from(chosen[0]));
        const double length = from(chosen[0])(chosen[1]);
        const auto height = [&](unsigned int i) { return std::fabs(Area(chosen[0], chosen[1], i)); };
        chosen[2] = furthest(height);
        return height(chosen[2]) > 0x1p-50 * length ? 3 : 2;
    }

    /// Of all fours of the points chosen, the one whose best plane is worst; of three points their plane.
    bool Worst(const unsigned int* chosen, unsigned int size, Reference* best) const
    {
        if (size == 3) {
            best->error = 0.0;
            best->size = 3;
            std::copy(chosen, chosen + 3, best->points);
            return Through(chosen, z[chosen[0]], z[chosen[1]], z[chosen[2]], best);
        }
        for (unsigned int mask = 0; mask < 1u << size; ++mask) {
            unsigned int four[4];
            unsigned int taken = 0;
            for (unsigned int i = 0; i < size; ++i) {
                if ((mask >> i & 1) == 0) continue;
                if (taken < 4) four[taken] = chosen[i];
                ++taken;
            }
            if (taken != 4) continue;
            Reference reference;
            if (BestOfFour(four, &reference) && reference.error > best->error) *best = reference;
        }
        return best->size == 4;
    }

    /// The best plane of four points: with l the weights for which the sums of l, l x and l y are 0, the distances are
    /// +-h with the signs of l, where h = sum of l z / sum of |l|.
    bool BestOfFour(const unsigned int (&four)[4], Reference* reference) const
    {
        double weights[4];
        double sum = 0.0;
        double height = 0.0;
        unsigned int heaviest = 0;
        for (unsigned int i = 0; i < 4; ++i) {
            const double area = Area(four[(i + 1) % 4], four[(i + 2) % 4], four[(i + 3) % 4]);
            weights[i] = i % 2 == 0 ? area : -area;
            sum += std::fabs(weights[i]);
            if (std::fabs(weights[i]) > std::fabs(weights[heaviest])) heaviest = i;
        }
        if (!(sum > 0.0)) return false;
        // Differences, so that a great common height costs no digits.
        for (unsigned int i = 0; i < 4; ++i) height += weights[i] * (z[four[i]] - z[four[0]]);
        height /= sum;
        // Each weight is the area of the other three points: those beside the heaviest determine the plane best.
        unsigned int three[3];
        double level[3];
        for (unsigned int k = 0; k < 3; ++k) {
            const unsigned int i = (heaviest + 1 + k) % 4;
            three[k] = four[i];
            level[k] = z[four[i]] - (weights[i] < 0.0 ? -height : height);
        }
        reference->error = std::fabs(height);
        reference->size = 4;
        std::copy(four, four + 4, reference->points);
        return Through(three, level[0], level[1], level[2], reference);
    }

    /// The slopes of the plane through three points at given heights.
    bool Through(const unsigned int* three, double z0, double z1, double z2, Reference* reference) const
    {
        const double area = Area(three[0], three[1], three[2]);
        const double x1 = x[three[1]] - x[three[0]];
        const double y1 = y[three[1]] - y[three[0]];
        const double x2 = x[three[2]] - x[three[0]];
        const double y2 = y[three[2]] - y[three[0]];
        reference->a = ((z1 - z0) * y2 - (z2 - z0) * y1) / area;
        reference->b = ((z2 - z0) * x1 - (z1 - z0) * x2) / area;
        return std::isfinite(reference->a) && std::isfinite(reference->b);
    }
};

} // namespace Halmont::Orrin::CorvexMaths::Robust::Kernels

// A force sensor is calibrated with known weights. Which polynomial of degree 2 gives its voltage, in the sense of
// least squares? There are more readings than coefficients, so that the equations have no exact solution: the singular
// value decomposition of their matrix gives the best one.

#include <CorvexMaths/matrices/TMatrixMxN.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace Halmont::Orrin::CorvexMaths;

int main()
{
    // Newtons and volts. The sensor is 0.5 + 0.04 f - 0.0002 f2, and each voltage is off by up to 0.006.
    const double forces[] = {0, 10, 20, 30, 40, 50, 60, 70};
    const double volts[] = {0.501, 0.876, 1.226, 1.517, 1.777, 2.006, 2.176, 2.321};
    const unsigned int readings = 8;
    const unsigned int unknowns = 3;

    // A row for each reading: 1, f, f2.
    TMatrixMxN<double> a(readings, unknowns);
    for (unsigned int i = 0; i < readings; ++i)
        for (unsigned int k = 0; k < unknowns; ++k) a[i][k] = std::pow(forces[i], k);

    TMatrixMxN<double> u, w, v;
    if (!a.SVD(&u, &w, &v, 30)) {
        std::fprintf(stderr, "the decomposition does not converge\n");
        return 1;
    }
    // The solution is v times 1/w times u-transposed times the voltages, one singular value at a time.
    double largest = 0;
    for (unsigned int j = 0; j < unknowns; ++j) largest = std::max(largest, w[j][j]);
    double c[unknowns] = {};
    for (unsigned int j = 0; j < unknowns; ++j) {
        // A value that is zero but for rounding: the readings leave a combination of coefficients open.
        if (w[j][j] <= 1e-12 * largest) {
            std::fprintf(stderr, "there are too few different forces\n");
            return 1;
        }
        double share = 0;
        for (unsigned int i = 0; i < readings; ++i) share += u[i][j] * volts[i];
        for (unsigned int k = 0; k < unknowns; ++k) c[k] += v[k][j] * (share / w[j][j]);
    }

    std::printf("voltage = %.4f %+.5f f %+.6f f2\n", c[0], c[1], c[2]);
    double squares = 0;
    for (unsigned int i = 0; i < readings; ++i) {
        const double deviation = volts[i] - (c[0] + c[1] * forces[i] + c[2] * forces[i] * forces[i]);
        std::printf("%3g N: read %.3f V, deviation %+.4f V\n", forces[i], volts[i], deviation);
        squares += deviation * deviation;
    }
    std::printf("deviation %.5f V, root mean square\n", std::sqrt(squares / readings));
}

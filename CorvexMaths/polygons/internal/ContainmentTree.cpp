#include <CorvexMaths/polygons/internal/ContainmentTree.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

// For a point (x, y) let each vertex have the sign of its height above y; a place is on the right of the point unless
// it is at x or short of it. A side that falls, from 0 or + to -, scores 1 where it passes on the right and -1
// elsewhere; one that rises, from 0 or - to +, scores -1 on the right and 1 elsewhere.
//
// 1. Runs. If 0 counted as +, the sides of a run would fall, less the times they rise, as often as its first vertex is
//    not below the level, less its last: 1, 0 or -1 time. A run right of the point scores that number, one left of it
//    the opposite, and one that lies not below the level or below it altogether nothing.
// 2. The level itself. That counts too many the sides that rise from - to 0, which score nothing, and leaves out those
//    that rise from 0 to +. So a vertex v on the level adds, where it is on the right, 1 if it is reached from below,
//    and -1 if it is left upwards; elsewhere the opposite. The side that leaves v passes the level at x of v, or
//    nowhere if the difference of its ends in x is not finite, which counts as on the right. These weights do not
//    depend on the point: sorted by y and x, with the sums of those before, they take two searches.
// 3. Bounds. A run is held between two parallel lines x = m y + c, along the way from its lowest vertex to its highest,
//    so that spikes side by side come apart however they lean. |m| is 2^16 at most. On any level between its ends an
//    exact side lies between the lines that its ends do.
// 4. Rounding. Let X and Y be the greatest coordinates in x and y, and epsilon / 2 the unit roundoff. A side from (x1,
//    y1) to (x2, y2) passes a level at |h1| / |h2 - h1| * (x2 - x1) + x1, where the h are rounded differences of y.
//    Four roundings reach the quotient, which is not above 1, one the difference of x, which is not above 2 X, one the
//    product and one the sum: in all 7 epsilon X. The lines' constants, and what a level finds on a line, are off by 2
//    epsilon (X + |m| Y) each. So runs are held wider by 16 epsilon (X + |m| Y). Below the normal numbers each of the
//    products, the margin's own among them, errs by half of the least number instead, in all by 5/2 of it: four are
//    added. Where coordinates are NaN or within a factor 2^20 of overflow a run has no bounds: its sides are scored one
//    by one.

/// The greatest coordinate that runs with bounds have.
template <class T>
constexpr T largest = std::numeric_limits<T>::max() / T(1 << 20);

/// The greatest size of a slope.
template <class T>
constexpr T steepest = T(1 << 16);

template <class T>
bool IsSound(T coordinate)
{
    return Numbers::Absolute(coordinate) <= largest<T>;
}

/// How many successive sides the shortest runs have.
constexpr unsigned int blockSize = 8;

/// How many sides a run of a level has.
std::size_t GetRunLength(unsigned int level)
{
    std::size_t length = blockSize;
    for (unsigned int k = 0; k < level; ++k) length *= BoxTree<float>::fanOut;
    return length;
}

/// Whether a key is not at x or short of it. Written so that NaN is not.
template <class T>
bool IsRight(T key, T x)
{
    return !(x >= key);
}

} // namespace

template <class T>
ContainmentTree<T>::ContainmentTree(const T* points, unsigned int stride, unsigned int vertexCount)
    : count(vertexCount),
      vertices(new TVector2<T>[std::size_t(vertexCount) + 1]),
      runs((vertexCount + blockSize - 1) / blockSize)
{
    T sizeX = T(0), sizeY = T(0);
    for (unsigned int i = 0; i <= count; ++i) {
        const T* const point = points + std::size_t(i < count ? i : 0) * stride;
        vertices[i] = {point[0], point[1]};
        if (IsSound(point[0])) sizeX = std::max(sizeX, Numbers::Absolute(point[0]));
        if (IsSound(point[1])) sizeY = std::max(sizeY, Numbers::Absolute(point[1]));
    }
    for (unsigned int level = 0; level <= runs.GetTop(); ++level)
        for (std::size_t box = 0; box < runs.GetSize(level); ++box) BoundRun(level, box, sizeX, sizeY);

    for (unsigned int i = 0; i < count; ++i) AddLevelWeights(i);
    OrderLevelWeights();
}

template <class T>
void ContainmentTree<T>::BoundRun(unsigned int level, std::size_t box, T sizeX, T sizeY)
{
    const std::size_t length = GetRunLength(level);
    const std::size_t first = box * length, last = std::min<std::size_t>(first + length, count);
    RunGroup& runGroup = runs.GetMore(level, box / BoxTree<T>::fanOut);
    const std::size_t place = box % BoxTree<T>::fanOut;
    runGroup.startY[place] = vertices[first].y;
    runGroup.endY[place] = vertices[last].y;

    bool isSound = true;
    std::size_t lowest = first, highest = first;
    for (std::size_t i = first; i <= last; ++i) {
        isSound = isSound && IsSound(vertices[i].x) && IsSound(vertices[i].y);
        if (vertices[i].y < vertices[lowest].y) lowest = i;
        if (vertices[i].y > vertices[highest].y) highest = i;
    }
    if (!isSound) {
        runs.SetBox(level, box, PlaneBox<T>::Unbounded());
        return;
    }
    const T lowY = vertices[lowest].y, highY = vertices[highest].y;
    const T lean = (vertices[highest].x - vertices[lowest].x) / (highY - lowY);
    // NaN, for a level run, has no lean.
    const T slope = lean > steepest<T> ? steepest<T> : lean < -steepest<T> ? -steepest<T> : lean == lean ? lean : T(0);
    T least = std::numeric_limits<T>::infinity(), greatest = -least;
    for (std::size_t i = first; i <= last; ++i) {
        const T constant = vertices[i].x - slope * vertices[i].y;
        least = std::min(least, constant);
        greatest = std::max(greatest, constant);
    }
    const T margin = 16 * std::numeric_limits<T>::epsilon() * (sizeX + Numbers::Absolute(slope) * sizeY) +
                     4 * std::numeric_limits<T>::denorm_min();
    runs.SetBox(level, box, {least - margin, greatest + margin, lowY, highY});
    runGroup.slope[place] = slope;
}

template <class T>
void ContainmentTree<T>::AddLevelWeights(unsigned int vertex)
{
    const T x = vertices[vertex].x, y = vertices[vertex].y;
    // Differences of infinite heights are not numbers, so that such a vertex is on no level.
    if (!std::isfinite(y)) return;
    const bool isReachedFromBelow = vertices[vertex > 0 ? vertex - 1 : count - 1].y < y;
    const bool isLeftUpwards = vertices[vertex + 1].y > y;
    const bool passesAtVertex = std::isfinite(vertices[vertex + 1].x - x);
    // A vertex that the outline rises through is of no weight.
    if (isReachedFromBelow && isLeftUpwards && passesAtVertex) return;
    if (isReachedFromBelow) levels.push_back({y, x, 1, 0});
    if (isLeftUpwards) levels.push_back({y, passesAtVertex ? x : std::numeric_limits<T>::quiet_NaN(), -1, 0});
}

template <class T>
void ContainmentTree<T>::OrderLevelWeights()
{
    std::sort(levels.begin(), levels.end(), [](const LevelWeight& a, const LevelWeight& b) {
        if (a.y != b.y) return a.y < b.y;
        // NaN goes behind the numbers.
        return a.key < b.key || (std::isnan(b.key) && !std::isnan(a.key));
    });
    while (filterLength * 4 < levels.size()) filterLength *= 2;
    levelFilter = std::make_unique<std::uint64_t[]>(filterLength);
    int sum = 0;
    for (LevelWeight& level : levels) {
        level.before = sum;
        sum += level.weight;
        const LevelMark mark(level.y, filterLength);
        levelFilter[mark.word] |= mark.bits;
    }
    levels.push_back({std::numeric_limits<T>::infinity(), T(0), 0, sum});
}

template <class T>
ContainmentTree<T>::LevelMark::LevelMark(T y, std::uint64_t filterLength)
{
    // Zeros of both signs are one level.
    const double level = static_cast<double>(y) + 0.0;
    std::uint64_t hash;
    std::memcpy(&hash, &level, sizeof(hash));
    // Round numbers differ in their first bits alone, which the product hands on to higher ones only.
    hash = (hash ^ hash >> 32) * 0x9E3779B97F4A7C15u;
    word = static_cast<std::size_t>((hash ^ hash >> 32) & (filterLength - 1));
    const std::uint64_t one = 1;
    bits = one << (hash >> 58) | one << (hash >> 52 & 63) | one << (hash >> 46 & 63);
}

template <class T>
int ContainmentTree<T>::GetScore(T x, T y) const
{
    using Lane = BaselineLanes<T>;
    using Mask = BaselineMask<T>;
    // The word of the filter comes from memory while the runs are passed over.
    const LevelMark mark(y, filterLength);
    __builtin_prefetch(&levelFilter[mark.word]);
    Mask sums = {};
    int score = 0;
    runs.Traverse(
        runs.GetTop(), 0,
        [&](unsigned int level, std::size_t group) {
            // The runs that the level passes through; those of them to the right or left are scored by their ends, and
            // the others entered. A comparison that holds is -1.
            unsigned int entered = 0;
            const auto& bounds = runs.GetGroup(level, group);
            for (unsigned int from = 0; from < BoxTree<T>::fanOut; from += baselineCount<T>) {
                const Mask passes = (LoadLanes(bounds.lowY + from) < y) & (LoadLanes(bounds.highY + from) >= y);
                if (!AnyLane(passes)) continue;
                const Lane place = LoadLanes(bounds.slope + from) * y;
                const Mask isRight = passes & (place + LoadLanes(bounds.lowX + from) > x);
                const Mask isLeft = passes & (place + LoadLanes(bounds.highX + from) < x);
                const Mask scores = (LoadLanes(bounds.endY + from) >= y) - (LoadLanes(bounds.startY + from) >= y);
                sums += (scores & isRight) - (scores & isLeft);
                entered |= PackMask<T>(passes & ~(isRight | isLeft)) << from;
            }
            return entered;
        },
        [&](unsigned int from, unsigned int to) {
            score += ScoreSides(from * blockSize, std::min(to * blockSize, count), x, y);
            return true;
        });
    for (unsigned int k = 0; k < baselineCount<T>; ++k) score += static_cast<int>(sums[k]);
    const bool isOnLevel = (levelFilter[mark.word] & mark.bits) == mark.bits;
    return isOnLevel ? score + ScoreLevel(x, y) : score;
}

template <class T>
int ContainmentTree<T>::ScoreSides(unsigned int first, unsigned int end, T x, T y) const
{
    int score = 0;
    T toHeight = vertices[first].y - y;
    for (unsigned int i = first; i < end; ++i) {
        const T fromHeight = toHeight;
        toHeight = vertices[i + 1].y - y;
        const bool falls = fromHeight >= T(0) && toHeight < T(0);
        const bool rises = fromHeight < T(0) && toHeight >= T(0);
        if (!falls && !rises) continue;
        const T rise = toHeight - fromHeight;
        const T place =
            (Numbers::Absolute(fromHeight) / Numbers::Absolute(rise)) * (vertices[i + 1].x - vertices[i].x) +
            vertices[i].x;
        if (falls)
            score += place >= x ? 1 : -1;
        else
            score += IsRight(toHeight == T(0) ? vertices[i + 1].x : place, x) ? -1 : 1;
    }
    return score;
}

template <class T>
int ContainmentTree<T>::ScoreLevel(T x, T y) const
{
    const auto end = levels.end() - 1;
    const auto first = std::partition_point(levels.begin(), end, [y](const LevelWeight& a) { return a.y < y; });
    const auto last = std::partition_point(first, end, [y](const LevelWeight& a) { return a.y == y; });
    const auto right = std::partition_point(first, last, [x](const LevelWeight& a) { return !IsRight(a.key, x); });
    return last->before + first->before - 2 * right->before;
}

template class ContainmentTree<float>;
template class ContainmentTree<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

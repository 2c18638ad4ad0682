#include <CorvexMaths/polygons/internal/SidePairSearch.h>

#include <algorithm>
#include <limits>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

// Let A and B be sides, a and b their starts, u and w the differences of their ends; M the greatest coordinate, epsilon
// / 2 the unit roundoff, t the common tolerance. With M <= 1e12, and no side shorter than t, as duplicates are gone,
// nothing overflows, and what underflow adds is nothing beside epsilon M.
//
// 0. A cross product of u with a difference v from a errs by 3/2 epsilon (|u.x v.y| + |u.y v.x|) at most before its
//    last rounding, which keeps the sign: by 3/2 epsilon |u| |v|. So where its sign is wrong, or 0 for another, the
//    point in question lies within d = 3/2 epsilon 2 sqrt(2) M < 4.3 epsilon M of A's line.
// 1. An end p of B touches A. Then p.x is in the range of A, unless that is upright, and p is off A's line in y by
//    t / |u.x| and 6.2 epsilon M at most, as |v.x| <= |u.x|. If A is upright, p.y is in its range and p.x off by
//    t / |u.y|. A's box is wider by as much, so that the boxes of both meet.
// 2. Each side parts the ends of the other. If all four signs are right, the sides meet, and so do their boxes. Else
//    some point q of B is within d of A's line, and some point p of A within d of B's: where the lines meet at an angle
//    f, |p - q| sin f <= 2 d. Boxes are wider than their sides by m = 1024 epsilon M. So if they do not meet, |p - q|
//    is above 2 m, and f below 1 / 238; and A's line passes within d of B: sides on one line, or nearly, that rounding
//    alone lets cross, however far apart they are.
// 3. That line passes through any box around that of B: with c its centre and h its half extents, |u x (c - a)| is
//    below |u.x| h.y + |u.y| h.x by (m - d) (|u.x| + |u.y|) at least, of which rounding takes a fiftieth. Boxes are
//    clipped at 4 M for this; all sides lie within M.
//
// A direction goes by its place along a diamond, from 0 to 2 for half a turn, which moves by the angle at most.

/// How many successive sides share a box.
constexpr unsigned int blockSize = 8;

/// As many sides are tested one by one in less time than a tree of them is made.
constexpr unsigned int fewSides = 18;

constexpr unsigned int sectorCount = 64;
constexpr std::uint64_t allSectors = ~std::uint64_t(0);

/// The place of a side's direction, either way round.
template <class T>
T GetPlace(const TVector2<T>& along)
{
    const T x = Numbers::Absolute(along.x), y = Numbers::Absolute(along.y);
    const bool rises = (along.x < T(0)) == (along.y < T(0));
    return rises ? y / (x + y) : T(2) - y / (x + y);
}

template <class T>
std::uint64_t GetSector(T place)
{
    constexpr T sectorsPerUnit = T(sectorCount) / 2;
    return std::uint64_t(1) << (static_cast<unsigned int>((place + 2) * sectorsPerUnit) % sectorCount);
}

/// Whether a line passes through a box of a group.
template <class Group, class T>
bool PassesThrough(const TEdge2<T>& side, const TVector2<T>& along, const Group& boxes, unsigned int k)
{
    const T extentX = (boxes.highX[k] - boxes.lowX[k]) / 2, extentY = (boxes.highY[k] - boxes.lowY[k]) / 2;
    const T x = boxes.lowX[k] + extentX - side.Vertex[0].x, y = boxes.lowY[k] + extentY - side.Vertex[0].y;
    return Numbers::Absolute(along.x * y - along.y * x) <=
           Numbers::Absolute(along.x) * extentY + Numbers::Absolute(along.y) * extentX;
}

} // namespace

template <class T>
SidePairSearch<T>::SidePairSearch(const T* points, unsigned int stride, unsigned int vertexCount)
    : vertices(points), step(stride), sideCount(vertexCount - 1)
{
    if (sideCount <= fewSides) return;
    blocks.emplace((sideCount + blockSize - 1) / blockSize);
    directions.reset(new std::uint64_t[blocks->GetGroupCount() * BoxTree<T>::fanOut]());
    CoordinateSize<T> greatest;
    for (unsigned int i = 0; i < vertexCount; ++i) {
        greatest.Add(points[std::size_t(i) * stride]);
        greatest.Add(points[std::size_t(i) * stride + 1]);
    }
    size = greatest.Get();
    for (unsigned int block = 0; block < blocks->GetSize(0); ++block) MeasureBlock(block);
    blocks->RaiseAll();
    for (unsigned int level = 1; level <= blocks->GetTop(); ++level)
        for (std::size_t box = 0; box < blocks->GetSize(level); ++box) RaiseDirections(level, box);
}

template <class T>
TEdge2<T> SidePairSearch<T>::GetSide(unsigned int i) const
{
    const T* const start = vertices + std::size_t(i) * step;
    return TEdge2<T>(start[0], start[1], start[step], start[step + 1]);
}

template <class T>
PlaneBox<T> SidePairSearch<T>::MakeBox(const TEdge2<T>& side) const
{
    if (!(size < std::numeric_limits<T>::infinity())) return PlaneBox<T>::Unbounded();
    const TVector2<T> along = side.Vertex[1] - side.Vertex[0];
    const T margin = 1024 * std::numeric_limits<T>::epsilon() * size;
    PlaneBox<T> box =
        PlaneBox<T>::Around(side.Vertex[0].x, side.Vertex[0].y, side.Vertex[1].x, side.Vertex[1].y, margin);
    if (along.x != T(0)) {
        const T reach = Numbers::commonTolerance<T> / Numbers::Absolute(along.x);
        box.lowY = std::max(box.lowY - reach, -4 * size);
        box.highY = std::min(box.highY + reach, 4 * size);
    } else {
        const T reach = Numbers::commonTolerance<T> / Numbers::Absolute(along.y);
        box.lowX = std::max(box.lowX - reach, -4 * size);
        box.highX = std::min(box.highX + reach, 4 * size);
    }
    return box;
}

template <class T>
void SidePairSearch<T>::MeasureBlock(unsigned int block)
{
    PlaneBox<T> box;
    std::uint64_t sectors = 0;
    const unsigned int end = std::min((block + 1) * blockSize, sideCount);
    for (unsigned int i = block * blockSize; i < end; ++i) {
        const TEdge2<T> side = GetSide(i);
        box.Join(MakeBox(side));
        const T place = GetPlace(side.Vertex[1] - side.Vertex[0]);
        // Written so that NaN has all directions.
        sectors |= place >= T(0) ? GetSector(place) : allSectors;
    }
    blocks->SetLeaf(block, box);
    directions[block] = sectors;
}

template <class T>
void SidePairSearch<T>::RaiseDirections(unsigned int level, std::size_t below)
{
    constexpr unsigned int fanOut = BoxTree<T>::fanOut;
    std::uint64_t sectors = 0;
    for (unsigned int k = 0; k < fanOut; ++k) sectors |= directions[blocks->GetNumber(level - 1, below) * fanOut + k];
    directions[blocks->GetNumber(level, below / fanOut) * fanOut + below % fanOut] = sectors;
}

template <class T>
void SidePairSearch<T>::Update(unsigned int vertex)
{
    if (!blocks) return;
    const unsigned int first = (vertex > 0 ? vertex - 1 : 0) / blockSize;
    const unsigned int last = std::min(vertex, sideCount - 1) / blockSize;
    for (unsigned int block = first; block <= last; ++block) {
        MeasureBlock(block);
        blocks->Raise(block);
        std::size_t below = block / BoxTree<T>::fanOut;
        for (unsigned int level = 1; level <= blocks->GetTop(); ++level, below /= BoxTree<T>::fanOut)
            RaiseDirections(level, below);
    }
}

template <class T>
unsigned int SidePairSearch<T>::FindAmong(const TEdge2<T>& side, unsigned int first, unsigned int end) const
{
    constexpr T tolerance = Numbers::commonTolerance<T>;
    for (unsigned int j = first; j < end; ++j) {
        const TEdge2<T> other = GetSide(j);
        const bool sharesEnd = side.Vertex[0] == other.Vertex[0] || side.Vertex[0] == other.Vertex[1] ||
                               side.Vertex[1] == other.Vertex[0] || side.Vertex[1] == other.Vertex[1];
        if (!sharesEnd && side.Intersects(other, tolerance, tolerance)) return j;
    }
    return end;
}

template <class T>
unsigned int SidePairSearch<T>::FindNext(unsigned int i, unsigned int first) const
{
    if (first >= sideCount) return sideCount;
    const TEdge2<T> side = GetSide(i);
    if (!blocks) return FindAmong(side, first, sideCount);

    // Above the angle that sides may differ by, with its roundings, and below half a sector, so that no sector between
    // the two ends of the range is left out.
    constexpr T guard = T(1) / 128;
    const TVector2<T> along = side.Vertex[1] - side.Vertex[0];
    const PlaneBox<T> box = MakeBox(side);
    const T place = GetPlace(along);
    const std::uint64_t sectors = place >= T(0) ? GetSector(place - guard) | GetSector(place + guard) : allSectors;
    unsigned int found = sideCount;
    blocks->Traverse(
        blocks->GetTop(), first / blockSize,
        [&](unsigned int level, std::size_t group) {
            unsigned int bits = blocks->template FindMeeting<baselineBytes>(level, group, box);
            const std::uint64_t* const sectorsOf = &directions[blocks->GetNumber(level, group) * BoxTree<T>::fanOut];
            for (unsigned int k = 0; k < BoxTree<T>::fanOut; ++k)
                if ((bits >> k & 1) == 0 && (sectorsOf[k] & sectors) != 0 &&
                    PassesThrough(side, along, blocks->GetGroup(level, group), k))
                    bits |= 1u << k;
            return bits;
        },
        [&](unsigned int from, unsigned int to) {
            const unsigned int end = std::min(to * blockSize, sideCount);
            const unsigned int other = FindAmong(side, std::max(from * blockSize, first), end);
            if (other < end) found = other;
            return other == end;
        });
    return found;
}

template class SidePairSearch<float>;
template class SidePairSearch<double>;

} // namespace Halmont::Orrin::CorvexMaths::Kernels

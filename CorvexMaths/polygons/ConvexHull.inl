// The convex hull of polygons; included by TPolygon.cpp alone.

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// The direction of `vertex` from `pivot`, in radians from the x axis up to a full turn; 0 where they coincide.
template <class T>
T PolarAngle(const TVector2<T>& pivot, const TVector2<T>& vertex)
{
    const TVector2<T> difference = vertex - pivot;
    const T length = difference.GetLength();
    if (length == T(0)) return T(0);
    const T angle = Numbers::ArcCosine(Numbers::ClampCosine(difference.x / length));
    return difference.y < T(0) ? Numbers::fullTurn<T> - angle : angle;
}

/// Twice the signed area of the triangle a, b, c: positive where the way from a through b to c turns left.
template <class T>
T Turn(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    return (b - a).SignedArea(c - a);
}

/// Whether c lies strictly farther from a than b does.
template <class T>
bool IsFarther(const TVector2<T>& a, const TVector2<T>& b, const TVector2<T>& c)
{
    return c.DiffVectLenSquared(a) > b.DiffVectLenSquared(a);
}

} // namespace

template <class T, template <class> class V>
void TPolygon<T, V>::MakeConvexHull()
{
    if (this->count == 0) return;

    const bool savedKeepBox = this->keepBox;
    this->keepBox = false;
    const unsigned int pivotIndex = GetBottomLeft();
    const V<T> pivot = this->storage[pivotIndex];
    const TVector2<T> start = InPlane(pivot);

    // 1. The other vertices in polar order around the pivot.
    const unsigned int pairCount = this->count - 1;
    sortedList.Clear(false);
    sortedList.Expand(pairCount);
    unsigned int pair = 0;
    for (unsigned int i = 0; i < this->count; ++i) {
        if (i == pivotIndex) continue;
        const V<T>& vertex = this->storage[i];
        sortedList[pair++] = TPair<T, V<T>>(PolarAngle(start, InPlane(vertex)), vertex);
    }
    sortedList.Sort();

    // 2. The hull begins with the pivot and the first vertex elsewhere.
    this->Clear(false);
    this->Add(pivot);
    pair = 0;
    while (pair < pairCount && InPlane(sortedList[pair].second) == start) ++pair;
    if (pair < pairCount) this->Add(sortedList[pair++].second);

    // 3. Each further vertex is put on, which may undo some of those before it.
    for (; pair < pairCount; ++pair) AddHullVertex(sortedList[pair].second);

    // 4. The last vertex must turn left on the way back to the pivot, too.
    if (this->count >= 3) {
        const TVector2<T> last = InPlane(this->storage[this->count - 1]);
        const TVector2<T> beforeLast = InPlane(this->storage[this->count - 2]);
        if (last == start || !(Turn(beforeLast, last, start) > T(0))) --this->count;
    }
    this->keepBox = savedKeepBox;
}

template <class T, template <class> class V>
void TPolygon<T, V>::AddHullVertex(const V<T>& vertex)
{
    const TVector2<T> c = InPlane(vertex);
    if (c == InPlane(this->storage[this->count - 1])) return;

    // From the last side backwards: the first side that has the vertex to its left or on its line is where the hull
    // goes on.
    for (unsigned int k = this->count - 1; k >= 1; --k) {
        const TVector2<T> a = InPlane(this->storage[k - 1]);
        const TVector2<T> b = InPlane(this->storage[k]);
        const T turn = Turn(a, b, c);
        if (turn > T(0)) {
            if (k + 1 == this->count) {
                this->Add(vertex);
            } else {
                this->storage[k + 1] = vertex;
                this->count = k + 2;
            }
            return;
        }
        if (turn == T(0)) {
            if (IsFarther(a, b, c)) this->storage[k] = vertex;
            this->count = k + 1;
            return;
        }
        // A turn of NaN at the last side drops the vertex; further back it ends nothing.
        if (k + 1 == this->count && !(turn < T(0))) return;
    }
}

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// What the targets of the geometric classes share: points of the kinds on which geometry fails, edits of a set as the
/// list it is, and what holds of sets and their boxes.

#include "Input.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace CorvexFuzz
{

/// Whether two values are equal to the bit: the sign of a zero counts, and any NaN equals any other.
template <class T>
bool AreSame(T a, T b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof(T)) == 0;
}

/// The same for plain values that consist of scalars T alone, such as vectors, boxes and planes.
template <class T, class Value>
bool AreSameScalars(const Value& a, const Value& b)
{
    T left[sizeof(Value) / sizeof(T)], right[sizeof(Value) / sizeof(T)];
    std::memcpy(left, &a, sizeof(Value));
    std::memcpy(right, &b, sizeof(Value));
    for (std::size_t k = 0; k < sizeof(Value) / sizeof(T); ++k)
        if (!AreSame(left[k], right[k])) return false;
    return true;
}

/// The points of a list as they stand.
template <class T, template <class> class V>
std::vector<V<T>> Copy(const TList<V<T>>& points)
{
    std::vector<V<T>> copy;
    for (unsigned int i = 0; i < points.GetCount(); ++i) copy.push_back(points[i]);
    return copy;
}

template <class T, template <class> class V>
bool AreSamePoints(const std::vector<V<T>>& a, const std::vector<V<T>>& b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!AreSameScalars<T>(a[i], b[i])) return false;
    return true;
}

/// Whether the first points are some or all of the second, to the bit and in their order.
template <class T, template <class> class V>
bool AreInOrderAmong(const std::vector<V<T>>& some, const std::vector<V<T>>& all)
{
    std::size_t found = 0;
    for (std::size_t i = 0; i < all.size() && found < some.size(); ++i) found += AreSameScalars<T>(some[found], all[i]);
    return found == some.size();
}

/// Whether each of the first points is one of the second, to the bit.
template <class T, template <class> class V>
bool AreAmong(const std::vector<V<T>>& some, const std::vector<V<T>>& all)
{
    for (const V<T>& point : some)
        if (!AreInOrderAmong<T, V>({point}, all)) return false;
    return true;
}

template <class T, template <class> class V>
bool AreFinite(const std::vector<V<T>>& points)
{
    for (const V<T>& point : points)
        for (std::size_t k = 0; k < sizeof(V<T>) / sizeof(T); ++k)
            if (!std::isfinite(static_cast<const T*>(point)[k])) return false;
    return true;
}

/// A tolerance: the common one as a rule, else any scalar.
template <class T>
T DecodeTolerance(Input& input)
{
    return input.Flag() ? Numbers::commonTolerance<T> : input.Scalar<T>();
}

/// A fixed matrix of any elements.
template <class Matrix, class T>
Matrix DecodeMatrix(Input& input)
{
    T elements[sizeof(Matrix) / sizeof(T)];
    for (T& element : elements) element = input.Scalar<T>();
    return Matrix(elements);
}

/// At most so many points of one kind: on a coarse grid (ties, duplicates), on a finer one, along a line with small
/// steps off it, on a ring, with tolerances between them, or with NaN and infinities.
template <class T, template <class> class V>
std::vector<V<T>> DecodePoints(Input& input, unsigned int atMost)
{
    constexpr unsigned int components = sizeof(V<T>) / sizeof(T);
    const unsigned int kind = input.Below(6);
    const unsigned int count = input.Between(0, atMost);
    const auto grid = [&input] { return static_cast<T>(static_cast<int>(input.Byte()) - 128) / 8; };
    V<T> step;
    for (unsigned int k = 0; kind == 2 && k < components; ++k) step[k] = grid();

    std::vector<V<T>> points;
    for (unsigned int i = 0; i < count; ++i) {
        V<T> point;
        switch (kind) {
        case 0: {
            const unsigned int place = input.Byte();
            for (unsigned int k = 0; k < components; ++k) point[k] = static_cast<T>(place >> (2 * k) & 7);
            break;
        }
        case 1:
            for (unsigned int k = 0; k < components; ++k) point[k] = grid();
            break;
        case 2: {
            const unsigned int place = input.Byte();
            point = step * static_cast<T>(place / 8);
            point[1] += static_cast<T>(place % 4) * Numbers::commonTolerance<T>;
            break;
        }
        case 3: {
            const T angle = static_cast<T>(i) * Numbers::fullTurn<T> / static_cast<T>(count);
            const T radius = static_cast<T>(input.Byte() / 64 + 1);
            point[0] = radius * Numbers::Cosine(angle);
            point[1] = radius * Numbers::Sine(angle);
            break;
        }
        case 4:
            point = input.FiniteVector<V<T>, T>();
            break;
        default:
            point = input.AnyVector<V<T>, T>();
        }
        points.push_back(point);
    }
    return points;
}

/// Runs a family over both scalars and all vectors.
template <template <class, template <class> class> class State>
int RunOnPoints(const std::uint8_t* data, std::size_t size)
{
    return RunOneOf<State<float, TVector2>, State<float, TVector3>, State<float, TVector4>, State<double, TVector2>,
                    State<double, TVector3>, State<double, TVector4>>(data, size);
}

/// The largest number of points that the targets let a set have between operations.
constexpr unsigned int largestSet = 60;

/// The box around a set and its upkeep, opened for any class over it.
template <class T, template <class> class V>
struct Opened : TPointSet<T, V>
{
    using Set = TPointSet<T, V>;
    static bool& KeepBox(Set& set) { return set.*&Opened::keepBox; }
    static TBox<T>& Box(Set& set) { return set.*&Opened::boundingBox; }
};

/// Requires the box to be that of the points one by one, and to hold all of them that are numbers.
template <class T, template <class> class V>
void RequireExactBox(const TPointSet<T, V>& set)
{
    const TBox<T>& box = set.GetBoundingBox();
    TBox<T> plain(box.limit);
    for (unsigned int i = 0; i < set.GetCount(); ++i) plain.Extend(static_cast<TVector3<T>>(set[i]));
    Require(AreSameScalars<T>(plain, box));
    for (unsigned int i = 0; i < set.GetCount(); ++i) {
        const TVector3<T> point = static_cast<TVector3<T>>(set[i]);
        if (point == point) Require(box.IsWithin(point, T(0)));
    }
}

/// Requires a copy, by construction from a set, to have its points and an exact box.
template <class T, template <class> class V>
void RequireCopy(const TPointSet<T, V>& copy, const TPointSet<T, V>& source)
{
    Require(AreSamePoints<T, V>(Copy<T, V>(copy), Copy<T, V>(source)));
    RequireExactBox(copy);
}

/// Keeps a set within the size that the targets allow.
template <class T, template <class> class V>
void Bound(TPointSet<T, V>& set)
{
    if (set.GetCount() > largestSet) set.RemoveFromEnd(set.GetCount() - largestSet);
}

/// Edits a set by what it inherits from the list. These change the points with and without hooks, so that the box, and
/// whatever else a class derives from its points, can be stale afterwards.
template <class T, template <class> class V>
void EditList(TPointSet<T, V>& set, Input& input)
{
    const unsigned int count = set.GetCount();
    const unsigned int kind = input.Below(24);
    const auto point = [&] { return count > 0 && input.Flag() ? set[input.Below(count)] : input.AnyVector<V<T>, T>(); };
    const auto index = [&] { return input.Below(count); };
    switch (kind) {
    case 0:
        set.Add(point());
        break;
    case 1: {
        const V<T> added = point();
        set.Add(&added);
        break;
    }
    case 2:
        // An element of its own.
        if (count > 0) set.Add(set[index()]);
        break;
    case 3:
        set.AddUnique(point());
        break;
    case 4:
        set.Insert(point(), input.Between(0, count));
        break;
    case 5: {
        std::vector<V<T>> added = DecodePoints<T, V>(input, 20);
        set.InsertRange(added.data(), static_cast<unsigned int>(added.size()), input.Between(0, count));
        break;
    }
    case 6: {
        const std::vector<V<T>> added = DecodePoints<T, V>(input, 20);
        set.AddRange(added.data(), static_cast<unsigned int>(added.size()));
        break;
    }
    case 7:
        // A range of its own.
        set.AddRange(set);
        break;
    case 8:
        if (count > 0) set.RemoveAt(index(), true);
        break;
    case 9:
        if (count > 0) set.RemoveAt(index(), false);
        break;
    case 10:
        set.Remove(point(), input.Flag());
        break;
    case 11:
        if (count > 0) set.Remove(&set[index()], input.Flag());
        break;
    case 12:
        set.RemoveFromEnd(input.Between(0, count + 1));
        break;
    case 13:
        set.RemoveFromFront(input.Between(0, count + 1));
        break;
    case 14:
        set.Clear(input.Flag());
        break;
    case 15:
        set.Grow(input.Below(20));
        break;
    case 16:
        set.Expand(input.Below(largestSet));
        break;
    case 17:
        set.Contract();
        break;
    case 18:
        set.Reverse();
        break;
    case 19:
        set.Sort();
        break;
    case 20:
        set.SortDescending();
        break;
    case 21:
        set.SetGrowSize(input.Byte());
        set.SetUseExponentialGrowth(input.Flag());
        break;
    case 22:
        if (count > 0) set[index()] = input.AnyVector<V<T>, T>();
        break;
    default: {
        const V<T> sought = point();
        const int found = set.Search(sought);
        Require(found < 0 || set[static_cast<unsigned int>(found)] == sought);
    }
    }
    Bound(set);
}

} // namespace CorvexFuzz

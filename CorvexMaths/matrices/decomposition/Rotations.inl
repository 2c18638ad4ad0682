#pragma once

/// Plane rotations of columns, recorded and applied in runs.
///
/// The iteration finds its rotations without looking at U or V, so they can wait. A run of them is applied to a few
/// rows at a time, transposed: a column of those rows is then contiguous, and the rows lie side by side in registers.
/// Each row meets every rotation in the order of recording, even one with c = 1 and s = 0, which is not a plain copy
/// for infinities, NaNs and zeros of either sign.

#include <CorvexMaths/matrices/decomposition/Rows.inl>

#include <cstddef>

namespace Halmont::Orrin::CorvexMaths::Kernels
{

namespace
{

/// The first column becomes first * c + second * s, the second becomes second * c - first * s. A rotation of a column
/// with itself stands for the change of its sign.
template <class T>
struct Rotation
{
    T c;
    T s;
    unsigned int first;
    unsigned int second;
};

/// The most columns a run of rotations may span.
constexpr unsigned int longestSpan = 512;

/// One column of a strip of rows, in registers.
template <class T, unsigned int Bytes, unsigned int vectorCount>
struct Strip
{
    using Lane = typename Lanes<T, Bytes>::Type;
    using InMemory = AnyAddress<Lane>;
    static constexpr unsigned int lanes = Bytes / sizeof(T);
    static constexpr unsigned int count = vectorCount;
    Lane vectors[vectorCount];

    CORVEX_ALWAYS_INLINE void Read(const T* source)
    {
        for (unsigned int v = 0; v < vectorCount; ++v)
            vectors[v] = reinterpret_cast<const InMemory*>(source + v * lanes)->lane;
    }

    CORVEX_ALWAYS_INLINE void Write(T* target) const
    {
        for (unsigned int v = 0; v < vectorCount; ++v)
            reinterpret_cast<InMemory*>(target + v * lanes)->lane = vectors[v];
    }

    CORVEX_ALWAYS_INLINE void Multiply(T factor)
    {
        for (unsigned int v = 0; v < vectorCount; ++v) vectors[v] *= factor;
    }

    CORVEX_ALWAYS_INLINE void AddTimes(const Strip& x, T factor)
    {
        for (unsigned int v = 0; v < vectorCount; ++v) vectors[v] += x.vectors[v] * factor;
    }
};

/// Applies rotations to a strip of rows whose columns stand `stride` apart, that of `column` at `start`. The second
/// column of one rotation is mostly the first of the next and stays in registers.
template <class Column, class T>
CORVEX_ALWAYS_INLINE void ApplyRotations(const Rotation<T>* rotations, unsigned int count, T* start,
                                         unsigned int column, std::size_t stride)
{
    if (count == 0) return;
    unsigned int current = rotations[0].first;
    T* place = start + (current - column) * stride;
    Column carried, other, turned;
    carried.Read(place);
    for (unsigned int t = 0; t < count; ++t) {
        const Rotation<T>& rotation = rotations[t];
        if (rotation.first != current) {
            carried.Write(place);
            current = rotation.first;
            place = start + (current - column) * stride;
            carried.Read(place);
        }
        if (rotation.second == current) {
            for (auto& vector : carried.vectors) vector = -vector;
            continue;
        }
        const T c = rotation.c;
        const T s = rotation.s;
        T* const next = start + (rotation.second - column) * stride;
        other.Read(next);
        for (unsigned int v = 0; v < Column::count; ++v) {
            turned.vectors[v] = carried.vectors[v] * c + other.vectors[v] * s;
            carried.vectors[v] = other.vectors[v] * c - carried.vectors[v] * s;
        }
        turned.Write(place);
        current = rotation.second;
        place = next;
    }
    carried.Write(place);
}

/// The columns that a run of rotations touches, of `vectorCount` vectors of rows. Small enough for the cache nearest to
/// the processor.
template <class T, unsigned int Bytes, unsigned int vectorCount, unsigned int columnCount>
class RotationPanel
{
public:
    using Vector = typename Lanes<T, Bytes>::Type;
    static constexpr unsigned int lanes = Lanes<T, Bytes>::count;
    static constexpr unsigned int rowCount = vectorCount * lanes;

    /// Copies `width` columns from `first` on of the `present` rows given to the panel, or back. The last row is
    /// repeated to fill the panel.
    template <bool take>
    CORVEX_ALWAYS_INLINE void Move(T* const* rows, unsigned int present, unsigned int first, unsigned int width)
    {
        for (unsigned int r = 0; r < rowCount; r += 4) {
            T* row[4];
            for (unsigned int k = 0; k < 4; ++k) row[k] = rows[r + k < present ? r + k : present - 1] + first;
            TransposeFourRows<take>(row, reinterpret_cast<T*>(&elements[0][0]) + r, rowCount, width);
        }
    }

    /// Applies rotations of columns counted from `column`.
    CORVEX_ALWAYS_INLINE void Apply(const Rotation<T>* rotations, unsigned int count, unsigned int column)
    {
        T* const start = reinterpret_cast<T*>(&elements[0][0]);
        ApplyRotations<Strip<T, Bytes, vectorCount>>(rotations, count, start, column, rowCount);
    }

private:
    Vector elements[columnCount][vectorCount];
};

/// Rotations to apply to the columns from `lowest` to `highest`, in their order.
template <class T>
struct RotationSpan
{
    const Rotation<T>* rotations;
    unsigned int count;
    unsigned int lowest;
    unsigned int highest;
};

/// Applies rotations to the rows from `from` on in panels; returns the first row not reached, where fewer than `fewest`
/// rows are left.
template <class Panel, class T>
CORVEX_ALWAYS_INLINE unsigned int RotateInPanels(const RotationSpan<T>& span, T* const* rows, unsigned int from,
                                                 unsigned int rowCount, unsigned int fewest)
{
    Panel panel;
    const unsigned int width = span.highest - span.lowest + 1;
    while (rowCount - from >= fewest) {
        const unsigned int left = rowCount - from;
        const unsigned int present = left < Panel::rowCount ? left : Panel::rowCount;
        panel.template Move<true>(rows + from, present, span.lowest, width);
        panel.Apply(span.rotations, span.count, span.lowest);
        panel.template Move<false>(rows + from, present, span.lowest, width);
        from += present;
    }
    return from;
}

/// Applies rotations to rows in registers of the given width: as many rows as fill panels of it, where the span is not
/// too long for them, and the others in panels of the baseline's width.
template <unsigned int Bytes, class T>
CORVEX_ALWAYS_INLINE void RotateBy(const RotationSpan<T>& span, T* const* rows, unsigned int rowCount)
{
    constexpr unsigned int longest = longestSpan * baselineBytes / Bytes;
    unsigned int from = 0;
    if constexpr (Bytes > baselineBytes) {
        using WidePanel = RotationPanel<T, Bytes, 4, longest>;
        if (span.highest - span.lowest < longest)
            from = RotateInPanels<WidePanel>(span, rows, 0, rowCount, WidePanel::rowCount);
    }
    using Panel = RotationPanel<T, baselineBytes, 4, longestSpan>;
    using SmallPanel = RotationPanel<T, baselineBytes, 2, longestSpan>;
    from = RotateInPanels<Panel>(span, rows, from, rowCount, SmallPanel::rowCount + 1);
    RotateInPanels<SmallPanel>(span, rows, from, rowCount, 1);
}

template <class T>
void RotateRows(const RotationSpan<T>& span, T* const* rows, unsigned int rowCount)
{
    ForThisProcessor([=](auto bytes) { RotateBy<bytes>(span, rows, rowCount); });
}

/// Rotations of the columns of a matrix, waiting to be applied to its rows. A matrix of few rows is rotated at once:
/// that takes less time than the processor spends waiting for the next rotation.
template <class T>
class RotationRun
{
public:
    RotationRun(T** matrixRows, unsigned int matrixRowCount) : rows(matrixRows), rowCount(matrixRowCount) {}

    /// Rotates two columns: at once where the matrix has few rows, later otherwise. A pair too far apart for a panel
    /// ends the run.
    void Add(unsigned int first, unsigned int second, T c, T s)
    {
        if (rowCount <= fewRows) return RotateAtOnce({c, s, first, second});
        if (second - first < longestSpan) return Record({c, s, first, second});
        Flush();
        RotateAtOnce({c, s, first, second});
    }

    /// Changes the sign of a column.
    void Negate(unsigned int column)
    {
        if (rowCount > fewRows) return Record({T(-1), T(0), column, column});
        for (unsigned int r = 0; r < rowCount; ++r) rows[r][column] = -rows[r][column];
    }

    /// Applies what is recorded and begins anew.
    void Flush()
    {
        if (count != 0) RotateRows(RotationSpan<T>{rotations, count, lowest, highest}, rows, rowCount);
        count = 0;
    }

private:
    void RotateAtOnce(const Rotation<T>& rotation)
    {
        for (unsigned int r = 0; r < rowCount; ++r) {
            const T p = rows[r][rotation.first];
            const T q = rows[r][rotation.second];
            rows[r][rotation.first] = p * rotation.c + q * rotation.s;
            rows[r][rotation.second] = q * rotation.c - p * rotation.s;
        }
    }

    void Record(const Rotation<T>& rotation)
    {
        unsigned int low = rotation.first < lowest ? rotation.first : lowest;
        unsigned int high = rotation.second > highest ? rotation.second : highest;
        if (count == capacity || high - low >= longestSpan) Flush();
        if (count == 0) {
            low = rotation.first;
            high = rotation.second;
        }
        lowest = low;
        highest = high;
        rotations[count++] = rotation;
    }

    static constexpr unsigned int fewRows = 8;
    static constexpr unsigned int capacity = 1024;

    T** rows;
    unsigned int rowCount;
    unsigned int count = 0;
    unsigned int lowest = 0;
    unsigned int highest = 0;
    Rotation<T> rotations[capacity];
};

} // namespace

} // namespace Halmont::Orrin::CorvexMaths::Kernels

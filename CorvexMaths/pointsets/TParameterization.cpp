#include <CorvexMaths/pointsets/TParameterization.h>

#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/pointsets/PointValues.inl>

#include <limits>
#include <utility>

namespace Halmont::Orrin::CorvexMaths
{

template <class T, template <class> class V>
TParameterization<T, V>::TParameterization(TParameterization&& other) noexcept
    : TPointSet<T, V>(std::move(other)),
      parameters(std::move(other.parameters)),
      length(std::exchange(other.length, T(0)))
{}

template <class T, template <class> class V>
TParameterization<T, V>::TParameterization(const TParameterization& other)
    : TPointSet<T, V>(other), parameters(other.parameters), length(other.length)
{}

template <class T, template <class> class V>
TParameterization<T, V>& TParameterization<T, V>::operator=(const TParameterization& other)
{
    TPointSet<T, V>::operator=(other);
    parameters = other.parameters;
    length = other.length;
    return *this;
}

template <class T, template <class> class V>
TParameterization<T, V>& TParameterization<T, V>::operator=(TParameterization&& other)
{
    if (this == &other) return *this;
    TPointSet<T, V>::operator=(static_cast<TPointSet<T, V>&&>(other)); // the rest of it follows
    parameters = std::move(other.parameters);
    length = std::exchange(other.length, T(0));
    return *this;
}

template <class T, template <class> class V>
TParameterization<T, V>::~TParameterization() = default;

template <class T, template <class> class V>
void TParameterization<T, V>::Parameterize()
{
    // Room first: if there is none, all stays as it was.
    const unsigned int before = parameters.GetCount();
    if (this->count > before) parameters.Grow(this->count - before);
    parameters.Clear(false);
    length = T(0);
    if (this->count == 0) return;

    // The lengths up to each point.
    parameters.Add(T(0));
    T running = T(0);
    for (unsigned int i = 1; i < this->count; ++i) {
        running += Distance(i - 1, i);
        parameters.Add(running);
    }
    length = running;

    // As shares of the whole.
    T* const positions = parameters.GetStream();
    for (unsigned int i = 1; i < this->count; ++i) positions[i] /= running;
    positions[this->count - 1] = T(1);
}

template <class T, template <class> class V>
V<T> TParameterization<T, V>::Evaluate(const T& position) const
{
    if (position < T(0) || position > T(1) || this->count < 2 || length == T(0)) {
        constexpr T notANumber = std::numeric_limits<T>::quiet_NaN();
        return ZeroVector<T, V>() * notANumber;
    }
    const Bracket segment = FindBracket(position);
    const V<T>& start = this->storage[segment.lower];
    if (segment.lower == segment.upper) return start;

    const T startPosition = parameters[segment.lower];
    const T t = (position - startPosition) / (parameters[segment.upper] - startPosition);
    return start + (this->storage[segment.upper] - start) * t;
}

template <class T, template <class> class V>
T TParameterization<T, V>::GetLength(T from, T to) const
{
    if (from == to || parameters.GetCount() < 2 || this->count < 2) return T(0);
    CORVEX_PRECONDITION("TParameterization::GetLength", from >= T(0) && from <= T(1) && to >= T(0) && to <= T(1), from,
                        to);
    if (from > to) {
        const T larger = from;
        from = to;
        to = larger;
    }
    const Bracket start = FindBracket(from);
    const Bracket end = FindBracket(to);
    if (start.lower == end.lower) return ShareOf({start.lower, end.upper}, from, to);

    // The rest of the first segment, the part of the last, and then the segments between.
    T sum = T(0);
    if (start.lower != start.upper) sum += ShareOf(start, from, parameters[start.upper]);
    if (end.lower != end.upper) sum += ShareOf(end, parameters[end.lower], to);
    for (unsigned int k = start.upper; k < end.lower; ++k) sum += Distance(k, k + 1);
    return sum;
}

template <class T, template <class> class V>
typename TParameterization<T, V>::Bracket TParameterization<T, V>::FindBracket(const T& position) const
{
    Bracket bracket;
    // A position outside leaves the bracket as it is.
    static_cast<void>(parameters.BinarySearch(position, &bracket.lower, &bracket.upper, false));
    // Parameters of points that have gone since stand for the last one.
    const unsigned int last = this->count - 1;
    if (bracket.lower > last) bracket.lower = last;
    if (bracket.upper > last) bracket.upper = last;
    return bracket;
}

template <class T, template <class> class V>
T TParameterization<T, V>::Distance(unsigned int from, unsigned int to) const
{
    return this->storage[to].DiffVectLen(this->storage[from]);
}

template <class T, template <class> class V>
T TParameterization<T, V>::ShareOf(const Bracket& segment, T from, T to) const
{
    return Distance(segment.lower, segment.upper) * (to - from) /
           (parameters[segment.upper] - parameters[segment.lower]);
}

CORVEX_INSTANTIATE_SETS(, TParameterization);

} // namespace Halmont::Orrin::CorvexMaths

namespace Halmont::Orrin::CorvexUtilities
{

CORVEX_INSTANTIATE_SET_POINTERS(, TList, TParameterization);

} // namespace Halmont::Orrin::CorvexUtilities

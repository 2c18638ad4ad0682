#include <CorvexMaths/exact/TSetGenerator.h>

#include <CorvexMaths/internal/Owners.h>

namespace Halmont::Orrin::CorvexMaths
{

namespace
{

/// A copy of a block of handlers with room for more; null for a block of none.
template <class Handler>
Handler* CopyHandlers(const Handler* handlers, unsigned int count, unsigned int room)
{
    if (count + room == 0) return nullptr;
    Handler* const copy = new Handler[count + room];
    for (unsigned int i = 0; i < count; ++i) copy[i] = handlers[i];
    return copy;
}

/// Adds a handler at the end of a block.
template <class Handler>
void AppendHandler(Handler*& handlers, unsigned int& count, const Handler& handler)
{
    Handler* const grown = CopyHandlers(handlers, count, 1);
    grown[count] = handler;
    delete[] handlers;
    handlers = grown;
    ++count;
}

/// Calls the handlers of a block in their order.
template <class Handler, class T>
void CallHandlers(const Handler* handlers, unsigned int count, T* set)
{
    for (unsigned int i = 0; i < count; ++i) handlers[i].call(handlers[i], set);
}

/// The width of the windows in which a permutation looks for its next value.
constexpr unsigned int windowWidth = 64;

/// Which values of the window from `first` stand among those of a set so far: bit i for first + i.
template <class T>
unsigned long long GetTaken(const T* set, T position, T first)
{
    unsigned long long taken = 0;
    for (T i = 0; i < position; ++i) {
        const T offset = static_cast<T>(set[i] - first); // outside the window for a smaller value, too: it wraps
        taken |= static_cast<unsigned long long>(offset < windowWidth) << (offset % windowWidth);
    }
    return taken;
}

} // namespace

template <class T>
TSetGenerator<T>& TSetGenerator<T>::operator=(const TSetGenerator& other)
{
    // Joined before anything is released: both may hold the same handlers already.
    Kernels::JoinOwners(other.owners);
    Release();
    combinationMethods = other.combinationMethods;
    combinationFunctions = other.combinationFunctions;
    combinationMethodCount = other.combinationMethodCount;
    combinationFunctionCount = other.combinationFunctionCount;
    permutationMethods = other.permutationMethods;
    permutationFunctions = other.permutationFunctions;
    permutationMethodCount = other.permutationMethodCount;
    permutationFunctionCount = other.permutationFunctionCount;
    owners = other.owners;
    return *this;
}

template <class T>
void TSetGenerator<T>::Release()
{
    if (!Kernels::LeaveOwners(owners)) return;
    delete[] permutationMethods;
    delete[] permutationFunctions;
    delete[] combinationMethods;
    delete[] combinationFunctions;
}

template <class T>
void TSetGenerator<T>::Own()
{
    if (owners != nullptr && *owners == 1) return;
    TSetGenerator own; // which releases what it has so far if memory runs out
    own.owners = new unsigned int(1);
    own.combinationMethods = CopyHandlers(combinationMethods, combinationMethodCount, 0);
    own.combinationFunctions = CopyHandlers(combinationFunctions, combinationFunctionCount, 0);
    own.combinationMethodCount = combinationMethodCount;
    own.combinationFunctionCount = combinationFunctionCount;
    own.permutationMethods = CopyHandlers(permutationMethods, permutationMethodCount, 0);
    own.permutationFunctions = CopyHandlers(permutationFunctions, permutationFunctionCount, 0);
    own.permutationMethodCount = permutationMethodCount;
    own.permutationFunctionCount = permutationFunctionCount;
    *this = own;
}

template <class T>
void TSetGenerator<T>::Append(MethodHandler*& handlers, unsigned int& count, const MethodHandler& handler)
{
    Own();
    AppendHandler(handlers, count, handler);
}

template <class T>
void TSetGenerator<T>::Append(FunctionHandler*& handlers, unsigned int& count, const FunctionHandler& handler)
{
    Own();
    AppendHandler(handlers, count, handler);
}

template <class T>
void TSetGenerator<T>::GenerateCombinations(T n, T k)
{
    if (k == 0 || k > n) return;
    T* const set = new T[k];
    Combinate(n, k, set, static_cast<T>(-1), 0);
    delete[] set; // Not if a handler throws: its exception may refer to the set.
}

template <class T>
void TSetGenerator<T>::GeneratePermutations(T n, T k)
{
    if (k == 0 || k > n) return;
    T* const set = new T[k];
    Permute(n, k, 0, set);
    delete[] set; // as above
}

template <class T>
void TSetGenerator<T>::Combinate(T n, T k, T* set, T previous, T position)
{
    // Candidates above the last leave too few values for the positions after this one.
    const T last = static_cast<T>(n - static_cast<T>(k - position));
    const T next = static_cast<T>(position + 1);
    for (T candidate = static_cast<T>(previous + 1); candidate <= last; ++candidate) {
        set[position] = candidate;
        if (next == k) {
            CallHandlers(combinationMethods, combinationMethodCount, set);
            CallHandlers(combinationFunctions, combinationFunctionCount, set);
        } else {
            Combinate(n, k, set, candidate, next);
        }
    }
}

template <class T>
void TSetGenerator<T>::Permute(T n, T k, T position, T* set)
{
    const T next = static_cast<T>(position + 1);
    for (T first = 0;; first = static_cast<T>(first + windowWidth)) {
        const T rest = static_cast<T>(n - first);
        unsigned long long ahead = rest < windowWidth ? (1ull << rest) - 1 : ~0ull;
        // What is taken is looked up for each value, as handlers may write to the set.
        while (const unsigned long long open = ahead & ~GetTaken(set, position, first)) {
            const int offset = __builtin_ctzll(open);
            ahead &= ~1ull << offset; // those above
            set[position] = static_cast<T>(first + static_cast<T>(offset));
            if (next == k) {
                CallHandlers(permutationMethods, permutationMethodCount, set);
                CallHandlers(permutationFunctions, permutationFunctionCount, set);
            } else {
                Permute(n, k, next, set);
            }
        }
        if (rest <= windowWidth) return;
    }
}

CORVEX_INSTANTIATE_SET_GENERATORS();

} // namespace Halmont::Orrin::CorvexMaths

#pragma once

/// TList: the one growable array of the library, and the base of the point sets.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Instantiate.h>
#include <CorvexMaths/Precondition.h>
#include <CorvexMaths/Ranges.h>
#include <CorvexMaths/RealPointer.h>
#include <CorvexMaths/containers/StableSort.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace Halmont::Orrin::CorvexUtilities
{

/// A growable array in one contiguous block that moves its elements as bytes and tells derived classes of each change
/// through five protected hooks.
///
/// As growth, ranges and shifting tails are single memory moves, in which an element's copy constructor and assignment
/// take no part, an element type may own no memory: neither `std::string` nor `std::vector` nor a smart pointer. A list
/// of pointers does not own what they point to.
///
/// Every slot of the block is default-constructed when the block is made, not when it comes into use. An element type
/// needs a default constructor and `==`; `<` and `>` as well for sorting and BinarySearch.
///
/// Preconditions, which debug builds check and release builds do not: an index is below the count and a position not
/// above it; a pointer is not null, unless it is to 0 elements; counts and capacities stay below 2^32. What cannot be
/// checked are pointers to valid memory and an element type that fits. A list has no locks.
///
/// What is thrown comes from the allocator or from a hook of a derived class, and leaves a list that can be used. A
/// failed allocation leaves it as it was; an assignment by copy says what it leaves. If a hook throws, an addition is
/// complete, and a removal has not taken place: every element is there, once. Hooks may not change the list.
///
/// A list is a contiguous range: range-based `for`, the algorithms of the standard library and `std::span` work on it,
/// on sets of points, polygons and splines too. What is written through an iterator, as through `operator[]`, fires no
/// hook.
///
/// A reference or pointer to one of the list's own elements may be given to Add, AddUnique, Insert and Remove, a range
/// of them to AddRange, but not to InsertRange. Whatever makes the block grow or shrink leaves pointers and references
/// into it dangling.
///
/// The hooks fire after an addition is complete, and before removed elements are overwritten, so that both can be read.
/// Grow, Expand, Contract, Reverse, the sorts and the destructor fire none; nor do moves and queries.
template <class T>
class CORVEX_API TList
{
    /// A braced list can only mean elements if none of them could be a size or a null pointer.
    template <class Element>
    using IfUnlikeSizes =
        std::enable_if_t<!std::is_convertible_v<int, Element> && !std::is_convertible_v<unsigned int, Element> &&
                         !std::is_convertible_v<std::nullptr_t, Element>>;
    template <class Range>
    using IfRange = CorvexMaths::IfRange<Range, T, TList<T>>;

public:
    using value_type = T;                   ///< The type of the elements.
    using size_type = unsigned int;         ///< The type of counts and indices.
    using difference_type = std::ptrdiff_t; ///< The type of the distance of two iterators.
    using reference = T&;                   ///< What an iterator of a list that is not const leads to.
    using const_reference = const T&;       ///< What an iterator of a const list leads to.
    using iterator = T*;                    ///< Iterators are pointers into the block.
    using const_iterator = const T*;        ///< Iterators are pointers into the block.

    /// An empty list without a block, of grow size 1000; exponential growth is off.
    TList() : TList(0u) {}

    /// An empty list; exponential growth is off. A capacity above 0 allocates the block now. A grow size of 0 is
    /// allowed here alone: each addition to a full list then reallocates by what it needs.
    explicit TList(unsigned int initialCapacity, unsigned int stepSize = 1000);

    /// A copy of the elements and the grow size. The capacity becomes the larger of the source's count and the grow
    /// size, or 0 for an empty source; exponential growth is off. Hooks of a derived class do not run: it has to bring
    /// its own data up to date.
    TList(const TList<T>& other);

    /// A copy of the elements of the list pointed to, which is not null, with a grow size of its own, 0 included. The
    /// capacity becomes the larger of the source's count and the grow size, or 0 for an empty source; exponential
    /// growth is off. Hooks of a derived class do not run. Only real pointers take part, so that two numbers are sizes.
    template <class P, class = CorvexMaths::IfRealPointer<P, const TList<T>*>>
    TList(P other, unsigned int stepSize) : TList(0u, stepSize)
    {
        CORVEX_PRECONDITION("TList::TList", other != nullptr, other);
        AddRangeInternal(other->GetStream(), other->GetCount());
    }

    /// A copy of n elements of an array, with a grow size of its own, 0 included. The array may be null for 0 elements.
    /// The capacity becomes the larger of n and the grow size, or 0 for an n of 0; exponential growth is off. Hooks of
    /// a derived class do not run.
    TList(const T* source, unsigned int n, unsigned int stepSize);

    /// A copy of the elements in braces, with the grow size 1000. Takes part only for element types to which no number
    /// converts: `TList<int>{0, 16}` is an empty list with a grow size, and its elements are given to AddRange.
    template <class Element = T, class = IfUnlikeSizes<Element>>
    TList(std::initializer_list<T> elements)
        : TList(elements.begin(), static_cast<unsigned int>(elements.size()), 1000u)
    {}

    /// A copy of the elements from one iterator up to another, with the grow size 1000. Numbers are no iterators.
    template <class Iterator, class = CorvexMaths::IfIterator<Iterator, T>>
    TList(Iterator first, Iterator last) : TList(0u)
    {
        useExponentialGrowth = true;
        if constexpr (std::is_base_of_v<std::forward_iterator_tag,
                                        typename std::iterator_traits<Iterator>::iterator_category>)
            Grow(static_cast<unsigned int>(std::distance(first, last)));
        for (; first != last; ++first) Add(static_cast<const T&>(*first));
        useExponentialGrowth = false;
    }

    /// A copy of the elements of a `std::vector`, a `std::span`, an array or another class with `data()` and `size()`,
    /// of exactly type T, with the grow size 1000.
    template <class Range, class = IfRange<Range>>
    explicit TList(const Range& range) : TList(std::data(range), CorvexMaths::CountOf(range), 1000u)
    {}

    /// Takes over the block of another list, which keeps its grow size and is left empty and without a block. The grow
    /// size becomes the other's, and so does the capacity, where a copy would have one of its own; exponential growth
    /// is off, as in a copy. No hook fires, not even where the other list is part of a derived object, whose own data
    /// stay as they are.
    TList(TList<T>&& other) noexcept;

    /// Frees the block; fires no hook.
    virtual ~TList() { delete[] storage; }

    /// Replaces the elements and the grow size by those of another list; the growth mode stays. Fires ElementsRemoved
    /// with the old elements (if a block exists), Cleared, and ElementsAdded with the new ones, for 0 elements too. The
    /// capacity ends equal to the count. A list assigned to itself ends empty.
    ///
    /// A hook that throws before the new elements are there leaves the old ones, and memory that runs out for them an
    /// empty list; the grow size is then the new one. What fails later leaves the new elements in a larger block.
    TList<T>& operator=(const TList<T>& other);

    /// Takes over the block and the grow size of another list, which is left empty and without a block; the growth mode
    /// of both stays. No hook fires, unless the two objects are of different classes, as where a list is moved into a
    /// set of points by a reference to its base: then the hooks of this one fire as in an assignment by copy, so that
    /// its own data follow. One of them that throws before the elements are there leaves both lists as they were;
    /// without hooks nothing throws. A list moved to itself stays as it is.
    TList<T>& operator=(TList<T>&& other);

    /// The element at an index, which is below the count. A const list does not guard its elements.
    T& operator[](unsigned int index) const
    {
        CORVEX_PRECONDITION("TList::operator[]", index < count, index, count);
        return storage[index];
    }
    /// The first slot of the block, the same as `*GetStream()`, also when the count is 0. There must be a block.
    T& GetFirst() const
    {
        CORVEX_PRECONDITION("TList::GetFirst", storage != nullptr, storage);
        return *storage;
    }
    /// The last element. On an empty list the result is the slot before the block, which must not be touched. There
    /// must be a block.
    T& GetLast() const
    {
        CORVEX_PRECONDITION("TList::GetLast", storage != nullptr, storage);
        return *(storage + count - 1);
    }
    /// The block, null while none exists. Valid until the list next grows, contracts, is assigned to or gives its block
    /// up.
    T* GetStream() const { return storage; }
    /// The number of elements.
    unsigned int GetCount() const { return count; }

    /// The range of the elements, contiguous: valid as long as the block is, empty where there is none.
    /// @{
    T* begin() { return storage; }
    T* end() { return storage + count; }
    T* data() { return storage; }
    const T* begin() const { return storage; }
    const T* end() const { return storage + count; }
    const T* data() const { return storage; }
    const T* cbegin() const { return storage; }
    const T* cend() const { return storage + count; }
    unsigned int size() const { return count; }
    [[nodiscard]] bool empty() const { return count == 0; }
    /// @}

    /// The least number of slots that a growth adds.
    unsigned int GetGrowSize() const { return growSize; }
    /// Sets the least number of slots that a growth adds. A step of 0 is ignored: the old one stays.
    void SetGrowSize(unsigned int stepSize);
    /// Chooses whether a growth at least doubles the capacity, which makes appending a constant cost on average. Off at
    /// first, and never copied from another list.
    void SetUseExponentialGrowth(bool useExponential) { useExponentialGrowth = useExponential; }

    /// Appends an element and fires ElementAdded with its slot. The value may be an element of this list. Costs a copy,
    /// and one of the whole list when the block is full.
    void Add(const T& value);
    /// Appends the pointee and fires ElementAdded with its slot. The pointer is not null; it may lead to an element of
    /// this list. Only real pointers take part, so that `Add(0)` adds a number.
    template <class P, class = CorvexMaths::IfRealPointer<P, const T*>>
    void Add(P element)
    {
        CORVEX_PRECONDITION("TList::Add", element != nullptr, element);
        Add(static_cast<const T&>(*element));
    }
    /// Appends an element unless one equals it by `==`, and then fires ElementAdded with its slot. There is no
    /// tolerance; a value holding a NaN equals nothing and is always added. Scans the list from the front.
    void AddUnique(const T& value);
    /// Appends the pointee unless an element equals it by `==`, and then fires ElementAdded with its slot. There is no
    /// tolerance; a value holding a NaN equals nothing and is always added. The pointer is not null. Scans the list
    /// from the front.
    template <class P, class = CorvexMaths::IfRealPointer<P, const T*>>
    void AddUnique(P element)
    {
        CORVEX_PRECONDITION("TList::AddUnique", element != nullptr, element);
        AddUnique(static_cast<const T&>(*element));
    }
    /// Appends n elements of an array and fires ElementsAdded with the first new slot and n, for 0 elements too. The
    /// array may lie in this list; for 0 elements it may be null.
    void AddRange(const T* source, unsigned int n)
    {
        CORVEX_PRECONDITION("TList::AddRange", source != nullptr || n == 0, source, n);
        AddRangeInternal(source, n);
    }
    /// Appends the elements of a list, which may be this one, and fires ElementsAdded with the first new slot and their
    /// number, for an empty list too.
    void AddRange(const TList<T>& other) { AddRangeInternal(other.storage, other.count); }
    /// Appends the elements in braces and fires ElementsAdded with the first new slot and their number, for 0 too.
    void AddRange(std::initializer_list<T> elements)
    {
        AddRangeInternal(elements.begin(), static_cast<unsigned int>(elements.size()));
    }
    /// Appends the elements of a `std::vector`, a `std::span`, an array or another class with `data()` and `size()`, of
    /// exactly type T, and fires ElementsAdded with the first new slot and their number, for 0 too. They may lie in
    /// this list.
    template <class Range, class = IfRange<Range>>
    void AddRange(const Range& range)
    {
        AddRangeInternal(std::data(range), CorvexMaths::CountOf(range));
    }
    /// Puts an element before the one at a position, or at the end for a position of the count; none may lie above
    /// that. The value may be an element of this list. Fires ElementAdded with its slot. Moves the elements behind.
    void Insert(const T& value, unsigned int position);
    /// Puts the pointee before the element at a position, or at the end for a position of the count; none may lie above
    /// that. The pointer is not null; it may lead to an element of this list. Fires ElementAdded with the new slot.
    /// Moves the elements behind.
    template <class P, class = CorvexMaths::IfRealPointer<P, const T*>>
    void Insert(P element, unsigned int position)
    {
        CORVEX_PRECONDITION("TList::Insert", element != nullptr, element);
        Insert(static_cast<const T&>(*element), position);
    }
    /// Puts n elements of an array before the element at a position, or at the end for a position of the count; none
    /// may lie above that. Fires ElementsAdded with the array given, not with the new slots, and n, for 0 elements too.
    /// The array is only read, which the hook should observe too. It may not lie in this list; for 0 elements it may be
    /// null. Moves the elements behind.
    void InsertRange(const T* source, unsigned int n, unsigned int position);
    /// Puts the elements of another list before the element at a position, or at the end for a position of the count;
    /// none may lie above that. Fires ElementsAdded with that list's block, not with the new slots, and its count, for
    /// an empty list too. The list may not be this one unless it is empty. Moves the elements behind.
    void InsertRange(const TList<T>& other, unsigned int position)
    {
        InsertRange(other.storage, other.count, position);
    }
    /// Puts the elements in braces before the element at a position, or at the end for a position of the count; none
    /// may lie above that. Fires ElementsAdded with what is in the braces, not with the new slots, and its number, for
    /// 0 too. Moves the elements behind.
    void InsertRange(std::initializer_list<T> elements, unsigned int position)
    {
        InsertRange(elements.begin(), static_cast<unsigned int>(elements.size()), position);
    }
    /// Puts the elements of a `std::vector`, a `std::span`, an array or another class with `data()` and `size()`, of
    /// exactly type T, before the element at a position, or at the end for a position of the count; none may lie above
    /// that. Fires ElementsAdded with the elements given, not with the new slots, and their number, for 0 too. They may
    /// not lie in this list. Moves the elements behind.
    template <class Range, class = IfRange<Range>>
    void InsertRange(const Range& range, unsigned int position)
    {
        InsertRange(std::data(range), CorvexMaths::CountOf(range), position);
    }

    /// Removes the first element equal by `==`, without a tolerance; if there is none, nothing happens. With order
    /// kept, ElementRemoved fires on it, the count already lowered and the tail not yet moved. Otherwise the last
    /// element takes its place and no hook fires at all. The value may be an element of this list. Scans the list.
    void Remove(const T& value, bool keepOrder = true);
    /// Removes the element that lives at an address; equal elements elsewhere do not count. Any other address, null
    /// included, does nothing. With order kept, ElementRemoved fires on the element, the count already lowered and the
    /// tail not yet moved. Otherwise the last element takes its place and no hook fires at all. Finds the slot at
    /// constant cost. Only real pointers take part, so that `Remove(0)` removes a number.
    template <class P, class = CorvexMaths::IfRealPointer<P, const T*>>
    void Remove(P element, bool keepOrder = true)
    {
        RemoveAddress(element, keepOrder);
    }
    /// Removes the element at an index, which is below the count. With order kept, ElementRemoved fires on it, the
    /// count already lowered and the tail not yet moved. Otherwise the last element takes its place, at constant cost,
    /// and no hook fires at all.
    void RemoveAt(unsigned int index, bool keepOrder = true);
    /// Removes the last n elements. Fires ElementsRemoved with the new end, where they can still be read, and n, which
    /// may be 0; or Cleared alone when no element stays, as for an empty list. An n above the count removes all. The
    /// block stays.
    void RemoveFromEnd(unsigned int n);
    /// Removes the first n elements and moves the others down. Fires ElementsRemoved with the block, while they still
    /// stand at its front, and n, which may be 0; or Cleared alone when no element stays, as for an empty list. An n
    /// above the count removes all. The block stays.
    void RemoveFromFront(unsigned int n);
    /// Removes all elements and, if asked, frees the block; otherwise block and capacity stay for reuse. Fires
    /// ElementsRemoved with the block and the old count, 0 included, if a block exists, then Cleared.
    void Clear(bool releaseMemory = false);

    /// Makes room for n more elements; where the slots suffice already, nothing happens. Otherwise the capacity rises
    /// by the largest of the need, the grow size and, in exponential mode, the present capacity. Only elements in use
    /// are copied to the new block. Fires no hook.
    void Grow(unsigned int n);
    /// Raises the count to n if n is above it; never lowers it. The block grows only if n is above the capacity. The
    /// new elements are what their slots hold: default-constructed in a fresh block, stale in slots used before. Fires
    /// no hook, so that a derived class does not see them.
    void Expand(unsigned int n);
    /// Shrinks the block to the count; without elements to a block of none, which is not null. A block that is full, or
    /// none at all, stays as it is. Fires no hook.
    void Contract();

    /// Turns the order round. Above 2^24 elements the half of the count is taken in `float` and rounds, so that a pair
    /// in the middle may be left or swapped twice. Fires no hook.
    void Reverse();
    /// Sorts ascending by `<` and `>`. Equal elements keep their order; that of elements with a NaN, and of matrices,
    /// whose `<` is always true, is what glibc's `qsort` leaves. Fires no hook.
    void Sort() { Sort(&TList<T>::CompareElements); }
    /// Sorts by a comparison function for the standard `qsort`, which is not null: it takes the addresses of two
    /// elements. Elements it calls equal keep their order, and if it contradicts itself the order is what glibc's
    /// `qsort` leaves, with other C libraries too. Allocates a copy of the elements. glibc takes an order of its own
    /// where it finds no memory for that; with another library the allocator's exception leaves the elements as they
    /// were. If the function throws, each element is still there once. Fires no hook.
    void Sort(int (*compare)(const void*, const void*));
    /// Sorts descending by `>` and `<`. Equal elements keep their order; that of elements with a NaN, and of matrices,
    /// whose `>` is always false, is what glibc's `qsort` leaves. Fires no hook.
    void SortDescending() { Sort(&TList<T>::CompareElementsDesc); }

    /// The index of the first element equal by `==`, without a tolerance, or -1; a value holding a NaN is never found.
    /// Scans the list from the front.
    int Search(const T& value) const;

    /// Finds a key in a list sorted ascending, or the two neighbours it lies between; elements are the same when
    /// neither is greater or less, so that NaN is the same as any number. Unsorted lists of 3 or more elements give
    /// anything, or no end. Costs a number of comparisons that grows as the logarithm of the count, and then one step
    /// for each duplicate spanned.
    ///
    /// True with both results at one element: the key was found there, in a run of duplicates at any of them. True with
    /// results at i and i + 1: the key lies between. False: the list is empty or the key lies before its first or
    /// behind its last element; the pointers are then null and the indices as they were. If duplicates are spanned, the
    /// results of a hit become the first and the last of the elements that are the same, but only in lists of 3 or
    /// more. None of the four pointers is null.
    /// @param key What is sought.
    /// @param[out] lower The element found, or the one before the key.
    /// @param[out] upper The element found, or the one behind the key.
    /// @param[out] lowerIndex The index of `lower`.
    /// @param[out] upperIndex The index of `upper`.
    /// @param spanDuplicates Whether a hit is widened to all elements that are the same.
    [[nodiscard]] bool BinarySearch(const T& key, T** lower, T** upper, unsigned int* lowerIndex,
                                    unsigned int* upperIndex, bool spanDuplicates = false) const;
    /// Finds a key in a list sorted ascending, or the two neighbours it lies between, by indices alone; elements are
    /// the same when neither is greater or less. Unsorted lists of 3 or more elements give anything, or no end.
    ///
    /// True with equal indices: the key was found there. True with the indices i and i + 1: the key lies between.
    /// False: the list is empty or the key lies before its first or behind its last element; the indices are then as
    /// they were. If duplicates are spanned, the indices of a hit become those of the first and the last of the
    /// elements that are the same, but only in lists of 3 or more. Neither pointer is null.
    /// @param key What is sought.
    /// @param[out] lowerIndex The index of the element found, or of the one before the key.
    /// @param[out] upperIndex The index of the element found, or of the one behind the key.
    /// @param spanDuplicates Whether a hit is widened to all elements that are the same.
    [[nodiscard]] bool BinarySearch(const T& key, unsigned int* lowerIndex, unsigned int* upperIndex,
                                    bool spanDuplicates = false) const;
    /// Finds a key itself in a list sorted ascending: true only if an element is the same, neither greater nor less; of
    /// several it may be any. Unsorted lists of 3 or more elements give anything, or no end.
    ///
    /// False with the element before the key in the results: the key lies between two elements. False with a null
    /// element and the index as it was: the list is empty or the key lies before its first or behind its last element.
    /// Neither pointer is null.
    /// @param key What is sought.
    /// @param[out] found The element.
    /// @param[out] index Its index.
    [[nodiscard]] bool BinarySearch(const T& key, T** found, unsigned int* index) const;
    /// Finds a key itself in a list sorted ascending, by index alone: true only if an element is the same, neither
    /// greater nor less; of several it may be any. Unsorted lists of 3 or more elements give anything, or no end.
    ///
    /// False leaves the index of the element before the key if the key lies between two elements, and otherwise the
    /// index as it was: in an empty list, and for a key before the first or behind the last element. The pointer is not
    /// null.
    [[nodiscard]] bool BinarySearch(const T& key, unsigned int* index) const;

    /// Compares two elements by their addresses, which are not null, for an ascending `qsort`: -1 if `*a < *b`, else 1
    /// if `*a > *b`, else 0, as for a NaN.
    static int CompareElements(const void* a, const void* b);
    /// Compares two elements by their addresses, which are not null, for a descending `qsort`: -1 if `*a > *b`, else 1
    /// if `*a < *b`, else 0, as for a NaN.
    static int CompareElementsDesc(const void* a, const void* b);

protected:
    /// Called when an element was added by Add, AddUnique or Insert, with its slot; the count includes it. Does nothing
    /// here.
    virtual void ElementAdded(T& /*element*/) {}
    /// Called when n elements were added, which may be 0: with the first new slot by AddRange and by assignment, with
    /// the source array, which may be const, by InsertRange. The count includes them. Does nothing here.
    virtual void ElementsAdded(T* /*elements*/, unsigned int /*n*/) {}
    /// Called when Remove or RemoveAt, with order kept, is about to remove an element: with its slot, the count already
    /// lowered, all later elements still in place. Does nothing here.
    virtual void ElementRemoved(T& /*element*/) {}
    /// Called when n elements are about to be removed, which may be 0: with the first of them in the block, all still
    /// in place. The count is already lowered by RemoveFromEnd and RemoveFromFront, and not yet by Clear and by
    /// assignment. Does nothing here.
    virtual void ElementsRemoved(T* /*elements*/, unsigned int /*n*/) {}
    /// Called when the list has become empty by Clear, RemoveFromEnd, RemoveFromFront or at the outset of an
    /// assignment, also when it was empty before; the count is 0. Does nothing here.
    virtual void Cleared() {}

    // A derived class may put a block of `new T[capacity]` in place of this one, which it frees by `delete[]`.
    T* storage;                ///< The block, owned; null until the first allocation.
    unsigned int count;        ///< Elements in use, the first slots of the block.
    unsigned int growSize;     ///< The least number of slots that a growth adds.
    unsigned int capacity;     ///< Slots in the block.
    bool useExponentialGrowth; ///< Whether a growth at least doubles the capacity.

private:
    static bool IsSame(const T& a, const T& b) { return !(a > b) && !(a < b); }
    static void MoveElements(T* target, const T* source, unsigned int n);

    void AddRangeInternal(const T* source, unsigned int n);
    void AddToFullBlock(T value);
    std::unique_ptr<T[]> MakeRoom(unsigned int n);
    void TakeBlock(TList<T>& other) noexcept;
    template <class Hook>
    void FireAtCount(unsigned int remaining, bool releaseMemory, const Hook& hook);
    unsigned int FindIndex(const T& value) const;
    unsigned int FindAddress(const T* element) const;
    void RemoveAddress(const T* element, bool keepOrder);
    bool FindBracket(const T& key, unsigned int* lowerIndex, unsigned int* upperIndex) const;

    CORVEX_INCLUDE_STREAM_TO_PRINT(TList);
};

template <class T>
TList<T>::TList(unsigned int initialCapacity, unsigned int stepSize)
    : storage(initialCapacity != 0 ? new T[initialCapacity] : nullptr),
      count(0),
      growSize(stepSize),
      capacity(initialCapacity),
      useExponentialGrowth(false)
{}

template <class T>
TList<T>::TList(const TList<T>& other) : TList(other.storage, other.count, other.growSize)
{}

template <class T>
TList<T>::TList(const T* source, unsigned int n, unsigned int stepSize) : TList(0u, stepSize)
{
    CORVEX_PRECONDITION("TList::TList", source != nullptr || n == 0, source, n);
    AddRangeInternal(source, n);
}

template <class T>
TList<T>::TList(TList<T>&& other) noexcept : TList(0u)
{
    TakeBlock(other);
}

template <class T>
TList<T>& TList<T>::operator=(const TList<T>& other)
{
    growSize = other.growSize;
    if (storage) ElementsRemoved(storage, count);
    FireAtCount(0, false, [this] { Cleared(); });
    // The source is read only now: a list assigned to itself has nothing left to copy.
    AddRangeInternal(other.storage, other.count);
    Contract();
    return *this;
}

template <class T>
TList<T>& TList<T>::operator=(TList<T>&& other)
{
    if (this == &other) return *this;
    // Objects of one class share their table of virtual functions, which stands first.
    if (std::memcmp(static_cast<const void*>(this), static_cast<const void*>(&other), sizeof(void*)) == 0) {
        TakeBlock(other);
        return *this;
    }
    if (storage) ElementsRemoved(storage, count);
    FireAtCount(0, false, [this] { Cleared(); });
    TakeBlock(other);
    ElementsAdded(storage, count);
    return *this;
}

/// Takes over the block and the grow size of another list and frees the own block. Fires no hook.
template <class T>
void TList<T>::TakeBlock(TList<T>& other) noexcept
{
    delete[] storage;
    storage = std::exchange(other.storage, nullptr);
    count = std::exchange(other.count, 0u);
    capacity = std::exchange(other.capacity, 0u);
    growSize = other.growSize;
}

template <class T>
void TList<T>::SetGrowSize(unsigned int stepSize)
{
    if (stepSize != 0) growSize = stepSize;
}

/// Moves elements bitwise; the two places may overlap, and both may be null for no elements.
template <class T>
void TList<T>::MoveElements(T* target, const T* source, unsigned int n)
{
    if (n != 0) std::memmove(static_cast<void*>(target), static_cast<const void*>(source), n * sizeof(T));
}

template <class T>
inline void TList<T>::Add(const T& value)
{
    if (count == capacity) {
        AddToFullBlock(value);
        return;
    }
    storage[count] = value;
    ++count;
    ElementAdded(storage[count - 1]);
}

/// The rare half of Add, kept apart so that the common one stays short. It takes a copy: the value may stand in the
/// block left behind, and a temporary whose address goes nowhere needs no memory in the common half.
template <class T>
void TList<T>::AddToFullBlock(T value)
{
    Grow(1);
    storage[count] = value;
    ++count;
    ElementAdded(storage[count - 1]);
}

template <class T>
void TList<T>::AddUnique(const T& value)
{
    if (FindIndex(value) == count) Add(value);
}

template <class T>
void TList<T>::AddRangeInternal(const T* source, unsigned int n)
{
    const std::unique_ptr<T[]> previous = MakeRoom(n);
    T* const added = storage + count;
    MoveElements(added, source, n);
    count += n;
    ElementsAdded(added, n);
}

template <class T>
void TList<T>::Insert(const T& value, unsigned int position)
{
    CORVEX_PRECONDITION("TList::Insert", position <= count, position, count);
    // A value of the list's own would move with the tail.
    const T copy = value;
    Grow(1);
    MoveElements(storage + position + 1, storage + position, count - position);
    storage[position] = copy;
    ++count;
    ElementAdded(storage[position]);
}

template <class T>
void TList<T>::InsertRange(const T* source, unsigned int n, unsigned int position)
{
    CORVEX_PRECONDITION("TList::InsertRange", source != nullptr || n == 0, source, n);
    CORVEX_PRECONDITION("TList::InsertRange", position <= count, position, count);
    CORVEX_PRECONDITION("TList::InsertRange", n == 0 || FindAddress(source) == count, source, n);
    const std::unique_ptr<T[]> previous = MakeRoom(n);
    MoveElements(storage + position + n, storage + position, count - position);
    MoveElements(storage + position, source, n);
    count += n;
    ElementsAdded(const_cast<T*>(source), n);
}

template <class T>
void TList<T>::Remove(const T& value, bool keepOrder)
{
    const unsigned int index = FindIndex(value);
    if (index != count) RemoveAt(index, keepOrder);
}

template <class T>
void TList<T>::RemoveAddress(const T* element, bool keepOrder)
{
    const unsigned int index = FindAddress(element);
    if (index != count) RemoveAt(index, keepOrder);
}

template <class T>
void TList<T>::RemoveAt(unsigned int index, bool keepOrder)
{
    CORVEX_PRECONDITION("TList::RemoveAt", index < count, index, count);
    if (keepOrder) {
        FireAtCount(count - 1, false, [this, index] { ElementRemoved(storage[index]); });
        MoveElements(storage + index, storage + index + 1, count - index);
    } else {
        storage[index] = storage[count - 1];
        --count;
    }
}

template <class T>
void TList<T>::RemoveFromEnd(unsigned int n)
{
    if (n >= count)
        FireAtCount(0, false, [this] { Cleared(); });
    else
        FireAtCount(count - n, false, [this, n] { ElementsRemoved(storage + count, n); });
}

template <class T>
void TList<T>::RemoveFromFront(unsigned int n)
{
    if (n >= count) {
        RemoveFromEnd(n);
        return;
    }
    FireAtCount(count - n, false, [this, n] { ElementsRemoved(storage, n); });
    MoveElements(storage, storage + n, count);
}

template <class T>
void TList<T>::Clear(bool releaseMemory)
{
    if (storage) ElementsRemoved(storage, count);
    FireAtCount(0, releaseMemory, [this] { Cleared(); });
}

/// Calls a hook that belongs to a removal: with the count lowered, and the block released where that is asked for. If
/// the hook throws, both are put back.
template <class T>
template <class Hook>
void TList<T>::FireAtCount(unsigned int remaining, bool releaseMemory, const Hook& hook)
{
    struct Undo
    {
        TList<T>& list;
        T* block;
        unsigned int count;
        unsigned int capacity;
        bool isReleasing;
        bool isDone = false;

        ~Undo()
        {
            if (!isDone) {
                if (isReleasing) std::swap(list.storage, block), list.capacity = capacity;
                list.count = count;
            }
            if (isReleasing) delete[] block;
        }
    } undo{*this, storage, count, capacity, releaseMemory};

    if (releaseMemory) {
        storage = nullptr;
        capacity = 0;
    }
    count = remaining;
    hook();
    undo.isDone = true;
}

template <class T>
void TList<T>::Grow(unsigned int n)
{
    MakeRoom(n);
}

/// Grows, and hands back the block left behind, if any: what an addition copies may still stand in it.
template <class T>
std::unique_ptr<T[]> TList<T>::MakeRoom(unsigned int n)
{
    CORVEX_PRECONDITION("TList::Grow", count + n >= count, count, n);
    if (capacity >= count + n) return nullptr;
    unsigned int step = count + n - capacity;
    if (growSize > step) step = growSize;
    if (useExponentialGrowth && step <= capacity) step = capacity;
    CORVEX_PRECONDITION("TList::Grow", capacity + step > capacity, capacity, step);
    T* const grown = new T[capacity + step];
    MoveElements(grown, storage, count);
    capacity += step;
    return std::unique_ptr<T[]>(std::exchange(storage, grown));
}

template <class T>
void TList<T>::Expand(unsigned int n)
{
    if (n <= count) return;
    if (n > capacity) Grow(n - count);
    count = n;
}

template <class T>
void TList<T>::Contract()
{
    if (capacity <= count) return;
    T* const contracted = new T[count];
    capacity = count;
    MoveElements(contracted, storage, count);
    delete[] storage;
    storage = contracted;
}

template <class T>
void TList<T>::Reverse()
{
    // The half is taken in `float`: up to 2^24 elements it is exact, above that it is rounded.
    const unsigned int half = static_cast<unsigned int>(static_cast<float>(count) * 0.5f);
    for (unsigned int i = 0; i < half; ++i) {
        const T swapped = storage[i];
        storage[i] = storage[count - 1 - i];
        storage[count - 1 - i] = swapped;
    }
}

template <class T>
void TList<T>::Sort(int (*compare)(const void*, const void*))
{
    CORVEX_PRECONDITION("TList::Sort", compare != nullptr, count);
    StableSort(static_cast<void*>(storage), count, sizeof(T), compare);
}

template <class T>
int TList<T>::CompareElements(const void* a, const void* b)
{
    CORVEX_PRECONDITION("TList::CompareElements", a != nullptr && b != nullptr, a, b);
    const T& first = *static_cast<const T*>(a);
    const T& second = *static_cast<const T*>(b);
    if (first < second) return -1;
    return first > second ? 1 : 0;
}

template <class T>
int TList<T>::CompareElementsDesc(const void* a, const void* b)
{
    CORVEX_PRECONDITION("TList::CompareElementsDesc", a != nullptr && b != nullptr, a, b);
    const T& first = *static_cast<const T*>(a);
    const T& second = *static_cast<const T*>(b);
    if (first > second) return -1;
    return first < second ? 1 : 0;
}

/// The index of the first element equal to a value, or the count.
template <class T>
unsigned int TList<T>::FindIndex(const T& value) const
{
    unsigned int index = 0;
    while (index < count && !(storage[index] == value)) ++index;
    return index;
}

/// The index of the element that lives at an address, or the count.
template <class T>
unsigned int TList<T>::FindAddress(const T* element) const
{
    // As integers, for the address may lie in any object. One below the block wraps to beyond its end.
    const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(element) - reinterpret_cast<std::uintptr_t>(storage);
    return offset % sizeof(T) == 0 && offset / sizeof(T) < count ? static_cast<unsigned int>(offset / sizeof(T))
                                                                 : count;
}

template <class T>
int TList<T>::Search(const T& value) const
{
    const unsigned int index = FindIndex(value);
    return index != count ? static_cast<int>(index) : -1;
}

template <class T>
bool TList<T>::BinarySearch(const T& key, T** lower, T** upper, unsigned int* lowerIndex, unsigned int* upperIndex,
                            bool spanDuplicates) const
{
    CORVEX_PRECONDITION("TList::BinarySearch", lower != nullptr && upper != nullptr, lower, upper);
    CORVEX_PRECONDITION("TList::BinarySearch", lowerIndex != nullptr && upperIndex != nullptr, lowerIndex, upperIndex);
    *lower = nullptr;
    *upper = nullptr;
    if (!FindBracket(key, lowerIndex, upperIndex)) return false;

    if (spanDuplicates && count >= 3) {
        while (*lowerIndex != 0 && IsSame(storage[*lowerIndex - 1], key)) --*lowerIndex;
        // The walk begins at the upper element itself, so that a bracket, whose upper neighbour differs, stays as it
        // is.
        for (unsigned int i = *upperIndex; i < count && IsSame(storage[i], key); ++i) *upperIndex = i;
    }
    *lower = storage + *lowerIndex;
    *upper = storage + *upperIndex;
    return true;
}

/// BinarySearch by indices, without spanning.
template <class T>
bool TList<T>::FindBracket(const T& key, unsigned int* lowerIndex, unsigned int* upperIndex) const
{
    const auto found = [lowerIndex, upperIndex](unsigned int lower, unsigned int upper) {
        *lowerIndex = lower;
        *upperIndex = upper;
        return true;
    };
    if (count == 0) return false;
    if (count == 1) return IsSame(key, storage[0]) && found(0, 0);
    if (count == 2) {
        if (storage[0] > key) return false;
        if (IsSame(storage[0], key)) return found(0, 0);
        if (storage[1] < key) return false;
        return storage[1] > key ? found(0, 1) : found(1, 1);
    }

    unsigned int low = 0;
    unsigned int high = count;
    unsigned int mid = count / 2;
    do {
        // The end of the list, not of the range: a key behind the last element ends here.
        if (mid == count - 1) return false;
        if (key > storage[mid]) {
            if (storage[mid + 1] > key) return found(mid, mid + 1);
            if (!(key > storage[mid + 1])) return found(mid + 1, mid + 1);
            low = mid;
        } else if (storage[mid] > key) {
            if (key > storage[mid - 1]) return found(mid - 1, mid);
            if (!(storage[mid - 1] > key)) return found(mid - 1, mid - 1);
            high = mid;
        } else {
            return found(mid, mid);
        }
        mid = low + (high - low) / 2;
    } while (mid != 0); // A key before the first element ends here.
    return false;
}

template <class T>
bool TList<T>::BinarySearch(const T& key, unsigned int* lowerIndex, unsigned int* upperIndex, bool spanDuplicates) const
{
    T* lower;
    T* upper;
    return BinarySearch(key, &lower, &upper, lowerIndex, upperIndex, spanDuplicates);
}

template <class T>
bool TList<T>::BinarySearch(const T& key, T** found, unsigned int* index) const
{
    T* upper;
    unsigned int upperIndex;
    return BinarySearch(key, found, &upper, index, &upperIndex, false) && *index == upperIndex;
}

template <class T>
bool TList<T>::BinarySearch(const T& key, unsigned int* index) const
{
    T* found;
    return BinarySearch(key, &found, index);
}

extern template class TList<int>;
CORVEX_INSTANTIATE_SCALARS(extern, class, TList);

} // namespace Halmont::Orrin::CorvexUtilities

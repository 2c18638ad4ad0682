#pragma once

/// Edits of a list and of whatever derives from it, each held against a plain model of the contents.

#include "Operations.h"

#include <algorithm>
#include <exception>
#include <numeric>

namespace CorvexCatalogue
{

template <class E>
std::vector<E> Contents(const TList<E>& list)
{
    return std::vector<E>(list.GetStream(), list.GetStream() + list.GetCount());
}

/// A list as the model has it: the digest of each element, so that there is one type of model for all lists.
using ListModel = std::vector<std::uint64_t>;

template <class E>
std::uint64_t ModelOf(const E& element)
{
    Digest digest;
    digest << element;
    return digest.Get();
}

template <class E>
ListModel ModelOf(const TList<E>& list)
{
    ListModel model(list.GetCount());
    for (unsigned int i = 0; i < list.GetCount(); ++i) model[i] = ModelOf(list[i]);
    return model;
}

/// The index of the first element that equals a value, -1 without any.
template <class E>
int Find(const TList<E>& list, const E& value)
{
    for (unsigned int i = 0; i < list.GetCount(); ++i)
        if (list[i] == value) return static_cast<int>(i);
    return -1;
}

inline void Insert(ListModel& model, unsigned int position, const ListModel& range)
{
    model.insert(model.begin() + position, range.begin(), range.end());
}

inline void Erase(ListModel& model, unsigned int index, bool keepOrder)
{
    if (!keepOrder) model[index] = model.back();
    model.erase(keepOrder ? model.begin() + index : model.end() - 1);
}

template <class E>
class ListEdits
{
public:
    /// `otherList` is where ranges come from, maybe the edited one; `value` an element from outside.
    ListEdits(TList<E>& edited, TList<E>& otherList, const E& value, Source& source)
        : list(edited), other(otherList), outside(value), in(source), model(ModelOf(edited))
    {}
    ~ListEdits()
    {
        if (std::uncaught_exceptions() > 0) return;
        const Aside aside;
        Require(ModelOf(list) == model);
    }

    void Add()
    {
        const E& value = Value();
        const unsigned int kind = in.Below(6), count = list.GetCount();
        TList<E>& source = in.Flag() ? list : other;
        ListModel range = kind == 5 ? ModelOf(source) : ListModel{ModelOf(value)};
        if ((kind == 2 || kind == 3) && Find(list, value) >= 0) range.clear();
        if (kind == 0) list.Add(value);
        if (kind == 1) list.Add(&value);
        if (kind == 2) list.AddUnique(value);
        if (kind == 3) list.AddUnique(&value);
        if (kind == 4) {
            const unsigned int first = in.Between(0, source.GetCount()), n = in.Between(0, source.GetCount() - first);
            const ListModel all = ModelOf(source);
            range.assign(all.begin() + first, all.begin() + first + n);
            list.AddRange(source.GetStream() + first, n);
        }
        if (kind == 5) list.AddRange(source);
        const Aside aside;
        CorvexCatalogue::Insert(model, count, range);
    }

    void Insert()
    {
        const E& value = Value();
        const unsigned int position = in.Between(0, list.GetCount());
        unsigned int kind = in.Below(4);
        if (&other == &list && kind == 3) kind = 2;
        E run[3] = {outside, value, outside};
        const ListModel range = kind == 3   ? ModelOf(other)
                                : kind == 2 ? ListModel{ModelOf(run[0]), ModelOf(run[1]), ModelOf(run[2])}
                                            : ListModel{ModelOf(value)};
        if (kind == 0) list.Insert(value, position);
        if (kind == 1) list.Insert(&value, position);
        if (kind == 2) list.InsertRange(run, 3, position);
        if (kind == 3) list.InsertRange(other, position);
        const Aside aside;
        CorvexCatalogue::Insert(model, position, range);
    }

    void Remove()
    {
        const E& value = Value();
        const unsigned int kind = in.Below(8), count = list.GetCount(), n = in.Below(5);
        const bool keepOrder = in.Flag();
        if (kind < 2) {
            const int found = Find(list, value);
            list.Remove(value, keepOrder);
            if (found >= 0) Erase(model, static_cast<unsigned int>(found), keepOrder);
        } else if (kind == 2) {
            // None of these is an element.
            list.Remove(&outside, keepOrder);
            list.Remove(static_cast<const E*>(nullptr), keepOrder);
            list.Remove(static_cast<const E*>(list.GetStream()) + count, keepOrder);
        } else if (kind < 5 && count > 0) {
            kind == 3 ? list.RemoveAt(n % count, keepOrder) : list.Remove(&list[n % count], keepOrder);
            Erase(model, n % count, keepOrder);
        } else if (kind == 5) {
            list.RemoveFromFront(n);
            model.erase(model.begin(), model.begin() + std::min(n, count));
        } else if (kind == 6) {
            list.RemoveFromEnd(n);
            model.resize(count - std::min(n, count));
        } else if (kind == 7 && n == 0) {
            list.Clear(keepOrder);
            Require(!keepOrder || list.GetStream() == nullptr);
            model.clear();
        }
    }

    void Resize()
    {
        const unsigned int n = in.Below(20), kind = in.Below(6), before = list.GetGrowSize();
        if (kind == 0) list.Grow(n);
        if (kind == 1) {
            list.Expand(n);
            const Aside aside;
            // What new slots hold is undefined for numbers and pointers.
            for (auto i = static_cast<unsigned int>(model.size()); i < list.GetCount(); ++i) list[i] = outside;
            model.resize(list.GetCount(), ModelOf(outside));
        }
        if (kind == 2) list.Contract();
        if (kind == 3) {
            list.SetGrowSize(n);
            Require(list.GetGrowSize() == (n == 0 ? before : n));
        }
        if (kind == 4) list.SetUseExponentialGrowth(n % 2 == 0);
        if (kind == 5 && !model.empty()) {
            list[n % list.GetCount()] = outside;
            model[n % list.GetCount()] = ModelOf(outside);
            Require(ModelOf(list.GetFirst()) == model.front() && ModelOf(list.GetLast()) == model.back());
        }
    }

    void Order()
    {
        const unsigned int kind = in.Below(4);
        if (kind > 0) return Sort(kind);
        list.Reverse();
        std::reverse(model.begin(), model.end());
    }

    /// Any of all.
    void Edit()
    {
        static constexpr void (ListEdits::*edits[])() = {&ListEdits::Add, &ListEdits::Insert, &ListEdits::Remove,
                                                         &ListEdits::Resize, &ListEdits::Order};
        (this->*edits[in.Below(5)])();
    }

private:
    /// The value from outside, or a reference to an element of the list itself.
    const E& Value()
    {
        const unsigned int count = list.GetCount(), index = in.Below(count + 1);
        return index == count || in.Flag() ? outside : list[index];
    }

    static void Sort(TList<E>& sorted, unsigned int kind)
    {
        if (kind == 1) sorted.Sort();
        if (kind == 2) sorted.SortDescending();
        if (kind == 3) sorted.Sort(&TList<E>::CompareElements);
    }
    /// Sorting leaves a permutation. Where elements tie that differ, or nothing orders them, their order is a matter of
    /// the C library, and only a copy is sorted.
    void Sort(unsigned int kind)
    {
        TList<E> ascending(list), copy(list);
        Sort(ascending, 1);
        Sort(copy, kind);
        const auto sum = [](const ListModel& m) { return std::accumulate(m.begin(), m.end(), std::uint64_t(0)); };
        ListModel sorted = ModelOf(copy);
        Require(sum(sorted) == sum(model) && sum(ModelOf(ascending)) == sum(model));
        for (unsigned int i = 0; i < ascending.GetCount(); ++i) {
            const E &element = ascending[i], &before = ascending[i == 0 ? 0 : i - 1];
            if (!(element == element) || element < before) return;
            if (!(before < element) && ModelOf(before) != ModelOf(element)) return;
        }
        Sort(list, kind);
        model.swap(sorted);
    }

    TList<E>& list;
    TList<E>& other;
    const E outside;
    Source& in;
    ListModel model;
};

} // namespace CorvexCatalogue

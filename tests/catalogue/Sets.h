#pragma once

/// What the families over point sets share.

#include "ListEdits.h"

namespace CorvexCatalogue
{

/// The protected side of a point set, for any class over it.
template <class T, template <class> class V>
struct OpenSet : TPointSet<T, V>
{
    using Set = TPointSet<T, V>;
    static bool& KeepBox(Set& set) { return set.*&OpenSet::keepBox; }
    static TBox<T>& Box(Set& set) { return set.*&OpenSet::boundingBox; }
};

/// Requires the box to be that of the points one by one.
template <class T, template <class> class V>
void RequireExactBox(const TPointSet<T, V>& set)
{
    TBox<T> plain(set.GetBoundingBox().limit);
    for (unsigned int i = 0; i < set.GetCount(); ++i) plain.Extend(static_cast<TVector3<T>>(set[i]));
    Require(AreSame(plain, set.GetBoundingBox()));
}

/// Requires a copy, by construction from a set, to have its points and an exact box.
template <class T, template <class> class V>
void RequireCopy(const TPointSet<T, V>& copy, const TPointSet<T, V>& source)
{
    Require(AreSame(Contents<V<T>>(copy), Contents<V<T>>(source)));
    RequireExactBox(copy);
}

/// Whether the first elements are some or all of the second, to the bit and in their order.
template <class E>
bool AreInOrderAmong(const std::vector<E>& some, const std::vector<E>& all)
{
    std::size_t found = 0;
    for (std::size_t i = 0; i < all.size() && found < some.size(); ++i) found += AreSame(some[found], all[i]);
    return found == some.size();
}

/// A class over point sets with hooks that may throw.
template <class T, template <class> class V, class Set>
struct Hooked : Set
{
    using Set::Set;

protected:
    void ElementAdded(V<T>& point) override { Set::ElementAdded(point), Tell(); }
    void ElementsAdded(V<T>* points, unsigned int n) override { Set::ElementsAdded(points, n), Tell(); }
    void ElementRemoved(V<T>& point) override { Set::ElementRemoved(point), Tell(); }
    void ElementsRemoved(V<T>* points, unsigned int n) override { Set::ElementsRemoved(points, n), Tell(); }
    void Cleared() override { Set::Cleared(), Tell(); }

private:
    static void Tell()
    {
        if (tellHook) tellHook();
    }
};

/// Operations on two live objects of a class over point sets, of which the second is of a derived class.
template <class T, template <class> class V, class Object, class Derived = Hooked<T, V, Object>>
struct SetState : State
{
    using State::State;
    using Vector = V<T>;
    using Set = TPointSet<T, V>;
    using Points = std::vector<Vector>;

    Object first;
    Derived second;
    Object* const both[2] = {&first, &second};
    /// The most points of a set between operations of a sequence.
    static constexpr unsigned int most = 65;

    Object& Pick() { return in.Flag() ? first : second; }
    /// In the digests, now and then an object of up to so many points, for operations that work in blocks or trees.
    Object& PickLarge(unsigned int atMost)
    {
        Object& object = Pick();
        if (!in.IsEndless() || in.Below(24) != 0) return object;
        const Aside aside;
        const auto shape = static_cast<Shape>(in.Byte() % 6);
        const unsigned int half = in.Below(4), rest = in.Below(9);
        const Points points = DrawPoints<T, V>(in, shape, (atMost >> half) + rest);
        object.Clear();
        object.AddRange(points.data(), static_cast<unsigned int>(points.size()));
        return object;
    }
    Points Draw(unsigned int atMost) { return DrawPoints<T, V>(in, atMost); }
    Vector Point() { return in.template Vector<Vector>(); }
    static Points Copy(const Set& set) { return Contents<Vector>(set); }

    void Show() const override { out << first << second; }
    void Check() override
    {
        for (Object* object : both) {
            object->GetCentre();
            Trim(*object);
        }
    }
    /// Keeps sets small in sequences.
    void Trim(Set& set) const
    {
        if (!in.IsEndless() && set.GetCount() > most) set.RemoveFromEnd(set.GetCount() - most);
    }

    void FillBy(unsigned int atMost)
    {
        for (Object* object : both) {
            const Points points = Draw(atMost);
            object->Clear();
            object->AddRange(points.data(), static_cast<unsigned int>(points.size()));
        }
    }
    /// Has the box kept, as a rule.
    void KeepBox(Object& object)
    {
        const Aside aside;
        OpenSet<T, V>::KeepBox(object) = in.Below(4) != 0;
    }
    /// Edits what is inherited from the list, with and without the box being kept, so that it can be stale afterwards.
    void Edit()
    {
        Object& object = Pick();
        const Vector value = Point();
        KeepBox(object);
        ListEdits<Vector>(object, Pick(), value, in).Edit();
        Trim(object);
    }
};

} // namespace CorvexCatalogue

// Lists, maps, pairs and linked nodes.

#include "tests/digest/Inputs.h"

#include <new>

namespace CorvexDigest
{
namespace
{

/// Draws an element of a list: few different ones, so that they repeat; all are ordered.
template <class Element>
Element Draw(Random& random)
{
    if constexpr (std::is_arithmetic_v<Element>)
        return static_cast<Element>(random.Below(5));
    else
        return random.Point<Element>([](Random& r) { return static_cast<decltype(Element::x)>(r.Below(3)); });
}

template <class First, class Second>
TPair<First, Second> DrawPair(Random& random)
{
    const First first = Draw<First>(random);
    return TPair<First, Second>(first, Draw<Second>(random));
}

/// A list that writes down which hooks are fired and what they are shown.
template <class Element>
struct WatchedList : TList<Element>
{
    using TList<Element>::TList;
    Digest hooks;

protected:
    void ElementAdded(Element& element) override { hooks << 1 << element << this->count; }
    void ElementsAdded(Element* elements, unsigned int n) override
    {
        hooks << 2 << n << this->count;
        hooks.TakeArray(elements, n);
    }
    void ElementRemoved(Element& element) override { hooks << 3 << element << this->count; }
    void ElementsRemoved(Element* elements, unsigned int n) override
    {
        hooks << 4 << n << this->count;
        hooks.TakeArray(elements, n);
    }
    void Cleared() override { hooks << 5 << this->count; }
};

/// One change of a list, chosen at random among all that there are.
template <class Element>
void Change(Random& random, TList<Element>& list, const std::vector<Element>& pool)
{
    const Element value = pool[random.Below(static_cast<unsigned int>(pool.size()))];
    Element run[3] = {value, pool[0], value};
    const unsigned int count = list.GetCount(), index = random.Below(count + 1), some = random.Below(count + 1);
    const bool keepOrder = random.Below(2) == 0;
    TList<Element> other(run, 2, 3);
    switch (random.Below(20)) {
    case 0:
        list.Add(&value);
        break;
    case 1:
        list.AddUnique(value);
        break;
    case 2:
        list.AddUnique(&value);
        break;
    case 3:
        list.AddRange(run, 3);
        break;
    case 4:
        list.AddRange(keepOrder ? other : list);
        break;
    case 5:
        list.Insert(value, index);
        break;
    case 6:
        list.Insert(&value, index);
        break;
    case 7:
        list.InsertRange(run, 3, index);
        break;
    case 8:
        list.InsertRange(other, index);
        break;
    case 9:
        list.Remove(value, keepOrder);
        break;
    case 10:
        list.Remove(list.GetStream() + index, keepOrder); // behind the last element now and then
        break;
    case 11:
        if (count > 0) list.RemoveAt(index % count, keepOrder);
        break;
    case 12:
        list.RemoveFromEnd(some % 4);
        break;
    case 13:
        list.RemoveFromFront(some % 4);
        break;
    case 14:
        list.Reverse();
        break;
    case 15:
        keepOrder ? list.Sort() : list.SortDescending();
        break;
    case 16:
        keepOrder ? list.Grow(some) : list.Contract();
        break;
    case 17:
        list.SetUseExponentialGrowth(keepOrder);
        break;
    case 18:
        list.SetGrowSize(random.Below(5));
        break;
    default:
        if (random.Below(8) == 0)
            list.Clear(keepOrder);
        else
            list.Add(value);
    }
}

template <class Element, class DrawElement>
void AddList(Report& report, const std::string& type, DrawElement draw)
{
    Random random(5);
    std::vector<Element> pool;
    while (pool.size() < 12) pool.push_back(draw(random));

    report.Add(type + "::changes", [&](Digest& d) {
        for (unsigned int run = 0; run < 20; ++run) {
            WatchedList<Element> watched(run, run / 2);
            TList<Element> plain(run, run / 2), &list = run % 4 == 3 ? plain : watched;
            for (unsigned int step = 0; step < 60; ++step) {
                Change(random, list, pool);
                d << list << watched.hooks.Get() << list.GetGrowSize();
                if (list.GetCount() > 0) d << list.GetFirst() << list.GetLast();
            }
            WatchedList<Element> copy(watched), taken(&list, 4);
            copy = taken;
            plain = list;
            const unsigned int count = plain.GetCount();
            plain.Expand(count + 1);
            plain[count] = pool[0];
            d << static_cast<const TList<Element>&>(copy) << copy.hooks.Get() << TList<Element>(list) << plain;
        }
    });
    report.Add(type + "::searches", [&](Digest& d) {
        for (unsigned int n = 0; n < 30; ++n) {
            WatchedList<Element> list;
            for (unsigned int i = 0; i < n; ++i) list.Add(pool[(i * i + n) % pool.size()]);
            for (const Element& key : pool) d << list.Search(key);
            list.Sort();
            for (const Element& key : pool) {
                unsigned int lower = 77, upper = 88;
                d << list.Search(key) << list.BinarySearch(key, &lower, &upper) << lower << upper;
                d << list.BinarySearch(key, &lower, &upper, true) << lower << upper;
                d << list.BinarySearch(key, &lower) << lower;
                Element *below = nullptr, *above = nullptr;
                d << list.BinarySearch(key, &below, &above, &lower, &upper) << (below != nullptr ? *below : key);
                d << list.BinarySearch(key, &above, &upper) << (above != nullptr ? *above : key) << lower << upper;
            }
        }
    });
}

template <class Cell, class DrawCell>
void AddMap(Report& report, const std::string& type, DrawCell draw)
{
    report.Add("TMap<" + type + ">::changes", [&](Digest& d) {
        Random random(7);
        TMap<Cell> map(3);
        for (unsigned int step = 0; step < 200; ++step) {
            const unsigned int width = map.GetWidth(), height = map.GetHeight();
            const unsigned int newWidth = random.Below(9), newHeight = random.Below(9);
            switch (random.Below(8)) {
            case 0:
                map.AddRow();
                break;
            case 1:
                map.AddColumn();
                break;
            case 2:
                map.RemoveRow(random.Below(height + 2));
                break;
            case 3:
                map.RemoveColumn(random.Below(width + 2));
                break;
            case 4:
                map.Grow(random.Below(3));
                break;
            case 5:
                map.Shrink(width < height ? width / 2 : height / 2);
                break;
            case 6:
                if (random.Below(5) == 0) map.Clear();
                break;
            default:
                map.Alter(newWidth, newHeight);
            }
            // New cells hold whatever their memory held.
            for (unsigned int column = 0; column < map.GetWidth(); ++column)
                for (unsigned int row = 0; row < map.GetHeight(); ++row)
                    if (column >= width || row >= height || random.Below(3) == 0) map[column][row] = draw(random);
            d << map;
        }
        // Copies share the storage, and only one of them may be destroyed.
        alignas(TMap<Cell>) unsigned char room[sizeof(TMap<Cell>)];
        TMap<Cell>* const shared = new (room) TMap<Cell>(map);
        d << *shared << (*shared = map) << TMap<Cell>();
    });
}

/// Lists of pointers and a map of them, to objects that lie in one array.
template <class Object>
void AddPointers(Report& report, const std::string& type)
{
    const std::vector<Object> objects(12);
    Digest::origin = objects.data();
    const auto draw = [&](Random& random) { return const_cast<Object*>(&objects[random.Below(12)]); };
    AddList<Object*>(report, "TList<" + type + "*>", draw);
    AddMap<Object*>(report, type + "*", draw);
}

template <class A, class B>
void AddPair(Report& report, const std::string& type)
{
    Random random(6);
    std::vector<TPair<A, B>> pairs;
    while (pairs.size() < 40) pairs.push_back(DrawPair<A, B>(random));
    report.Over(pairs, pairs).Add(type + "::comparisons", [](Digest& d, TPair<A, B>& a, TPair<A, B>& b) {
        d << (a == b) << (a < b) << (a > b) << TPair<A, B>(a.first, b.second);
    });
}

template <class T, template <class> class V>
void AddLists(Report& report)
{
    const std::string vector = NameOf<T>("TVector" + std::to_string(sizeof(V<T>) / sizeof(T)));
    AddList<V<T>>(report, "TList<" + vector + ">", Draw<V<T>>);
    AddList<TPair<T, V<T>>>(report, "TList<TPair<" + NameOf<T>() + "," + vector + ">>", DrawPair<T, V<T>>);
    AddPointers<TPointSet<T, V>>(report, NameOf<T, V>("TPointSet"));
    AddPointers<TParameterization<T, V>>(report, NameOf<T, V>("TParameterization"));
    AddPointers<TPolygon<T, V>>(report, NameOf<T, V>("TPolygon"));
}

template <class T>
void AddLinks(Report& report)
{
    using Node = TLinkUni<TVector3<T>>;
    report.Add("TLinkUni<" + NameOf<T>("TVector3") + ">::chain", [](Digest& d) {
        Random random(8);
        Node* const head = new Node();
        for (unsigned int step = 0; step < 30; ++step) {
            Node* const node = new Node();
            node->value = Draw<TVector3<T>>(random);
            Node* place = head;
            for (unsigned int skip = random.Below(step + 1); skip > 0 && place->GetNext() != nullptr; --skip)
                place = place->GetNext();
            random.Below(2) == 0 ? head->Add(node) : place->InsertAfter(node);
            d << head->GetCount() << head->GetLast()->value;
        }
        for (Node* node = head; node != nullptr; node = node->GetNext()) d << node->value;
        Node lone, copy(*head);
        d << copy.value << copy.GetCount() << (lone = copy).GetCount();
        lone.SetNext(&copy);
        d << lone.GetCount();
        head->MakeCircular();
        d << head->GetCount();
        Node::ReleaseMemoryCircular(head);
    });
}

} // namespace

void DigestContainers(Report& report)
{
    AddList<int>(report, "TList<int>", Draw<int>);
    ForScalars([&](auto scalar) {
        using T = decltype(scalar);
        AddLists<T, TVector2>(report);
        AddLists<T, TVector3>(report);
        AddLists<T, TVector4>(report);
        AddList<T>(report, "TList<" + NameOf<T>() + ">", Draw<T>);
        AddList<TMatrix4x4<T>>(report, "TList<" + NameOf<T>("TMatrix4x4") + ">",
                               [](Random& random) { return MakeMatrix<T>(Kind::Tied, 4, 4, random.Below(5)); });
        const std::string t = NameOf<T>(), v2 = NameOf<T>("TVector2"), v3 = NameOf<T>("TVector3");
        AddList<TPair<TVector3<T>, unsigned int>>(report, "TList<TPair<" + v3 + ",unsigned>>",
                                                  DrawPair<TVector3<T>, unsigned int>);
        AddList<TEdge2<T>>(report, "TList<" + NameOf<T>("TEdge2") + ">", [](Random& random) {
            const TVector2<T> start = Draw<TVector2<T>>(random);
            return TEdge2<T>(start, Draw<TVector2<T>>(random));
        });
        AddList<TEdge3<T>>(report, "TList<" + NameOf<T>("TEdge3") + ">", [](Random& random) {
            const TVector3<T> start = Draw<TVector3<T>>(random);
            return TEdge3<T>(start, Draw<TVector3<T>>(random));
        });
        AddPair<T, TVector2<T>>(report, "TPair<" + t + "," + v2 + ">");
        AddPair<T, TVector3<T>>(report, "TPair<" + t + "," + v3 + ">");
        AddPair<T, TVector4<T>>(report, "TPair<" + t + "," + NameOf<T>("TVector4") + ">");
        AddPair<TVector3<T>, unsigned int>(report, "TPair<" + v3 + ",unsigned>");
        AddPair<TVector2<T>, TVector2<T>>(report, "TPair<" + v2 + "," + v2 + ">");
        AddMap<TPair<TVector2<T>, TVector2<T>>>(report, "TPair<" + v2 + "," + v2 + ">",
                                                DrawPair<TVector2<T>, TVector2<T>>);
        AddLinks<T>(report);
    });
}

} // namespace CorvexDigest

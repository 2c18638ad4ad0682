// Lists of all element types in use, maps, pairs and linked nodes.

#include "ListEdits.h"

#include <new>

namespace CorvexCatalogue
{
namespace
{

/// An element: few different ones, so that many are equal; rarely any scalar.
template <class E>
struct Draw
{
    /// Whatever consists of scalars: one value in all components but the last.
    static E From(Source& in)
    {
        using T = ScalarOf<E>;
        T values[sizeof(E) / sizeof(T)];
        const T first = Draw<T>::From(in);
        std::fill(std::begin(values), std::end(values), first);
        *std::rbegin(values) = Draw<T>::From(in);
        E element;
        std::memcpy(static_cast<void*>(&element), values, sizeof(element));
        return element;
    }
};
template <>
struct Draw<int>
{
    static int From(Source& in) { return static_cast<int>(in.Below(16)) - 8; }
};
template <>
struct Draw<unsigned int>
{
    static unsigned int From(Source& in) { return in.Below(16); }
};
template <>
struct Draw<float>
{
    static float From(Source& in) { return in.Below(16) != 0 ? in.Coarse<float>() : in.Scalar<float>(); }
};
template <>
struct Draw<double>
{
    static double From(Source& in) { return in.Below(16) != 0 ? in.Coarse<double>() : in.Scalar<double>(); }
};
template <class Object>
struct Draw<Object*>
{
    static Object* From(Source& in) { return reinterpret_cast<Object*>(Pool<Object>::places[in.Below(8)]); }
};
template <class A, class B>
struct Draw<TPair<A, B>>
{
    static TPair<A, B> From(Source& in)
    {
        const A first = Draw<A>::From(in);
        return TPair<A, B>(first, Draw<B>::From(in));
    }
};

/// A list that writes down which hooks are called and what they are shown.
template <class E>
struct WatchedList : TList<E>
{
    using Base = TList<E>;
    using Base::Base, Base::capacity;
    explicit WatchedList(const Base& other) : Base(other) {}
    Sink hooks;

protected:
    using Base::count, Base::storage;

    void ElementAdded(E& element) override
    {
        Require(IsSlot(&element, count));
        hooks << 1 << element << count;
        if (tellHook) tellHook();
    }
    void ElementsAdded(E* elements, unsigned int n) override
    {
        hooks << 2 << n << count;
        hooks.TakeArray(elements, n);
        if (tellHook) tellHook();
    }
    void ElementRemoved(E& element) override
    {
        Require(IsSlot(&element, count + 1));
        hooks << 3 << element << count;
        if (tellHook) tellHook();
    }
    void ElementsRemoved(E* elements, unsigned int n) override
    {
        Require(n == 0 || (IsSlot(elements, capacity) && IsSlot(elements + (n - 1), capacity)));
        hooks << 4 << n << count;
        hooks.TakeArray(elements, n);
        if (tellHook) tellHook();
    }
    void Cleared() override
    {
        hooks << 5 << count;
        if (tellHook) tellHook();
    }

private:
    bool IsSlot(const E* element, unsigned int slots) const { return element >= storage && element < storage + slots; }
};

template <class E>
struct ListState : State
{
    using State::State;
    using Watched = WatchedList<E>;
    using Edits = ListEdits<E>;
    std::unique_ptr<Watched> first = std::make_unique<Watched>(), second = std::make_unique<Watched>();

    void Fill() override
    {
        for (Watched* list : {first.get(), second.get()}) {
            list->SetGrowSize(in.Below(8));
            for (unsigned int n = in.Size(70); n > 0; --n) list->Add(Draw<E>::From(in));
        }
    }
    void Show() const override
    {
        for (const Watched* list : {first.get(), second.get()})
            out << static_cast<const TList<E>&>(*list) << list->hooks.Get();
    }
    void Check() override
    {
        for (Watched* list : {first.get(), second.get()}) {
            Require(list->GetCount() <= list->capacity && (list->GetStream() == nullptr) <= (list->capacity == 0));
            if (list->GetCount() > 200) list->RemoveFromEnd(list->GetCount() - 50);
        }
    }

    template <void (Edits::*edit)()>
    void Edit()
    {
        const E value = Draw<E>::From(in);
        Edits edits(*first, in.Flag() ? *first : *second, value, in);
        (edits.*edit)();
    }
    void Construct()
    {
        const unsigned int capacity = in.Below(40), growSize = in.Below(6);
        const ListModel contents = ModelOf<E>(*first);
        TList<E>& source = *first;
        const TList<E>& same = source;
        const unsigned int kind = in.Below(6);
        if (kind == 5) return first.swap(second);
        std::unique_ptr<Watched> made;
        if (kind == 0) made = std::make_unique<Watched>(capacity);
        if (kind == 1) made = std::make_unique<Watched>(capacity, growSize);
        if (kind == 2) made = std::make_unique<Watched>(same);
        if (kind == 3) made = std::make_unique<Watched>(&source, growSize);
        if (kind == 4) made = std::make_unique<Watched>(source.GetStream(), source.GetCount(), growSize);
        Require(kind > 1 ? ModelOf<E>(*made) == contents : made->GetCount() == 0 && made->capacity == capacity);
        Require(kind == 0 || kind == 2 || made->GetGrowSize() == growSize);
        second.swap(made);
    }
    void Assign()
    {
        if (in.Below(8) == 0) {
            TList<E>& target = *first;
            target = Itself(target);
            Require(target.GetCount() == 0);
            return;
        }
        static_cast<TList<E>&>(*first) = *second;
        const Aside aside;
        Require(ModelOf<E>(*first) == ModelOf<E>(*second) && first->capacity == first->GetCount());
    }
    void Search()
    {
        const E key = Draw<E>::From(in), another = Draw<E>::From(in);
        out << first->Search(key);
        Require(first->Search(key) == Find<E>(*first, key));
        Require(TList<E>::CompareElements(&key, &another) == (key < another ? -1 : key > another ? 1 : 0));
        Require(TList<E>::CompareElementsDesc(&key, &another) == (key > another ? -1 : key < another ? 1 : 0));
    }
    /// Looks a key up in all ways and holds the answers against the order of the list.
    void BinarySearch()
    {
        TList<E> list(*first);
        list.Sort();
        for (unsigned int i = 0; i < list.GetCount(); ++i)
            if (!(list[i] == list[i]) || (i > 0 && list[i] < list[i - 1])) return;
        const unsigned int index = in.Below(list.GetCount() + 1);
        const E drawn = Draw<E>::From(in), key = index < list.GetCount() && in.Flag() ? list[index] : drawn;
        const bool span = in.Flag();
        unsigned int lower = 0, upper = 0, found = 0;
        E *below = nullptr, *above = nullptr, *hit = nullptr;
        const bool isFound = list.BinarySearch(key, &below, &above, &lower, &upper, span);
        const bool isHit = list.BinarySearch(key, &hit, &found);
        out << isFound << lower << upper << isHit << found << list.BinarySearch(key, &lower, &upper, span);
        out << lower << upper << list.BinarySearch(key, &found) << found;
        Require(isHit <= isFound && (below != nullptr) == isFound && (above != nullptr) == isFound);
        if (!isFound) {
            Require(!(key == key) || list.GetCount() == 0 || key < list.GetFirst() || key > list.GetLast());
            return;
        }
        Require(below == &list[lower] && above == &list[upper] && hit == &list[found]);
        if (isHit)
            Require(!(*below < key) && !(*above > key) && lower <= found && found <= upper);
        else
            Require(*below < key && key < *above && upper == lower + 1);
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"constructors", &ListState::Construct},      {"operator=", &ListState::Assign, Promise::Valid},
                {"Add", &ListState::Edit<&Edits::Add>},       {"Insert", &ListState::Edit<&Edits::Insert>},
                {"Remove", &ListState::Edit<&Edits::Remove>}, {"Grow", &ListState::Edit<&Edits::Resize>},
                {"Sort", &ListState::Edit<&Edits::Order>},    {"Search", &ListState::Search},
                {"BinarySearch", &ListState::BinarySearch}};
    }
};

/// A map and a model of its columns.
template <class E>
struct MapState : State
{
    using State::State;
    TMap<E> map;
    std::vector<ListModel> columns;
    unsigned int height = 0;

    unsigned int GetWidth() const { return static_cast<unsigned int>(columns.size()); }
    void CheckCells(const TMap<E>& other) const
    {
        Require(other.GetWidth() == GetWidth() && other.GetHeight() == height);
        for (unsigned int c = 0; c < GetWidth(); ++c)
            for (unsigned int r = 0; r < height; ++r) Require(ModelOf(other[c][r]) == columns[c][r]);
    }
    /// Follows a change of size; new cells are undefined until they are set.
    void Follow(unsigned int newWidth, unsigned int newHeight)
    {
        const Aside aside;
        const unsigned int oldWidth = GetWidth(), oldHeight = height;
        height = newHeight;
        columns.resize(newWidth);
        for (unsigned int c = 0; c < newWidth; ++c) {
            for (unsigned int r = c < oldWidth ? oldHeight : 0; r < height; ++r) {
                map[c][r] = Draw<E>::From(in);
                columns[c].push_back(ModelOf(map[c][r]));
            }
            columns[c].resize(height);
        }
    }
    void Fill() override
    {
        const unsigned int width = in.Below(9), rows = in.Below(9);
        map.Alter(width, rows);
        Follow(width, rows);
    }
    void Show() const override { out << map; }
    void Check() override { CheckCells(map); }

    void Resize()
    {
        const unsigned int n = in.Below(4), width = GetWidth();
        if (width + n > 12 || height + n > 12) return map.Clear(), Follow(0, 0);
        switch (in.Below(5)) {
        case 0:
            map.Grow(n);
            return Follow(width + n, height + n);
        case 1:
            if (n > width || n > height) return;
            map.Shrink(n);
            return Follow(width - n, height - n);
        case 2:
            map.AddRow();
            return Follow(width, height + 1);
        case 3:
            map.AddColumn();
            return Follow(width + 1, height);
        default:
            return Fill();
        }
    }
    void Remove()
    {
        const unsigned int index = in.Below(10);
        if (in.Flag()) {
            map.RemoveColumn(index);
            if (index < GetWidth()) columns.erase(columns.begin() + index);
        } else {
            map.RemoveRow(index);
            if (height == 0) return;
            --height;
            for (ListModel& column : columns) column.erase(column.begin() + std::min(index, height));
        }
    }
    /// Copies share the storage and must not be destroyed.
    void Copy()
    {
        alignas(TMap<E>) unsigned char place[2][sizeof(TMap<E>)];
        CheckCells(*new (place[0]) TMap<E>(map));
        TMap<E>* const assigned = new (place[1]) TMap<E>;
        *assigned = map;
        CheckCells(*assigned);
        const unsigned int width = in.Below(7), rows = in.Below(7);
        const TMap<E> columnsAlone(width), both(width, rows);
        out << columnsAlone.GetWidth() << columnsAlone.GetHeight() << both.GetWidth() << both.GetHeight();
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"Resize", &MapState::Resize}, {"Remove", &MapState::Remove}, {"constructors", &MapState::Copy}};
    }
};

template <class P>
struct PairState : State
{
    using State::State;
    P a, b;

    void Fill() override
    {
        a = Draw<P>::From(in);
        b = Draw<P>::From(in);
    }
    void Show() const override { out << a << b << P(a.first, b.second); }
    void Compare()
    {
        Require(P() == P(decltype(P::first){}, decltype(P::second){}));
        Require((a == b) == (a.first == b.first && a.second == b.second) && (a < b) == (a.first < b.first) &&
                (a > b) == (a.first > b.first));
        out << (a == b) << (a < b) << (a > b);
        if (in.Flag()) a = b;
        if (in.Flag()) Fill();
    }

    static std::vector<Operation> GetOperations() { return {{"comparisons", &PairState::Compare}}; }
};

template <class E>
struct LinkState : State
{
    using State::State;
    using Link = TLinkUni<E>;

    /// Nodes that count themselves, so that their release can be seen.
    struct Node : Link
    {
        unsigned int& alive;
        Node(const E& content, unsigned int& counter) : alive(counter)
        {
            this->value = content;
            ++alive;
        }
        Node(const Node&) = delete;
        Node& operator=(const Node&) = delete;
        ~Node() override { --alive; }
    };

    unsigned int alive = 0;
    std::vector<Link*> chain;
    bool isRing = false;

    ~LinkState() override { Release(); }
    unsigned int GetCount() const { return static_cast<unsigned int>(chain.size()); }
    void Fill() override
    {
        for (unsigned int n = in.Below(12); n > 0; --n) Insert();
    }
    void Show() const override
    {
        for (const Link* node : chain) out << node->value << node->GetCount();
    }
    void Check() override
    {
        Require(alive == GetCount());
        for (unsigned int i = 0; i < GetCount(); ++i) {
            Require(chain[i]->GetNext() == (i + 1 < GetCount() ? chain[i + 1] : isRing ? chain[0] : nullptr));
            Require(chain[i]->GetCount() == (isRing ? GetCount() : GetCount() - i));
            if (!isRing) Require(chain[i]->GetLast() == chain.back());
        }
    }
    void Release()
    {
        isRing ? Link::ReleaseMemoryCircular(chain.front()) : Link::ReleaseMemory(chain.empty() ? nullptr : chain[0]);
        Require(alive == 0);
        chain.clear();
        isRing = false;
    }
    void Insert()
    {
        if (GetCount() > 20) return;
        const unsigned int index = in.Below(GetCount() + 1);
        if (index == GetCount() && isRing) return;
        chain.reserve(chain.size() + 1);
        Link* const node = new Node(Draw<E>::From(in), alive);
        if (index < GetCount())
            chain[index]->InsertAfter(node);
        else if (!chain.empty())
            chain[in.Below(index)]->Add(node);
        chain.insert(chain.begin() + std::min(index + 1, GetCount()), node);
    }
    /// Makes a ring of the rear and releases it, or cuts it off, or closes or opens the whole chain.
    void Close()
    {
        if (chain.empty()) return;
        const unsigned int index = in.Below(GetCount()), kind = in.Below(3);
        if (isRing) {
            chain.back()->SetNext(nullptr);
            isRing = false;
        } else if (kind == 0) {
            chain.front()->MakeCircular();
            isRing = true;
        } else {
            if (kind == 1) chain[index]->MakeCircular();
            Require(chain[index]->GetCount() == GetCount() - index);
            kind == 1 ? Link::ReleaseMemoryCircular(chain[index]) : Link::ReleaseMemory(chain[index]);
            chain.resize(index);
            if (!chain.empty()) chain.back()->SetNext(nullptr);
        }
    }
    void Copy()
    {
        Link alone;
        Require(alone.GetNext() == nullptr && alone.GetCount() == 1 && alone.GetLast() == &alone);
        Require(AreSame(alone.value, E{}));
        if (chain.empty()) return;
        const Link& source = *chain[in.Below(GetCount())];
        const Link copy(source);
        alone = copy;
        out << alone.value;
        Require(alone.GetNext() == source.GetNext() && AreSame(alone.value, source.value));
        Require(isRing || alone.GetCount() == source.GetCount());
        alone.SetNext(nullptr);
        alone.MakeCircular();
        Require(alone.GetNext() == &alone && alone.GetCount() == 1);
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"Add", &LinkState::Insert},
                {"MakeCircular", &LinkState::Close},
                {"constructors", &LinkState::Copy},
                {"ReleaseMemory", &LinkState::Release}};
    }
};

template <class E>
void AddList(const std::string& element)
{
    Add<ListState<E>>("TList<" + element + ">", 600);
}

template <class A, class B>
void AddPair(const std::string& name)
{
    Add<PairState<TPair<A, B>>>(name, 500);
}

/// Pointers are elements of lists and cells of maps.
template <class Object>
void AddPointers(const std::string& object)
{
    AddList<Object*>(object + "*");
    Add<MapState<Object*>>("TMap<" + object + "*>", 600);
}

template <class T, template <class> class V>
void AddVectors()
{
    const std::string scalar = std::is_same_v<T, float> ? "float" : "double";
    const std::string vector = NameOf<T>("TVector" + std::to_string(sizeof(V<T>) / sizeof(T)));
    const std::string pair = "TPair<" + scalar + "," + vector + ">";
    AddList<V<T>>(vector);
    AddList<TPair<T, V<T>>>(pair);
    AddPair<T, V<T>>(pair);
    AddPointers<TPointSet<T, V>>(NameOf<T, V>("TPointSet"));
    AddPointers<TParameterization<T, V>>(NameOf<T, V>("TParameterization"));
    AddPointers<TPolygon<T, V>>(NameOf<T, V>("TPolygon"));
}

template <class T>
void AddScalar()
{
    AddVectors<T, TVector2>();
    AddVectors<T, TVector3>();
    AddVectors<T, TVector4>();
    AddList<T>(std::is_same_v<T, float> ? "float" : "double");
    AddList<TMatrix4x4<T>>(NameOf<T>("TMatrix4x4"));
    AddList<TEdge2<T>>(NameOf<T>("TEdge2"));
    AddList<TEdge3<T>>(NameOf<T>("TEdge3"));
    const std::string vector2 = NameOf<T>("TVector2"), vector3 = NameOf<T>("TVector3");
    const std::string counted = "TPair<" + vector3 + ",unsigned>", places = "TPair<" + vector2 + "," + vector2 + ">";
    AddList<TPair<TVector3<T>, unsigned int>>(counted);
    AddPair<TVector3<T>, unsigned int>(counted);
    AddPair<TVector2<T>, TVector2<T>>(places);
    Add<MapState<TPair<TVector2<T>, TVector2<T>>>>("TMap<" + places + ">", 600);
    Add<LinkState<TVector3<T>>>("TLinkUni<" + vector3 + ">", 600);
}

const Family containers([] {
    AddList<int>("int");
    AddScalar<float>();
    AddScalar<double>();
});

} // namespace
} // namespace CorvexCatalogue

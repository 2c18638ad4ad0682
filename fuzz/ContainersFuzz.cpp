// The containers, held against plain models: lists of all element types in use, maps, pairs and links.

#include "Input.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace CorvexFuzz
{

// Values. Few different ones, so that many are equal.

template <class T>
T ReadFew(Input& input)
{
    const unsigned int byte = input.Byte();
    return byte < 240 ? static_cast<T>(static_cast<int>(byte % 16) - 8) / 2 : input.Scalar<T>();
}

void Read(Input& input, int& value)
{
    value = static_cast<int>(input.Below(16)) - 8;
}
void Read(Input& input, unsigned int& value)
{
    value = input.Below(16);
}
void Read(Input& input, float& value)
{
    value = ReadFew<float>(input);
}
void Read(Input& input, double& value)
{
    value = ReadFew<double>(input);
}

/// A pointer that is never followed.
template <class Pointee>
void Read(Input& input, Pointee*& value)
{
    alignas(Pointee) static char targets[8][sizeof(Pointee)];
    value = reinterpret_cast<Pointee*>(targets[input.Below(8)]);
}

/// Whatever is an array of T: one value in all components but the last.
template <template <class> class Flat, class T>
void Read(Input& input, Flat<T>& value)
{
    T components[sizeof(value) / sizeof(T)];
    const T first = ReadFew<T>(input);
    std::fill(std::begin(components), std::end(components), first);
    *std::rbegin(components) = ReadFew<T>(input);
    std::memcpy(static_cast<void*>(&value), components, sizeof(value));
}

template <class A, class B>
void Read(Input& input, TPair<A, B>& value)
{
    Read(input, value.first);
    Read(input, value.second);
}

template <class E>
E Make(Input& input)
{
    E value;
    Read(input, value);
    return value;
}

template <class E>
std::vector<E> MakeSome(Input& input)
{
    std::vector<E> values(input.Below(8));
    for (E& value : values) Read(input, value);
    return values;
}

template <class E>
bool AreSame(const E& a, const E& b)
{
    return HaveSameBits(a, b);
}
template <class A, class B>
bool AreSame(const TPair<A, B>& a, const TPair<A, B>& b)
{
    return AreSame(a.first, b.first) && AreSame(a.second, b.second);
}

// Lists.

/// A list that looks at what its hooks are given.
template <class E>
class Watched : public TList<E>
{
public:
    using TList<E>::TList;
    explicit Watched(const TList<E>& other) : TList<E>(other) {}

    unsigned int GetCapacity() const { return capacity; }

protected:
    using TList<E>::storage;
    using TList<E>::count;
    using TList<E>::capacity;

    void ElementAdded(E& element) override { Require(IsSlot(&element, count)); }
    void ElementsAdded(E* elements, unsigned int n) override { ReadAll(elements, n); }
    void ElementRemoved(E& element) override { Require(IsSlot(&element, count + 1)); }
    void ElementsRemoved(E* elements, unsigned int n) override
    {
        Require(n == 0 || (IsSlot(elements, capacity) && IsSlot(elements + (n - 1), capacity)));
        ReadAll(elements, n);
    }
    void Cleared() override { Require(count == 0); }

private:
    bool IsSlot(const E* element, unsigned int slots) const { return element >= storage && element < storage + slots; }
    static void ReadAll(const E* elements, unsigned int n)
    {
        for (unsigned int i = 0; i < n; ++i) Require(AreSame(E(elements[i]), elements[i]));
    }
};

template <class E>
struct ListState
{
    /// A list and what it should hold.
    struct Tracked
    {
        std::unique_ptr<Watched<E>> list = std::make_unique<Watched<E>>();
        std::vector<E> model;

        Watched<E>& operator*() { return *list; }
        Watched<E>* operator->() { return list.get(); }
        unsigned int GetSize() const { return static_cast<unsigned int>(model.size()); }
        bool HasRoom() const { return model.size() < 60; }
        auto At(unsigned int index) { return model.begin() + index; }

        void Append(const E* values, std::size_t n) { model.insert(model.end(), values, values + n); }

        void Erase(unsigned int index, bool keepOrder)
        {
            if (!keepOrder) model[index] = model.back();
            model.erase(keepOrder ? At(index) : model.end() - 1);
        }

        int Find(const E& value) const
        {
            for (unsigned int i = 0; i < GetSize(); ++i)
                if (model[i] == value) return static_cast<int>(i);
            return -1;
        }

        bool HasNumbersAlone() const
        {
            return std::all_of(model.begin(), model.end(), [](const E& e) { return e == e; });
        }
        bool IsSorted() const
        {
            for (std::size_t i = 1; i < model.size(); ++i)
                if (model[i] < model[i - 1]) return false;
            return HasNumbersAlone();
        }

        /// Takes the order of the list over, which must be one of the same elements.
        void TakeOrder()
        {
            std::vector<E> rest = model;
            for (unsigned int i = 0; i < GetSize(); ++i) {
                model[i] = (*list)[i];
                const auto found =
                    std::find_if(rest.begin(), rest.end(), [&](const E& e) { return AreSame(e, model[i]); });
                Require(found != rest.end());
                *found = rest.back();
                rest.pop_back();
            }
        }
    };

    Tracked tracked[2];
    unsigned int chosen = 0;

    Tracked& Choose(Input& input) { return tracked[chosen = input.Below(2)]; }
    Tracked& GetOther() { return tracked[1 - chosen]; }

    void Check()
    {
        for (Tracked& t : tracked) {
            const unsigned int count = t->GetCount();
            Require(count == t.GetSize() && count <= t->GetCapacity());
            Require((t->GetStream() == nullptr) <= (t->GetCapacity() == 0));
            for (unsigned int i = 0; i < count; ++i) Require(AreSame(t->GetStream()[i], t.model[i]));
        }
    }

    static void SearchSorted(Tracked& t, const E& key, bool span);

    static const Operation<ListState> operations[];
};

/// Looks a key up in all ways and holds the answers against the order of the list.
template <class E>
void ListState<E>::SearchSorted(Tracked& t, const E& key, bool span)
{
    E* lower;
    E* upper;
    unsigned int lowerIndex = 0;
    unsigned int upperIndex = 0;
    unsigned int index = 0;
    const bool isFound = t->BinarySearch(key, &lower, &upper, &lowerIndex, &upperIndex, span);
    Require(t->BinarySearch(key, &lowerIndex, &upperIndex, span) == isFound);
    E* hit;
    const bool isHit = t->BinarySearch(key, &hit, &index);
    Require(t->BinarySearch(key, &index) == isHit && isHit <= isFound);
    Require((lower != nullptr) == isFound && (upper != nullptr) == isFound);
    if (!isFound) {
        Require(!(key == key) || t.model.empty() || key < t.model.front() || key > t.model.back());
        return;
    }
    Require(lowerIndex <= upperIndex && upperIndex < t.GetSize());
    Require(lower == &(*t)[lowerIndex] && upper == &(*t)[upperIndex] && hit == &(*t)[index]);
    if (isHit)
        Require(!(*lower < key) && !(*upper > key) && lowerIndex <= index && index <= upperIndex);
    else
        Require(*lower < key && key < *upper && upperIndex == lowerIndex + 1);
}

template <class E>
const Operation<ListState<E>> ListState<E>::operations[] = {
    // Construction and assignment.
    {"TList(capacity)",
     [](ListState& s, Input& in) {
         const unsigned int capacity = in.Below(40);
         s.Choose(in) = {std::make_unique<Watched<E>>(capacity), {}};
         Require(s.tracked[s.chosen]->GetCapacity() == capacity);
     }},
    {"TList(capacity, growSize)",
     [](ListState& s, Input& in) {
         const unsigned int growSize = in.Below(6);
         s.Choose(in) = {std::make_unique<Watched<E>>(in.Below(6), growSize), {}};
         Require(s.tracked[s.chosen]->GetGrowSize() == growSize);
     }},
    {"TList(list)",
     [](ListState& s, Input& in) {
         const TList<E>& source = *s.Choose(in);
         s.GetOther() = {std::make_unique<Watched<E>>(source), s.tracked[s.chosen].model};
     }},
    {"TList(list*, growSize)",
     [](ListState& s, Input& in) {
         TList<E>* const source = &*s.Choose(in);
         s.GetOther() = {std::make_unique<Watched<E>>(source, in.Below(6)), s.tracked[s.chosen].model};
     }},
    {"TList(array, n, growSize)",
     [](ListState& s, Input& in) {
         const std::vector<E> some = MakeSome<E>(in);
         const unsigned int n = static_cast<unsigned int>(some.size());
         s.Choose(in) = {std::make_unique<Watched<E>>(some.data(), n, in.Below(6)), some};
     }},
    {"operator=",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         *t = *s.GetOther();
         t.model = s.GetOther().model;
         Require(t->GetCapacity() == t->GetCount());
     }},
    {"operator= itself",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const TList<E>& itself = *t;
         static_cast<TList<E>&>(*t) = itself;
         t.model.clear();
     }},

    // Access and settings.
    {"operator[]",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty()) return;
         const unsigned int index = in.Below(t.GetSize());
         (*t)[index] = t.model[index] = Make<E>(in);
     }},
    {"GetFirst, GetLast",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty()) return;
         Require(AreSame(t->GetFirst(), t.model.front()) && AreSame(t->GetLast(), t.model.back()));
     }},
    {"SetGrowSize",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const unsigned int before = t->GetGrowSize();
         const unsigned int growSize = in.Below(20);
         t->SetGrowSize(growSize);
         Require(t->GetGrowSize() == (growSize == 0 ? before : growSize));
     }},
    {"SetUseExponentialGrowth",
     [](ListState& s, Input& in) { s.Choose(in)->SetUseExponentialGrowth(in.Flag()); }},

    // Adding.
    {"Add",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const E value = Make<E>(in);
         if (!t.HasRoom()) return;
         if (in.Flag())
             t->Add(value);
         else
             t->Add(&value);
         t.model.push_back(value);
     }},
    {"Add own",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty() || !t.HasRoom()) return;
         const unsigned int index = in.Below(t.GetSize());
         const E value = t.model[index];
         if (in.Flag())
             t->Add((*t)[index]);
         else
             t->Add(&(*t)[index]);
         t.model.push_back(value);
     }},
    {"AddUnique",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const E value = Make<E>(in);
         if (!t.HasRoom()) return;
         if (t.Find(value) < 0) t.model.push_back(value);
         if (in.Flag())
             t->AddUnique(value);
         else
             t->AddUnique(&value);
     }},
    {"AddUnique own",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty() || !t.HasRoom()) return;
         const unsigned int index = in.Below(t.GetSize());
         const E value = t.model[index];
         if (t.Find(value) < 0) t.model.push_back(value);
         t->AddUnique((*t)[index]);
     }},
    {"AddRange(array)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const std::vector<E> some = MakeSome<E>(in);
         if (!t.HasRoom()) return;
         t->AddRange(some.data(), static_cast<unsigned int>(some.size()));
         t.Append(some.data(), some.size());
     }},
    {"AddRange(list)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (!t.HasRoom()) return;
         t->AddRange(*s.GetOther());
         t.Append(s.GetOther().model.data(), s.GetOther().model.size());
     }},
    {"AddRange own",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty() || t.model.size() > 30) return;
         const std::vector<E> before = t.model;
         const unsigned int first = in.Below(t.GetSize());
         const unsigned int n = in.Below(t.GetSize() - first + 1);
         t->AddRange(t->GetStream() + first, n);
         t.Append(before.data() + first, n);
         if (!in.Flag()) return;
         const std::vector<E> all = t.model;
         t->AddRange(*t);
         t.Append(all.data(), all.size());
     }},
    {"Insert",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         E value = Make<E>(in);
         if (!t.HasRoom()) return;
         const unsigned int position = in.Below(t.GetSize() + 1);
         if (in.Flag())
             t->Insert(value, position);
         else
             t->Insert(&value, position);
         t.model.insert(t.At(position), value);
     }},
    {"Insert own",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty() || !t.HasRoom()) return;
         const unsigned int index = in.Below(t.GetSize());
         const unsigned int position = in.Below(t.GetSize() + 1);
         const E value = t.model[index];
         if (in.Flag())
             t->Insert((*t)[index], position);
         else
             t->Insert(&(*t)[index], position);
         t.model.insert(t.At(position), value);
     }},
    {"InsertRange(array)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         std::vector<E> some = MakeSome<E>(in);
         if (!t.HasRoom()) return;
         const unsigned int position = in.Below(t.GetSize() + 1);
         t->InsertRange(some.data(), static_cast<unsigned int>(some.size()), position);
         t.model.insert(t.At(position), some.begin(), some.end());
     }},
    {"InsertRange(list)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (!t.HasRoom()) return;
         const unsigned int position = in.Below(t.GetSize() + 1);
         auto& other = s.GetOther();
         t->InsertRange(*other, position);
         t.model.insert(t.At(position), other.model.begin(), other.model.end());
     }},

    // Removing.
    {"Remove(value)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const E value = Make<E>(in);
         const bool keepOrder = in.Flag();
         const int found = t.Find(value);
         t->Remove(value, keepOrder);
         if (found >= 0) t.Erase(static_cast<unsigned int>(found), keepOrder);
     }},
    {"Remove(own value)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty()) return;
         const bool keepOrder = in.Flag();
         const unsigned int index = in.Below(t.GetSize());
         const int found = t.Find(t.model[index]);
         t->Remove((*t)[index], keepOrder);
         if (found >= 0) t.Erase(static_cast<unsigned int>(found), keepOrder);
     }},
    {"Remove(address)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const E elsewhere = Make<E>(in);
         t->Remove(&elsewhere);
         t->Remove(static_cast<const E*>(nullptr));
         t->Remove(static_cast<const E*>(s.GetOther()->GetStream()));
         if (t.model.empty()) return;
         const bool keepOrder = in.Flag();
         const unsigned int index = in.Below(t.GetSize());
         t->Remove(&(*t)[index], keepOrder);
         t.Erase(index, keepOrder);
     }},
    {"RemoveAt",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         if (t.model.empty()) return;
         const bool keepOrder = in.Flag();
         const unsigned int index = in.Below(t.GetSize());
         t->RemoveAt(index, keepOrder);
         t.Erase(index, keepOrder);
     }},
    {"RemoveFromEnd",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const unsigned int n = in.Below(12);
         t->RemoveFromEnd(n);
         t.model.erase(t.model.end() - std::min(n, t.GetSize()), t.model.end());
     }},
    {"RemoveFromFront",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const unsigned int n = in.Below(12);
         t->RemoveFromFront(n);
         t.model.erase(t.model.begin(), t.model.begin() + std::min(n, t.GetSize()));
     }},
    {"Clear",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const bool releaseMemory = in.Flag();
         t->Clear(releaseMemory);
         t.model.clear();
         Require(!releaseMemory || (t->GetStream() == nullptr && t->GetCapacity() == 0));
     }},

    // Capacity.
    {"Grow",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const unsigned int n = in.Below(40);
         t->Grow(n);
         Require(t->GetCapacity() >= t->GetCount() + n);
     }},
    {"Expand",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->Expand(in.Below(60));
         // What new slots hold is undefined for numbers and pointers.
         const E value = Make<E>(in);
         for (unsigned int i = t.GetSize(); i < t->GetCount(); ++i) {
             (*t)[i] = value;
             t.model.push_back(value);
         }
     }},
    {"Contract",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->Contract();
         Require(t->GetCapacity() == t->GetCount());
     }},

    // Ordering and searching.
    {"Reverse",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->Reverse();
         std::reverse(t.model.begin(), t.model.end());
     }},
    {"Sort",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->Sort();
         t.TakeOrder();
         // Matrices have no order.
         if constexpr (!std::is_convertible_v<E, TMatrix4x4<float>> && !std::is_convertible_v<E, TMatrix4x4<double>>)
             Require(t.IsSorted() || !t.HasNumbersAlone());
     }},
    {"SortDescending",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->SortDescending();
         t.TakeOrder();
     }},
    {"Sort(compare)",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         t->Sort([](const void* a, const void* b) { return std::memcmp(a, b, sizeof(E)); });
         t.TakeOrder();
     }},
    {"CompareElements",
     [](ListState&, Input& in) {
         const E a = Make<E>(in);
         const E b = Make<E>(in);
         Require(TList<E>::CompareElements(&a, &b) == (a < b ? -1 : a > b ? 1 : 0));
         Require(TList<E>::CompareElementsDesc(&a, &b) == (a > b ? -1 : a < b ? 1 : 0));
     }},
    {"Search",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const E value = Make<E>(in);
         Require(t->Search(value) == t.Find(value));
     }},
    {"BinarySearch",
     [](ListState& s, Input& in) {
         auto& t = s.Choose(in);
         const bool isOwn = in.Flag() && !t.model.empty();
         const E key = isOwn ? t.model[in.Below(t.GetSize())] : Make<E>(in);
         if (t.IsSorted()) SearchSorted(t, key, in.Flag());
     }},
};

// Maps.

template <class E>
struct MapState
{
    TMap<E> map;
    std::vector<std::vector<E>> model;
    unsigned int height = 0;

    unsigned int GetWidth() const { return static_cast<unsigned int>(model.size()); }

    /// Follows a change of size; new cells are undefined until they are set.
    void Resize(unsigned int newWidth, unsigned int newHeight, Input& input)
    {
        const unsigned int oldWidth = GetWidth();
        const unsigned int oldHeight = height;
        const E value = Make<E>(input);
        model.resize(newWidth);
        for (std::vector<E>& column : model) column.resize(newHeight, value);
        height = newHeight;
        for (unsigned int c = 0; c < newWidth; ++c)
            for (unsigned int r = c < oldWidth ? oldHeight : 0; r < newHeight; ++r) map[c][r] = value;
    }

    void CheckCells(const TMap<E>& other) const
    {
        Require(other.GetWidth() == GetWidth() && other.GetHeight() == height);
        for (unsigned int c = 0; c < GetWidth(); ++c)
            for (unsigned int r = 0; r < height; ++r) Require(AreSame(other[c][r], model[c][r]));
    }
    void Check() const { CheckCells(map); }

    static const Operation<MapState> operations[];
};

template <class E>
const Operation<MapState<E>> MapState<E>::operations[] = {
    {"TMap(width, height)",
     [](MapState&, Input& in) {
         const unsigned int width = in.Below(7);
         const TMap<E> columnsAlone(width);
         Require(columnsAlone.GetWidth() == width && columnsAlone.GetHeight() == 0);
         const TMap<E> both(width, in.Below(7));
         Require(both.GetWidth() == width);
     }},
    {"TMap(map), operator=",
     [](MapState& s, Input&) {
         // Copies share the storage and must not be destroyed.
         alignas(TMap<E>) unsigned char place[2][sizeof(TMap<E>)];
         s.CheckCells(*new (place[0]) TMap<E>(s.map));
         TMap<E>* const assigned = new (place[1]) TMap<E>;
         *assigned = s.map;
         s.CheckCells(*assigned);
     }},
    {"operator[]",
     [](MapState& s, Input& in) {
         if (s.GetWidth() == 0 || s.height == 0) return;
         const unsigned int column = in.Below(s.GetWidth());
         const unsigned int row = in.Below(s.height);
         s.map[column][row] = s.model[column][row] = Make<E>(in);
     }},
    {"Alter",
     [](MapState& s, Input& in) {
         const unsigned int newWidth = in.Below(9);
         const unsigned int newHeight = in.Below(9);
         s.map.Alter(newWidth, newHeight);
         s.Resize(newWidth, newHeight, in);
     }},
    {"Grow",
     [](MapState& s, Input& in) {
         const unsigned int n = in.Below(4);
         if (s.GetWidth() + n > 12 || s.height + n > 12) return;
         s.map.Grow(n);
         s.Resize(s.GetWidth() + n, s.height + n, in);
     }},
    {"Shrink",
     [](MapState& s, Input& in) {
         const unsigned int n = in.Below(std::min(s.GetWidth(), s.height) + 1);
         s.map.Shrink(n);
         s.Resize(s.GetWidth() - n, s.height - n, in);
     }},
    {"AddRow",
     [](MapState& s, Input& in) {
         if (s.height == 12) return;
         s.map.AddRow();
         s.Resize(s.GetWidth(), s.height + 1, in);
     }},
    {"AddColumn",
     [](MapState& s, Input& in) {
         if (s.GetWidth() == 12) return;
         s.map.AddColumn();
         s.Resize(s.GetWidth() + 1, s.height, in);
     }},
    {"RemoveRow",
     [](MapState& s, Input& in) {
         const unsigned int row = in.Below(13);
         s.map.RemoveRow(row);
         if (s.height == 0) return;
         --s.height;
         for (std::vector<E>& column : s.model) column.erase(column.begin() + std::min(row, s.height));
     }},
    {"RemoveColumn",
     [](MapState& s, Input& in) {
         const unsigned int column = in.Below(13);
         s.map.RemoveColumn(column);
         if (column < s.GetWidth()) s.model.erase(s.model.begin() + column);
     }},
    {"Clear",
     [](MapState& s, Input&) {
         s.map.Clear();
         s.model.clear();
         s.height = 0;
     }},
};

// Pairs.

template <class A, class B>
struct PairState
{
    TPair<A, B> pairs[2];

    void Check()
    {
        const TPair<A, B>& a = pairs[0];
        const TPair<A, B>& b = pairs[1];
        Require((a == b) == (a.first == b.first && a.second == b.second) && (a == b) == (b == a));
        Require((a < b) == (a.first < b.first) && (a > b) == (a.first > b.first) && !((a < b) && (a > b)));
    }

    static const Operation<PairState> operations[];
};

template <class A, class B>
const Operation<PairState<A, B>> PairState<A, B>::operations[] = {
    {"TPair()",
     [](PairState& s, Input& in) {
         const TPair<A, B> made;
         Require(made == TPair<A, B>(A{}, B{}));
         s.pairs[in.Below(2)] = made;
     }},
    {"TPair(first, second)",
     [](PairState& s, Input& in) {
         const A first = Make<A>(in);
         const TPair<A, B> made(first, Make<B>(in));
         const TPair<A, B> copy(made);
         Require(AreSame(copy, made) && AreSame(copy.first, first));
         s.pairs[in.Below(2)] = copy;
     }},
    {"operator=", [](PairState& s, Input& in) { s.pairs[in.Below(2)] = s.pairs[in.Below(2)]; }},
};

// Links.

template <class E>
struct LinkState
{
    using Link = TLinkUni<E>;

    /// Nodes that count themselves, so that their release can be seen.
    struct Node : Link
    {
        unsigned int* alive;
        Node(const E& nodeValue, unsigned int* counter) : alive(counter)
        {
            this->value = nodeValue;
            ++*alive;
        }
        Node(const Node&) = delete;
        Node& operator=(const Node&) = delete;
        ~Node() override { --*alive; }
    };

    unsigned int alive = 0;
    std::vector<Link*> chain;
    bool isRing = false;

    ~LinkState() { Release(); }

    unsigned int GetCount() const { return static_cast<unsigned int>(chain.size()); }
    Link* MakeNode(Input& input) { return new Node(Make<E>(input), &alive); }

    void Release()
    {
        if (isRing)
            Link::ReleaseMemoryCircular(chain.front());
        else
            Link::ReleaseMemory(chain.empty() ? nullptr : chain.front());
        Require(alive == 0);
        chain.clear();
        isRing = false;
    }

    void Check()
    {
        Require(alive == GetCount());
        for (unsigned int i = 0; i < GetCount(); ++i) {
            const bool isLast = i + 1 == GetCount();
            Require(chain[i]->GetNext() == (!isLast ? chain[i + 1] : isRing ? chain[0] : nullptr));
            Require(chain[i]->GetCount() == (isRing ? GetCount() : GetCount() - i));
            if (!isRing) Require(chain[i]->GetLast() == chain.back());
        }
    }

    static const Operation<LinkState> operations[];
};

template <class E>
const Operation<LinkState<E>> LinkState<E>::operations[] = {
    {"TLinkUni()",
     [](LinkState&, Input&) {
         Link alone;
         Require(alone.GetNext() == nullptr && alone.GetCount() == 1 && alone.GetLast() == &alone);
         Require(alone.value == E{});
         alone.MakeCircular();
         Require(alone.GetNext() == &alone && alone.GetCount() == 1);
     }},
    {"TLinkUni(link), operator=",
     [](LinkState& s, Input& in) {
         if (s.chain.empty()) return;
         const Link& source = *s.chain[in.Below(s.GetCount())];
         const Link copy(source);
         Link assigned;
         assigned = copy;
         Require(assigned.GetNext() == source.GetNext() && AreSame(assigned.value, source.value));
         if (!s.isRing) Require(assigned.GetCount() == source.GetCount());
     }},
    {"Add",
     [](LinkState& s, Input& in) {
         if (s.isRing || s.GetCount() > 12) return;
         Link* const node = s.MakeNode(in);
         if (!s.chain.empty()) s.chain[in.Below(s.GetCount())]->Add(node);
         s.chain.push_back(node);
     }},
    {"InsertAfter",
     [](LinkState& s, Input& in) {
         if (s.chain.empty() || s.GetCount() > 12) return;
         const unsigned int index = in.Below(s.GetCount());
         Link* const node = s.MakeNode(in);
         s.chain[index]->InsertAfter(node);
         s.chain.insert(s.chain.begin() + index + 1, node);
     }},
    {"SetNext",
     [](LinkState& s, Input& in) {
         if (s.chain.empty() || s.isRing) return;
         // Cuts the chain in two and releases the rear.
         const unsigned int index = in.Below(s.GetCount());
         Link* const rear = s.chain[index]->GetNext();
         s.chain[index]->SetNext(nullptr);
         Link::ReleaseMemory(rear);
         s.chain.resize(index + 1);
     }},
    {"MakeCircular",
     [](LinkState& s, Input&) {
         if (s.chain.empty() || s.isRing) return;
         s.chain.front()->MakeCircular();
         s.isRing = true;
     }},
    {"MakeCircular in the middle",
     [](LinkState& s, Input& in) {
         if (s.chain.empty() || s.isRing) return;
         // Releases the ring and keeps the nodes that lead into it.
         const unsigned int index = in.Below(s.GetCount());
         s.chain[index]->MakeCircular();
         Require(s.chain[index]->GetCount() == s.GetCount() - index);
         Link::ReleaseMemoryCircular(s.chain[index]);
         s.chain.resize(index);
         if (!s.chain.empty()) s.chain.back()->SetNext(nullptr);
     }},
    {"open the ring",
     [](LinkState& s, Input&) {
         if (s.isRing) s.chain.back()->SetNext(nullptr);
         s.isRing = false;
     }},
    {"ReleaseMemory", [](LinkState& s, Input&) { s.Release(); }},
};

} // namespace CorvexFuzz

using namespace CorvexFuzz;

#define CORVEX_LISTS_OF(T)                                                                                             \
    ListState<T>, ListState<TVector2<T>>, ListState<TVector3<T>>, ListState<TVector4<T>>, ListState<TEdge2<T>>,        \
        ListState<TEdge3<T>>, ListState<TMatrix4x4<T>>, ListState<TPair<T, TVector2<T>>>,                              \
        ListState<TPair<T, TVector3<T>>>, ListState<TPair<T, TVector4<T>>>,                                            \
        ListState<TPair<TVector3<T>, unsigned int>>, ListState<TPolygon<T, TVector2>*>
#define CORVEX_OTHERS_OF(T)                                                                                            \
    MapState<TPolygon<T, TVector3>*>, MapState<TPair<TVector2<T>, TVector2<T>>>, PairState<T, TVector2<T>>,            \
        PairState<T, TVector3<T>>, PairState<T, TVector4<T>>, PairState<TVector2<T>, TVector2<T>>,                     \
        PairState<TVector3<T>, unsigned int>, LinkState<TVector3<T>>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return RunOneOf<ListState<int>, CORVEX_LISTS_OF(float), CORVEX_LISTS_OF(double), CORVEX_OTHERS_OF(float),
                    CORVEX_OTHERS_OF(double)>(data, size);
}

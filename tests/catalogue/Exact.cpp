// Integers of 128 bits, held against those of the compiler where it has them, and walks over combinations and
// permutations.

#include "Operations.h"

#include <algorithm>

namespace CorvexCatalogue
{
namespace
{

#ifdef __SIZEOF_INT128__
__extension__ typedef unsigned __int128 Wide;
__extension__ typedef __int128 SignedWide;

Wide ToWide(const Int128& value)
{
    return static_cast<Wide>(static_cast<unsigned long long>(value.hi)) << 64 | value.lo;
}

/// Holds all results on two integers against the compiler's.
void RequireWide(const Int128& a, const Int128& b)
{
    const Wide left = ToWide(a), right = ToWide(b), least = static_cast<Wide>(1) << 127;
    const auto wideA = static_cast<SignedWide>(left), wideB = static_cast<SignedWide>(right);
    Require((a == b) == (wideA == wideB) && (a != b) == (wideA != wideB) && (a < b) == (wideA < wideB));
    Require((a > b) == (wideA > wideB) && (a <= b) == (wideA <= wideB) && (a >= b) == (wideA >= wideB));
    Require(ToWide(a + b) == left + right && ToWide(a - b) == left - right && ToWide(-a) == 0 - left);
    const auto product = static_cast<SignedWide>(a.hi) * static_cast<SignedWide>(b.hi);
    Require(ToWide(Int128::Mul(a.hi, b.hi)) == static_cast<Wide>(product));
    if (right == 0) return;
    // Equal magnitudes of opposite signs and the least value stand out.
    const bool isNone = left == least || right == least || left == 0 - right;
    Require(ToWide(a / b) == (left == right ? 1 : isNone ? 0 : static_cast<Wide>(wideA / wideB)));
}
#else
void RequireWide(const Int128&, const Int128&) {}
#endif

struct IntegerState : State
{
    using State::State;
    Int128 a, b;

    /// A word of 64 bits: small, near an end of its range, a power of two, or any.
    unsigned long long DrawWord()
    {
        const unsigned int kind = in.Byte();
        const unsigned long long small = static_cast<unsigned long long>(kind / 4) - 32;
        unsigned long long word = 0;
        for (unsigned int i = 0; i < (kind % 4 == 3 ? 8u : 0u); ++i) word = word << 8 | in.Byte();
        return kind % 4 == 0 ? small : kind % 4 == 1 ? small + (1ull << 63) : kind % 4 == 2 ? 1ull << (kind / 4) : word;
    }
    Int128 DrawInteger()
    {
        const auto high = static_cast<long long>(DrawWord());
        return in.Below(4) == 0 ? Int128(high) : Int128(high, DrawWord());
    }
    void Fill() override
    {
        a = DrawInteger();
        b = DrawInteger();
        if (in.Below(8) == 0) b = in.Flag() ? a : -a;
    }
    void Show() const override { out << a << b; }
    void Check() override { RequireWide(a, b); }

    void Compare() { out << (a == b) << (a != b) << (a < b) << (a > b) << (a <= b) << (a >= b); }
    void Add() { out << (a + b) << (a += b) << (a += Itself(a)); }
    void Subtract() { out << (a - b) << -a << (a -= b) << (in.Flag() ? a -= Itself(a) : a); }
    void Multiply()
    {
        const auto factor = static_cast<long long>(DrawWord());
        a = Int128::Mul(b.hi, factor);
        const long long taken = in.Flag() ? a.hi : factor;
        out << (b = in.Flag() ? a.hi : taken) << b << Int128();
    }
    void Divide()
    {
        try {
            const Int128 quotient = a / b;
            Require(b != Int128(0));
            a = quotient;
        } catch (const char* message) {
            Require(b == Int128(0));
            for (const char* letter = message; *letter != '\0'; ++letter) out << static_cast<int>(*letter);
        }
    }
    void AsDouble()
    {
        const double value = a.AsDouble();
        Require((a.hi >= 0 ? value >= 0 : value <= 0) && (a.hi != 0 || value == static_cast<double>(a.lo)));
        out << value;
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"comparisons", &IntegerState::Compare}, {"operator+", &IntegerState::Add},
                {"operator-", &IntegerState::Subtract},  {"Mul", &IntegerState::Multiply},
                {"operator/", &IntegerState::Divide},    {"AsDouble", &IntegerState::AsDouble}};
    }
};

/// What a walk over sets is about and how far it has come. One at a time in a thread, as functions have no object.
struct Walk
{
    unsigned long long n = 0, k = 0;
    bool isCombination = false;
    unsigned int calls = 0, callsToThrow = 0; ///< An exception comes with this call; never with 0.
    std::vector<unsigned long long> previous;
    Sink* sink = nullptr;

    /// Sets are in range and in lexicographic order. Several handlers get the same one. Nothing fails here, for what a
    /// handler throws leaves the set behind.
    template <class T>
    void Take(T* set)
    {
        const Aside aside;
        const std::vector<unsigned long long> present(set, set + k);
        for (std::size_t i = 0; i < present.size(); ++i) {
            Require(present[i] < n && (!isCombination || i == 0 || present[i] > present[i - 1]));
            Require(isCombination || std::find(present.begin() + static_cast<std::ptrdiff_t>(i) + 1, present.end(),
                                               present[i]) == present.end());
        }
        Require(previous.empty() || previous <= present);
        previous = present;
        *sink << present;
        // The set stays with the exception.
        if (++calls == callsToThrow) throw set;
    }
};
thread_local Walk walk;

/// Objects to call methods on; the second base moves its address.
template <class T>
struct Handler
{
    int kept = 0;
    virtual ~Handler() = default;
    virtual void Take(T* set) { walk.Take(set); }
    int TakeConst(T* set) const { return walk.Take(set), kept; }
};
template <class T>
struct OtherHandler
{
    double padding = 0;
    void TakeOther(T* set) { walk.Take(set); }
};
template <class T>
struct DerivedHandler : Handler<T>, OtherHandler<T>
{
    void Take(T* set) override { walk.Take(set); }
};

template <class T>
struct GeneratorState : State
{
    using State::State;
    using Generator = TSetGenerator<T>;
    Generator generators[2];
    unsigned int handlers[2][2] = {}; ///< For combinations and permutations of each generator.
    Handler<T> base;
    DerivedHandler<T> derived;

    ~GeneratorState() override { walk = Walk(); }
    static void TakeFunction(T* set) { walk.Take(set); }
    static T* TakeAndReturn(T* set) { return walk.Take(set), set; }

    void Fill() override
    {
        for (unsigned int i = 0; i < 3; ++i) Register();
    }
    void Show() const override { out << handlers[0][0] << handlers[0][1] << handlers[1][0] << handlers[1][1]; }

    void Register()
    {
        const unsigned int index = in.Below(2), kind = in.Below(10);
        if (handlers[index][0] + handlers[index][1] >= 6) return;
        AddHandler(generators[index], kind);
        ++handlers[index][kind < 6 ? 0 : 1];
    }
    void AddHandler(Generator& generator, unsigned int kind)
    {
        const Handler<T>* const readOnly = &base;
        switch (kind) {
        case 0:
            return generator.AddCombinationMethod(&base, &Handler<T>::Take);
        case 1:
            return generator.AddCombinationMethod(readOnly, &Handler<T>::TakeConst);
        case 2:
            return generator.AddCombinationMethod(&derived, &Handler<T>::Take);
        case 3:
            return generator.AddCombinationMethod(&derived, &OtherHandler<T>::TakeOther);
        case 4:
            return generator.AddCombinationFunction(&TakeFunction);
        case 5:
            return generator.AddCombinationFunction(&TakeAndReturn);
        case 6:
            return generator.AddPermutationMethod(&derived, &DerivedHandler<T>::Take);
        case 7:
            return generator.AddPermutationMethod(&base, &Handler<T>::TakeConst);
        case 8:
            return generator.AddPermutationFunction(&TakeFunction);
        default:
            return generator.AddPermutationFunction(&TakeAndReturn);
        }
    }
    void Assign()
    {
        const unsigned int target = in.Below(2), source = in.Below(3);
        if (source == 2)
            generators[target] = Generator();
        else
            generators[target] = generators[source];
        {
            const Aside aside;
            for (unsigned int i : {0u, 1u}) handlers[target][i] = source == 2 ? 0 : handlers[source][i];
        }
        Generator copy(generators[target]);
        // A share of its own, which goes again.
        if (in.Flag()) copy.AddCombinationFunction(&TakeFunction);
    }
    /// The number of sets of k of n, or something above `tooMany`.
    static constexpr unsigned int tooMany = 1000;
    static unsigned int CountSets(unsigned int n, unsigned int k, bool isCombination)
    {
        if (k == 0 || k > n) return 0;
        // Of combinations the smaller of k and n - k decides, and each factor leaves a whole number.
        const unsigned int factors = isCombination && k > n - k ? n - k : k;
        unsigned long long count = 1;
        for (unsigned int i = 0; i < factors && count <= tooMany; ++i)
            count = count * (n - i) / (isCombination ? i + 1 : 1);
        return static_cast<unsigned int>(count);
    }
    /// Walks over all sets, or up to an exception.
    void Generate()
    {
        const unsigned int index = in.Below(2), kind = in.Byte();
        // Permutations look for the next value in windows of 64.
        const unsigned int n = kind % 4 == 0 ? in.Byte() : in.Below(9);
        const unsigned int k = kind % 8 < 4 ? in.Below(5) : n - in.Below(3);
        walk = Walk();
        walk.n = n;
        walk.k = k;
        walk.isCombination = in.Flag();
        walk.sink = &out;
        if (in.Below(4) == 0) walk.callsToThrow = 1 + in.Below(20);
        const unsigned int sets = k > 255 ? tooMany + 1 : CountSets(n, k, walk.isCombination);
        const unsigned int perSet = handlers[index][walk.isCombination ? 0 : 1];
        if (sets > tooMany || sets * (perSet + 1) * (k + 1) > 20 * tooMany) return;
        try {
            if (walk.isCombination)
                generators[index].GenerateCombinations(static_cast<T>(n), static_cast<T>(k));
            else
                generators[index].GeneratePermutations(static_cast<T>(n), static_cast<T>(k));
        } catch (T* set) {
            Require(walk.calls == walk.callsToThrow && set[0] == walk.previous[0]);
            delete[] set;
            return;
        }
        Require(walk.calls == sets * perSet && (walk.callsToThrow == 0 || walk.calls < walk.callsToThrow));
    }
    /// Handlers that generate themselves, and write to the set.
    void Nest()
    {
        struct Nested
        {
            unsigned int written, calls = 0;
            void Take(T* set)
            {
                const Aside aside;
                ++calls;
                set[1] = static_cast<T>(written);
                Generator inner;
                inner.AddPermutationMethod(this, &Nested::CountInner);
                inner.GeneratePermutations(T(3), T(2));
            }
            void CountInner(const T*) { ++calls; }
        };
        Nested nested{in.Byte()};
        Generator outer;
        outer.AddCombinationMethod(&nested, &Nested::Take);
        outer.AddPermutationMethod(&nested, &Nested::Take);
        outer.GenerateCombinations(T(5), T(3));
        Require(nested.calls == 10 * 7);
        outer.GeneratePermutations(T(4), T(3));
        out << nested.calls;
    }

    static std::vector<Operation> GetOperations()
    {
        return {{"handlers", &GeneratorState::Register},
                {"operator=", &GeneratorState::Assign},
                {"Generate", &GeneratorState::Generate},
                {"Generate(nested)", &GeneratorState::Nest}};
    }
};

const Family exact([] {
    Add<IntegerState>("Int128", 3000);
    Add<GeneratorState<unsigned char>>("TSetGenerator<unsigned char>", 300);
    Add<GeneratorState<unsigned short>>("TSetGenerator<unsigned short>", 300);
    Add<GeneratorState<unsigned int>>("TSetGenerator<unsigned>", 300);
    Add<GeneratorState<unsigned long>>("TSetGenerator<unsigned long>", 300);
    Add<GeneratorState<unsigned long long>>("TSetGenerator<unsigned long long>", 300);
});

} // namespace
} // namespace CorvexCatalogue

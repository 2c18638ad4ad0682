// The 128-bit integers, held against those of the compiler, and the walks over combinations and permutations.

#include "Input.h"

#include <algorithm>
#include <vector>

namespace CorvexFuzz
{

__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 UnsignedWide;

// Integers of 128 bits.

struct IntegerState
{
    Int128 values[4];

    static const Operation<IntegerState> operations[];

    static UnsignedWide ToBits(const Int128& value)
    {
        return static_cast<UnsignedWide>(static_cast<unsigned long long>(value.hi)) << 64 | value.lo;
    }
    static bool Has(const Int128& value, UnsignedWide bits) { return ToBits(value) == bits; }
    static UnsignedWide Magnitude(const Int128& value) { return value.hi < 0 ? 0 - ToBits(value) : ToBits(value); }

    Int128& Choose(Input& in) { return values[in.Below(4)]; }

    /// A word of 64 bits: small, near an end of its range, or any.
    static unsigned long long Word(Input& in)
    {
        const unsigned int kind = in.Byte();
        const unsigned long long small = static_cast<unsigned long long>(kind / 4) - 32;
        if (kind % 4 == 0) return small;
        if (kind % 4 == 1) return small + (1ull << 63);
        if (kind % 4 == 2) return 1ull << (kind / 4);
        unsigned long long word = 0;
        for (unsigned int i = 0; i < 8; ++i) word = word << 8 | in.Byte();
        return word;
    }

    void Check() const
    {
        const Int128& a = values[0];
        const Int128& b = values[1];
        const Wide wideA = static_cast<Wide>(ToBits(a));
        const Wide wideB = static_cast<Wide>(ToBits(b));
        Require((a == b) == (wideA == wideB) && (a != b) == (wideA != wideB) && (a < b) == (wideA < wideB));
        Require((a > b) == (wideA > wideB) && (a <= b) == (wideA <= wideB) && (a >= b) == (wideA >= wideB));
    }

    /// The quotient as it is documented: equal magnitudes of opposite signs and the least value stand out.
    static UnsignedWide Quotient(const Int128& a, const Int128& b)
    {
        const UnsignedWide least = static_cast<UnsignedWide>(1) << 127;
        if (a == b) return 1;
        if (ToBits(a) == least || ToBits(b) == least || Magnitude(a) == Magnitude(b)) return 0;
        return static_cast<UnsignedWide>(static_cast<Wide>(ToBits(a)) / static_cast<Wide>(ToBits(b)));
    }
};

const Operation<IntegerState> IntegerState::operations[] = {
    {"Int128(value)",
     [](IntegerState& s, Input& in) {
         const long long value = static_cast<long long>(Word(in));
         Int128& target = s.Choose(in);
         target = Int128(value);
         Require(Has(target, static_cast<UnsignedWide>(static_cast<Wide>(value))) && Int128() == Int128(0));
     }},
    {"Int128(high, low)",
     [](IntegerState& s, Input& in) {
         const long long high = static_cast<long long>(Word(in));
         s.Choose(in) = Int128(high, Word(in));
     }},
    {"operator=",
     [](IntegerState& s, Input& in) {
         const Int128 copy(s.Choose(in));
         Int128& target = s.Choose(in);
         target = copy;
         Require(target == copy);
     }},
    {"operator=(value)",
     [](IntegerState& s, Input& in) {
         Int128& target = s.Choose(in);
         const long long outside = static_cast<long long>(Word(in));
         const bool isOwn = in.Flag();
         const long long taken = isOwn ? target.hi : outside;
         Require((isOwn ? target = target.hi : target = outside) == taken && target == Int128(taken));
     }},
    {"sum",
     [](IntegerState& s, Input& in) {
         Int128& a = s.Choose(in);
         const Int128& b = s.Choose(in);
         const UnsignedWide expected = ToBits(a) + ToBits(b);
         Require(Has(a + b, expected));
         a += b;
         Require(Has(a, expected));
     }},
    {"difference",
     [](IntegerState& s, Input& in) {
         Int128& a = s.Choose(in);
         const Int128& b = s.Choose(in);
         const UnsignedWide expected = ToBits(a) - ToBits(b);
         Require(Has(a - b, expected));
         a -= b;
         Require(Has(a, expected));
     }},
    {"negation",
     [](IntegerState& s, Input& in) {
         Int128& a = s.Choose(in);
         Require(Has(-a, 0 - ToBits(a)));
         a = -a;
     }},
    {"Mul",
     [](IntegerState& s, Input& in) {
         const long long a = static_cast<long long>(Word(in));
         const long long b = static_cast<long long>(Word(in));
         Int128& product = s.Choose(in);
         product = Int128::Mul(a, b);
         Require(Has(product, static_cast<UnsignedWide>(static_cast<Wide>(a) * static_cast<Wide>(b))));
     }},
    {"quotient",
     [](IntegerState& s, Input& in) {
         const Int128& a = s.Choose(in);
         const Int128& b = s.Choose(in);
         bool isThrown = false;
         Int128 quotient;
         try {
             quotient = a / b;
         } catch (const char*) {
             isThrown = true;
         }
         Require(isThrown == (b == Int128(0)) && (isThrown || Has(quotient, Quotient(a, b))));
         s.Choose(in) = quotient;
     }},
    {"AsDouble",
     [](IntegerState& s, Input& in) {
         const Int128& a = s.Choose(in);
         const double value = a.AsDouble();
         Require(a.hi >= 0 ? value >= 0 : value <= 0);
         Require(a.hi != 0 || value == static_cast<double>(a.lo));
     }},
};

// Combinations and permutations.

template <class T>
struct GeneratorState
{
    using Generator = TSetGenerator<T>;

    /// What the present walk is over and how far it has come. One for all, as functions have no object.
    struct Walk
    {
        T n = 0;
        T k = 0;
        bool isCombination = false;
        unsigned int calls = 0;
        unsigned int callsToThrow = 0; ///< An exception comes with this call; never with 0.
        std::vector<T> previous;

        /// Sets are in range and in lexicographic order. Several handlers get the same one.
        void Take(const T* set)
        {
            const std::vector<T> present(set, set + k);
            for (std::size_t i = 0; i < present.size(); ++i) {
                Require(present[i] < n && (!isCombination || i == 0 || present[i] > present[i - 1]));
                for (std::size_t j = 0; j < i && !isCombination; ++j) Require(present[i] != present[j]);
            }
            Require(previous.empty() || previous <= present);
            previous = present;
            // The set stays with the exception.
            if (++calls == callsToThrow) throw const_cast<T*>(set);
        }
    };
    static Walk walk;

    /// An object to call methods on; the second base moves its address.
    struct Base
    {
        T kept = 0;
        virtual ~Base() = default;
        virtual void Take(const T* set) { walk.Take(set); }
        int TakeConst(T* set) const
        {
            walk.Take(set);
            return static_cast<int>(kept);
        }
    };
    struct Other
    {
        double padding = 0;
        void TakeOther(const T* set) { walk.Take(set); }
    };
    struct Derived : Base, Other
    {
        void Take(const T* set) override { walk.Take(set); }
    };

    Generator generators[3];
    unsigned int handlers[3][2] = {}; ///< For combinations and permutations of each generator.
    Base base;
    Derived derived;

    static const Operation<GeneratorState> operations[];

    void Check() const {}

    static void TakeFunction(const T* set) { walk.Take(set); }
    static T* TakeAndReturn(T* set)
    {
        walk.Take(set);
        return set;
    }

    /// The number of sets of k of n, or `tooMany` if it is above.
    static constexpr unsigned int tooMany = 3000;
    static unsigned int CountSets(unsigned int n, unsigned int k, bool isCombination)
    {
        if (k == 0 || k > n) return 0;
        // Of combinations the smaller of k and n - k decides, and each factor leaves a whole number.
        const unsigned int factors = isCombination && k > n - k ? n - k : k;
        unsigned long long count = 1;
        for (unsigned int i = 0; i < factors; ++i) {
            count = count * (n - i) / (isCombination ? i + 1 : 1);
            if (count > tooMany) return tooMany + 1;
        }
        return static_cast<unsigned int>(count);
    }

    static void Generate(Generator& generator)
    {
        if (walk.isCombination)
            generator.GenerateCombinations(walk.n, walk.k);
        else
            generator.GeneratePermutations(walk.n, walk.k);
    }

    /// Walks, perhaps up to an exception.
    void Run(Input& in, bool withException)
    {
        const unsigned int index = in.Below(3);
        const unsigned int kind = in.Byte();
        const unsigned int n = kind % 4 == 0 ? in.Byte() : in.Below(9);
        const unsigned int k = kind % 8 < 4 ? in.Below(5) : n - in.Below(3);
        if (k > 255) return;
        walk = Walk();
        walk.n = static_cast<T>(n);
        walk.k = static_cast<T>(k);
        walk.isCombination = in.Flag();
        const unsigned int sets = CountSets(n, k, walk.isCombination);
        const unsigned int perSet = handlers[index][walk.isCombination ? 0 : 1];
        if (sets > tooMany || sets * (perSet + 1) * (k + 1) > 20 * tooMany) return;
        if (withException) walk.callsToThrow = 1 + in.Below(20);
        try {
            Generate(generators[index]);
        } catch (T* set) {
            Require(walk.calls == walk.callsToThrow && set[0] == walk.previous[0]);
            delete[] set;
            return;
        }
        Require(walk.calls == sets * perSet && (walk.callsToThrow == 0 || walk.calls < walk.callsToThrow));
    }

    bool HasRoom(unsigned int index) const { return handlers[index][0] + handlers[index][1] < 6; }
};

template <class T>
typename GeneratorState<T>::Walk GeneratorState<T>::walk;

template <class T>
const Operation<GeneratorState<T>> GeneratorState<T>::operations[] = {
    {"AddCombinationMethod",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         if (!s.HasRoom(index)) return;
         ++s.handlers[index][0];
         const Base* const readOnly = &s.base;
         switch (in.Below(4)) {
         case 0:
             return s.generators[index].AddCombinationMethod(&s.base, &Base::Take);
         case 1:
             return s.generators[index].AddCombinationMethod(readOnly, &Base::TakeConst);
         case 2:
             return s.generators[index].AddCombinationMethod(&s.derived, &Base::Take);
         default:
             return s.generators[index].AddCombinationMethod(&s.derived, &Other::TakeOther);
         }
     }},
    {"AddCombinationFunction",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         if (!s.HasRoom(index)) return;
         ++s.handlers[index][0];
         if (in.Flag())
             s.generators[index].AddCombinationFunction(&TakeFunction);
         else
             s.generators[index].AddCombinationFunction(&TakeAndReturn);
     }},
    {"AddPermutationMethod",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         if (!s.HasRoom(index)) return;
         ++s.handlers[index][1];
         if (in.Flag())
             s.generators[index].AddPermutationMethod(&s.derived, &Derived::Take);
         else
             s.generators[index].AddPermutationMethod(&s.base, &Base::TakeConst);
     }},
    {"AddPermutationFunction",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         if (!s.HasRoom(index)) return;
         ++s.handlers[index][1];
         if (in.Flag())
             s.generators[index].AddPermutationFunction(&TakeFunction);
         else
             s.generators[index].AddPermutationFunction(&TakeAndReturn);
     }},
    {"TSetGenerator(generator)",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         Generator copy(s.generators[index]);
         // A share of its own, which goes again.
         if (in.Flag()) copy.AddCombinationFunction(&TakeFunction);
     }},
    {"operator=",
     [](GeneratorState& s, Input& in) {
         const unsigned int target = in.Below(3);
         const unsigned int source = in.Below(3);
         s.generators[target] = s.generators[source];
         std::copy(s.handlers[source], s.handlers[source] + 2, s.handlers[target]);
     }},
    {"TSetGenerator()",
     [](GeneratorState& s, Input& in) {
         const unsigned int index = in.Below(3);
         s.generators[index] = Generator();
         std::fill(s.handlers[index], s.handlers[index] + 2, 0u);
     }},
    {"Generate", [](GeneratorState& s, Input& in) { s.Run(in, false); }},
    {"Generate with an exception", [](GeneratorState& s, Input& in) { s.Run(in, true); }},
    {"Generate within a handler, and write to the set",
     [](GeneratorState&, Input& in) {
         struct Nested
         {
             unsigned int written;
             unsigned int calls = 0;
             void Take(T* set)
             {
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
     }},
};

} // namespace CorvexFuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace CorvexFuzz;
    return RunOneOf<IntegerState, GeneratorState<unsigned char>, GeneratorState<unsigned short>,
                    GeneratorState<unsigned int>, GeneratorState<unsigned long>, GeneratorState<unsigned long long>>(
        data, size);
}

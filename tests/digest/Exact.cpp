// Wide integers, and combinations and permutations.

#include "tests/digest/Inputs.h"

namespace CorvexDigest
{
namespace
{

void AddWideIntegers(Report& report)
{
    Random random(9);
    std::vector<Int128> numbers = {0, 1, -1, Int128(0, ~0ull), Int128(~0ll, 0), Int128(1ll << 62, 5)};
    std::vector<long long> factors = {0, 1, -1, 0x7fffffffffffffffll, -0x7fffffffffffffffll};
    while (numbers.size() < 60) {
        const unsigned int shift = random.Below(63), lowShift = random.Below(63);
        const auto high = static_cast<long long>(random.Next()) >> shift;
        factors.push_back(high);
        numbers.push_back(Int128(high, random.Next() >> lowShift));
    }
    report.Over(numbers).Add("Int128::AsDouble", [](Digest& d, Int128& a) { d << a.AsDouble() << -a; });
    const auto pairs = report.Over(numbers, numbers);
    pairs.Add("Int128::comparisons", [](Digest& d, Int128& a, Int128& b) {
        d << (a == b) << (a != b) << (a < b) << (a > b) << (a <= b) << (a >= b);
    });
    pairs.Add("Int128::operator+", [](Digest& d, Int128& a, Int128& b) { d << (a + b) << (a += b) << (a += Same(a)); });
    pairs.Add("Int128::operator-", [](Digest& d, Int128& a, Int128& b) { d << (a - b) << (a -= b) << (a -= Same(a)); });
    pairs.Add("Int128::operator/", [](Digest& d, Int128& a, Int128& b) {
        try {
            d << a / b;
        } catch (const char* message) {
            d << std::strlen(message);
        }
    });
    report.Over(factors, factors).Add("Int128::Mul", [](Digest& d, long long a, long long b) {
        Int128 c = a;
        d << Int128::Mul(a, b) << c << (c = b) << c;
    });
}

template <class T>
struct Recorder
{
    Digest digest;
    T size;

    void Take(T* set) { digest.TakeArray(set, size); }
    void TakeTwice(T* set)
    {
        Take(set);
        Take(set);
    }

    static inline Recorder* current = nullptr;
    static void TakeStatic(T* set) { current->Take(set); }
};

template <class T>
void AddSets(Report& report, const std::string& type)
{
    report.Add("TSetGenerator<" + type + ">::Generate", [](Digest& d) {
        const auto generate = [&d](T n, T k) {
            Recorder<T> recorder{Digest(), k};
            Recorder<T>::current = &recorder;
            TSetGenerator<T> generator, assigned;
            assigned = generator;
            generator.AddCombinationMethod(&recorder, &Recorder<T>::Take);
            generator.AddCombinationMethod(&recorder, &Recorder<T>::TakeTwice);
            generator.AddCombinationFunction(&Recorder<T>::TakeStatic);
            TSetGenerator<T> copy(generator);
            generator.AddPermutationMethod(&recorder, &Recorder<T>::Take);
            generator.AddPermutationFunction(&Recorder<T>::TakeStatic);
            copy.GenerateCombinations(n, k);
            generator.GeneratePermutations(n, k);
            assigned = generator;
            assigned.GenerateCombinations(n, k);
            d << recorder.digest.Get();
        };
        for (T n = 0; n < 7; ++n)
            for (T k = 0; k <= n + 1; ++k) generate(n, k);
        // Permutations look for the next value in windows of 64.
        generate(64, 1);
        generate(130, 2);
    });
}

} // namespace

void DigestExact(Report& report)
{
    AddWideIntegers(report);
    AddSets<unsigned char>(report, "unsigned char");
    AddSets<unsigned short>(report, "unsigned short");
    AddSets<unsigned int>(report, "unsigned");
    AddSets<unsigned long>(report, "unsigned long");
    AddSets<unsigned long long>(report, "unsigned long long");
}

} // namespace CorvexDigest

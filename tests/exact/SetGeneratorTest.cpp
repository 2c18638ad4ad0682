// The walks over combinations and permutations, and the handlers they call.

#include <CorvexMaths/exact/TSetGenerator.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using Halmont::Orrin::CorvexMaths::TSetGenerator;

// Records the sets it is handed and writes to them. `Walk` is the plain form of both walks.
template <class T>
struct Recorder
{
    T n, k;
    bool permutes;
    std::vector<T> taken = {}, set = std::vector<T>(k + 1u);

    void Take(T* values)
    {
        taken.insert(taken.end(), values, values + k);
        values[taken.size() % 7 % k] = static_cast<T>(taken.size() % n);
    }
    void Walk(T position, T least)
    {
        for (T c = permutes ? T(0) : least; c < n; ++c) {
            bool isFree = k != 0;
            for (T i = 0; permutes && i < position; ++i) isFree = isFree && set[i] != c;
            if (isFree) set[position] = c;
            if (isFree && position + 1 == k) Take(set.data());
            if (isFree && position + 1 < k) Walk(static_cast<T>(position + 1), static_cast<T>(c + 1));
        }
    }
};

template <class T>
struct SetGeneratorTest : ::testing::Test
{};
using Values = ::testing::Types<unsigned char, unsigned short, unsigned int, unsigned long, unsigned long long>;
TYPED_TEST_SUITE(SetGeneratorTest, Values, );

TYPED_TEST(SetGeneratorTest, WalksInLexicographicOrderAlsoWhenHandlersWriteToTheSet)
{
    using T = TypeParam;
    const std::tuple<T, T> sizes[] = {{3, 0}, {3, 4}, {0, 0}, {3, 1}, {5, 5}, {6, 4}, {64, 2}, {130, 2}, {255, 2}};
    for (const auto& [n, k] : sizes) {
        Recorder<T> combined{n, k, false}, permuted{n, k, true}, plain[] = {combined, permuted};
        TSetGenerator<T> generator;
        generator.AddCombinationMethod(&combined, &Recorder<T>::Take);
        generator.AddPermutationMethod(&permuted, &Recorder<T>::Take);
        generator.GenerateCombinations(n, k), generator.GeneratePermutations(n, k);
        for (auto& walk : plain) walk.Walk(0, 0);
        EXPECT_TRUE(combined.taken == plain[0].taken && permuted.taken == plain[1].taken) << +n << ' ' << +k;
    }
}

static std::string calls;

struct First
{
    int Plain(unsigned int* set) { return calls += std::to_string(set[0]) + std::to_string(set[1]) + ' ', 0; }
};
struct Second
{
    std::string name = "second ";
    virtual ~Second() = default;
    virtual void Virtual(const unsigned int*) const noexcept { calls += name; }
};
struct Both : First, Second
{};

TEST(SetGeneratorHandlersTest, AreCalledMethodsFirstAndSharedByCopies)
{
    using Generator = TSetGenerator<unsigned int>;
    static_assert(sizeof(Generator) == 5 * sizeof(void*) + 4 * sizeof(unsigned int));
    Both both;
    Generator copy, third;
    {
        Generator generator;
        generator.AddCombinationFunction(+[](const unsigned int* set) noexcept { return calls += "1 ", *set; });
        generator.AddCombinationFunction(+[](unsigned int*) { calls += "2 "; });
        generator.AddCombinationMethod(&std::as_const(both), &Second::Virtual);
        generator.AddPermutationMethod(&both, &First::Plain);
        third = copy = generator;
        third.AddCombinationFunction(+[](unsigned int* set) { throw std::unique_ptr<unsigned int[]>(set); });
    }
    copy.GenerateCombinations(2, 2), copy.GeneratePermutations(2, 2);
    EXPECT_EQ(calls, "second 1 2 01 10 ");
    // The set is left to whoever catches the exception.
    EXPECT_THROW(third.GenerateCombinations(2, 2), std::unique_ptr<unsigned int[]>);
}

// The walks over combinations and permutations, and the handlers they call.

#include <CorvexMaths/exact/TSetGenerator.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>

using Halmont::Orrin::CorvexMaths::TSetGenerator;

/// Writes down the sets it is handed, a letter for each value, and may then write the greatest value to their start.
template <class T>
struct Recorder
{
    T n, k;
    bool writes;
    std::string sets = {};
    void Take(T* set)
    {
        for (T i = 0; i < k; ++i) sets += static_cast<char>('a' + set[i]);
        sets += ' ';
        if (writes) set[0] = static_cast<T>(n - 1);
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
    const std::tuple<T, T, bool, const char*, const char*> rows[] = {
        {3, 0, true, "", ""},
        {3, 4, true, "", ""},
        {0, 0, true, "", ""},
        {3, 1, true, "a b c ", "a b c "},
        {4, 2, false, "ab ac ad bc bd cd ", "ab ac ad ba bc bd ca cb cd da db dc "},
        {3, 3, false, "abc ", "abc acb bac bca cab cba "},
        {3, 2, true, "ab cc bc ", "ab ba cb ca cb "}};
    for (const auto& [n, k, writes, combinations, permutations] : rows) {
        Recorder<T> combined{n, k, writes}, permuted{n, k, writes};
        TSetGenerator<T> generator;
        generator.AddCombinationMethod(&combined, &Recorder<T>::Take);
        generator.AddPermutationMethod(&permuted, &Recorder<T>::Take);
        generator.GenerateCombinations(n, k), generator.GeneratePermutations(n, k);
        EXPECT_TRUE(combined.sets == combinations && permuted.sets == permutations) << +n << ' ' << +k;
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

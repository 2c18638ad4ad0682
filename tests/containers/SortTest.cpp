// The sort of the library's own against the C library's: the same comparisons and the same order.

#include <CorvexMaths/containers/StableSort.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace Halmont::Orrin::CorvexUtilities;

/// An element of `size` bytes, known by a number of its own.
template <unsigned int size>
struct Element
{
    unsigned int key, number;
    unsigned char rest[size - 8];
};

enum Manner
{
    ByKey,
    Random,
    Always
} manner;
std::vector<std::pair<unsigned int, unsigned int>> compared;
std::size_t throwsAt;

template <class E>
int Compare(const void* a, const void* b)
{
    const E& first = *static_cast<const E*>(a);
    const E& second = *static_cast<const E*>(b);
    compared.push_back({first.number, second.number});
    if (compared.size() == throwsAt) throw std::runtime_error("comparison");
    if (manner == Always) return -1;
    if (manner == Random) return static_cast<int>((compared.size() * 2654435761u >> 7) % 3) - 1;
    return (first.key > second.key) - (first.key < second.key);
}

template <class E>
std::vector<unsigned int> Numbers(const std::vector<E>& elements)
{
    std::vector<unsigned int> numbers;
    for (const E& element : elements) numbers.push_back(element.number);
    return numbers;
}

template <class E>
void OwnSort(std::vector<E>* elements)
{
    std::vector<unsigned char> buffer(elements->size() * sizeof(E) + 1);
    MergeSort(reinterpret_cast<unsigned char*>(elements->data()), elements->size(), sizeof(E), &Compare<E>,
              buffer.data());
}

template <class E>
class StableSortTest : public testing::Test
{};
using Sizes = testing::Types<Element<12>, Element<16>, Element<32>, Element<40>, Element<264>>;
struct SizeNames
{
    template <class E>
    static std::string GetName(int)
    {
        return std::to_string(sizeof(E)) + "bytes";
    }
};
TYPED_TEST_SUITE(StableSortTest, Sizes, SizeNames);

#if defined(__GLIBC__)
TYPED_TEST(StableSortTest, MakesTheComparisonsOfTheLibrary)
{
    std::mt19937 random(20);
    for (const std::size_t n : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 8u, 31u, 64u, 100u, 1000u}) {
        for (const Manner chosen : {ByKey, Random, Always}) {
            manner = chosen;
            std::vector<TypeParam> own(n);
            for (unsigned int i = 0; i < n; ++i) own[i] = {static_cast<unsigned int>(random() % (n / 2 + 1)), i, {}};
            std::vector<TypeParam> theirs = own;
            compared.clear();
            OwnSort(&own);
            const auto ownCompared = compared;
            compared.clear();
            StableSort(theirs.data(), n, sizeof(TypeParam), &Compare<TypeParam>);
            EXPECT_TRUE(ownCompared == compared && Numbers(own) == Numbers(theirs)) << n << " in manner " << chosen;
        }
    }
}
#endif

TYPED_TEST(StableSortTest, LosesNothingWhereAComparisonThrows)
{
    manner = Random;
    for (throwsAt = 1; throwsAt < 20; ++throwsAt) {
        std::vector<TypeParam> elements(9);
        for (unsigned int i = 0; i < 9; ++i) elements[i].number = i;
        compared.clear();
        try {
            OwnSort(&elements);
        } catch (const std::runtime_error&) {
        }
        std::vector<unsigned int> numbers = Numbers(elements);
        std::sort(numbers.begin(), numbers.end());
        EXPECT_EQ(numbers, (std::vector<unsigned int>{0, 1, 2, 3, 4, 5, 6, 7, 8})) << throwsAt;
    }
    throwsAt = 0;
}

} // namespace

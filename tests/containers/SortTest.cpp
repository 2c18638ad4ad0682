// The sort of the library's own against the C library's: the same comparisons and the same order.

#include <CorvexMaths/containers/StableSort.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
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

/// What was compared, which comparison throws, and whether answers follow the keys, their own count, or are all -1.
std::vector<std::pair<unsigned int, unsigned int>> compared;
std::size_t throwsAt;
enum Manner
{
    ByKey,
    Random,
    Always
} manner;

template <class E>
int Compare(const void* a, const void* b)
{
    const E &first = *static_cast<const E*>(a), &second = *static_cast<const E*>(b);
    compared.push_back({first.number, second.number});
    if (compared.size() == throwsAt) throw compared.size();
    if (manner == Always) return -1;
    if (manner == Random) return static_cast<int>((compared.size() * 2654435761u >> 7) % 3) - 1;
    return (first.key > second.key) - (first.key < second.key);
}

template <class E>
void OwnSort(std::vector<E>* elements)
{
    std::vector<unsigned char> buffer(elements->size() * sizeof(E) + 1);
    compared.clear();
    MergeSort(reinterpret_cast<unsigned char*>(elements->data()), elements->size(), sizeof(E), &Compare<E>,
              buffer.data());
}

template <class E>
class StableSortTest : public testing::Test
{};
using Sizes = testing::Types<Element<12>, Element<16>, Element<32>, Element<40>, Element<264>>;
TYPED_TEST_SUITE(StableSortTest, Sizes, );

// The address sanitizer puts a function of its own in the place of qsort, which compares more.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
TYPED_TEST(StableSortTest, MakesTheComparisonsOfTheLibrary)
{
    std::mt19937 random(20);
    for (const std::size_t n : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 8u, 31u, 64u, 100u, 1000u}) {
        for (const Manner chosen : {ByKey, Random, Always}) {
            manner = chosen;
            std::vector<TypeParam> own(n);
            for (unsigned int i = 0; i < n; ++i) own[i] = {static_cast<unsigned int>(random() % (n / 2 + 1)), i, {}};
            std::vector<TypeParam> theirs = own;
            OwnSort(&own);
            const auto ownCompared = std::exchange(compared, {});
            StableSort(theirs.data(), n, sizeof(TypeParam), &Compare<TypeParam>);
            const auto isSame = [](const TypeParam& a, const TypeParam& b) { return a.number == b.number; };
            EXPECT_TRUE(ownCompared == compared && std::equal(own.begin(), own.end(), theirs.begin(), isSame)) << n;
        }
    }
}
#endif

TYPED_TEST(StableSortTest, LosesNothingWhereAComparisonThrows)
{
    manner = Random;
    for (throwsAt = 1; throwsAt < 20; ++throwsAt) {
        std::vector<TypeParam> elements(9);
        for (unsigned int i = 0; i < 9; ++i) elements[i].number = 1u << i;
        try {
            OwnSort(&elements);
        } catch (std::size_t) {
        }
        unsigned int all = 0;
        for (const TypeParam& element : elements) all += element.number;
        EXPECT_EQ(all, 0x1ffu) << throwsAt;
    }
    throwsAt = 0;
}

} // namespace

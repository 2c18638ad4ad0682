// The interface of exact integers and of the generator of sets.

#include "tests/library/Interface.h"

#include <CorvexMaths/exact/Int128.h>
#include <CorvexMaths/exact/TSetGenerator.h>

using namespace CorvexTest;
using namespace Halmont::Orrin::CorvexMaths;

namespace
{

struct Handler
{};

template <class T, class G = TSetGenerator<T>>
void NameSetGenerator()
{
    static_assert(Makes<G> && Copies<G> && !std::is_polymorphic_v<G>);
    Has<G, void(T, T)>({&G::GenerateCombinations, &G::GeneratePermutations});
}

} // namespace

TEST(ExactInterfaceTest, Int128)
{
    using I = Int128;
    using Wide = long long;
    static_assert(Makes<I> && Makes<I, Wide> && Makes<I, Wide, unsigned long long> && Copies<I>);
    static_assert(std::is_convertible_v<Wide, I>);
    static_assert(std::is_trivially_copyable_v<I> && std::is_standard_layout_v<I> && sizeof(I) == 16);
    Has<I, unsigned long long, Wide, Wide(const Wide&)>({&I::lo}, {&I::hi}, {&I::operator=});
    const I value;
    EXPECT_TRUE(InOrder(value.lo, value.hi));
    Has<I, bool(const I&) const, I&(const I&)>({&I::operator==, &I::operator!=}, {&I::operator+=, &I::operator-=});
    Has<I, bool(const I&) const>({&I::operator<, &I::operator>, &I::operator<=, &I::operator>=});
    Has<I, I(const I&) const, I() const>({&I::operator+, &I::operator-, &I::operator/}, {&I::operator-});
    HasStatic<I(Wide, Wide)>({&I::Mul});
    Has<I, double() const>({&I::AsDouble});
}

TEST(ExactInterfaceTest, SetGenerator)
{
    NameSetGenerator<unsigned char>(), NameSetGenerator<unsigned short>(), NameSetGenerator<unsigned int>();
    NameSetGenerator<unsigned long>(), NameSetGenerator<unsigned long long>();

    using G = TSetGenerator<unsigned char>;
    using Method = void (Handler::*)(const unsigned char*);
    using ConstMethod = int (Handler::*)(unsigned char*) const;
    Has<G, void(Handler*, Method)>(
        {&G::template AddCombinationMethod<Handler, Method>, &G::template AddPermutationMethod<Handler, Method>});
    Has<G, void(const Handler*, ConstMethod)>({&G::template AddCombinationMethod<const Handler, ConstMethod>});
    Has<G, void(void (*)(const unsigned char*))>({&G::template AddCombinationFunction<void, const unsigned char*>});
    Has<G, void(int (*)(unsigned char*))>({&G::template AddPermutationFunction<int, unsigned char*>});
}

#pragma once

/// Makes the k-th allocation of a program fail, and counts the blocks in use. For one source of a test program.

#include <cstdlib>
#include <new>

namespace CorvexTest
{

/// Which allocation from now on fails; 0 for none.
inline unsigned long failingAllocation = 0;
/// Allocations not yet released.
inline long blocksInUse = 0;

inline void* AllocateOrFail(std::size_t size)
{
    if (failingAllocation != 0 && --failingAllocation == 0) throw std::bad_alloc();
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++blocksInUse;
    return block;
}

inline void Release(void* block) noexcept
{
    if (block != nullptr) --blocksInUse;
    std::free(block);
}

/// Runs `change` with its first, second ... allocation failing until all succeed, each time on what `make` makes, and
/// calls check(object, failed). Returns how many allocations failed, or -1 if a block was lost.
template <class Make, class Change, class Check>
int FailEachAllocation(const Make& make, const Change& change, const Check& check)
{
    for (int failures = 0;; ++failures) {
        const long before = blocksInUse;
        bool failed = false;
        {
            auto object = make();
            failingAllocation = static_cast<unsigned long>(failures) + 1;
            try {
                change(object);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            failingAllocation = 0;
            check(object, failed);
        }
        if (blocksInUse != before) return -1;
        if (!failed) return failures;
    }
}

} // namespace CorvexTest

void* operator new(std::size_t size)
{
    return CorvexTest::AllocateOrFail(size);
}
void* operator new[](std::size_t size)
{
    return CorvexTest::AllocateOrFail(size);
}
void operator delete(void* block) noexcept
{
    CorvexTest::Release(block);
}
void operator delete[](void* block) noexcept
{
    CorvexTest::Release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    CorvexTest::Release(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    CorvexTest::Release(block);
}

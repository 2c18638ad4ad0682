// Makes memory run out in every operation of the catalogue in every instantiation, at each of its allocations in turn,
// once alone and once with all that follow; and makes each hook of a derived class throw in turn.
//
//   corvex_faults [STATES [PART/PARTS [NAME]]]
//
// What must come out of memory that runs out is `std::bad_alloc`, unless the operation can do without and answers as
// ever. The objects are then as they were, or fit for any use if the operation is marked `Valid`; fit for any use they
// are after a hook that throws, too. So they are shown, checked, given to the operation once more, to another one and
// to Fill, and released; no block may be lost. Each operation runs on so many states, 1 if that is not said. Of so
// many parts of the catalogue one is run, the first being 0, and with a NAME what begins with it. Prints a line for
// each operation, and a total.

#include <tests/catalogue/Operations.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <utility>

using namespace CorvexCatalogue;

namespace
{

/// Each of so many allocations or hooks is made to fail, beyond that some of them, at even steps.
constexpr unsigned long mostInTurn = 50;

/// What fails: allocations from one to another, or a hook; none where it is 0.
struct Failure
{
    unsigned long first = 0, last = 0, hook = 0;
} failure;
/// Allocations and hooks since the failure was set, and blocks not yet released.
unsigned long allocations = 0, hooks = 0;
long blocksInUse = 0;

void Set(const Failure& next)
{
    failure = next;
    allocations = hooks = 0;
}

void* Allocate(std::size_t size)
{
    ++allocations;
    const bool fails = failure.first != 0 && allocations >= failure.first && allocations <= failure.last;
    void* const block = fails ? nullptr : std::malloc(size != 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    ++blocksInUse;
    return block;
}

void Release(void* block)
{
    if (block != nullptr) --blocksInUse;
    std::free(block);
}

/// What a hook throws.
struct HookFailure
{};
void CallHook()
{
    if (++hooks == failure.hook) throw HookFailure();
}

enum Count
{
    Allocations,
    Hooks,
    Failures,
    Lost,
    Changed, ///< objects that should be as they were
    Strange, ///< exceptions of another kind, or other answers than without a failure
    countOfCounts
};
using Counts = std::array<unsigned long, countOfCounts>;

void Print(const char* name, const Counts& counts)
{
    std::printf("%-58s %8lu allocations %7lu hooks %8lu failures %lu lost", name, counts[Allocations], counts[Hooks],
                counts[Failures], counts[Lost]);
    if (counts[Changed] != 0) std::printf(", %lu CHANGED", counts[Changed]);
    if (counts[Strange] != 0) std::printf(", %lu OTHER EXCEPTIONS OR ANSWERS", counts[Strange]);
    std::putchar('\n');
}

/// A state by itself, filled from a seed.
struct Trial
{
    Source source;
    Sink sink;
    std::unique_ptr<State> state;

    Trial(const Instance& instance, unsigned int seed) : source(seed), state(instance.make(source, sink))
    {
        state->Fill();
    }
    void Run(const Operation& operation) { (*state.*operation.run)(); }
    /// The objects as they are, but for the room in lists.
    std::uint64_t Show()
    {
        const Sink answers = std::exchange(sink, Sink());
        sink.takesCapacities = false;
        state->Show();
        return std::exchange(sink, answers).Get();
    }
    /// All answers so far and the objects.
    std::uint64_t Conclude()
    {
        state->Check();
        state->Show();
        return sink.Get();
    }
};

/// The state in which something fails, and what its objects were when the operation last worked for itself.
Trial* failing = nullptr;
std::uint64_t before;

/// Lets nothing fail while an operation works for itself, and counts nothing.
void StepAside(bool begins)
{
    static unsigned int depth = 0;
    static Failure suspended;
    static unsigned long made, called;
    if (begins && depth++ == 0) {
        suspended = std::exchange(failure, Failure());
        made = allocations;
        called = hooks;
    } else if (!begins && --depth == 0) {
        if (failing != nullptr) before = failing->Show();
        failure = suspended;
        allocations = made;
        hooks = called;
    }
}

/// Runs an operation on a fresh state in which something fails, and then uses the state.
void Fail(const Instance& instance, std::size_t index, unsigned int seed, const Failure& next, std::uint64_t answer,
          Counts& counts)
{
    const std::vector<Operation>& operations = instance.operations;
    Trial trial(instance, seed);
    failing = &trial;
    before = trial.Show();
    bool isOut = false, isHook = false;
    Set(next);
    try {
        trial.Run(operations[index]);
    } catch (const std::bad_alloc&) {
        isOut = true;
    } catch (const HookFailure&) {
        isHook = true;
    } catch (...) {
        ++counts[Strange];
    }
    Set({});
    failing = nullptr;
    ++counts[Failures];

    if (isHook != (next.hook != 0)) ++counts[Strange];
    if (isOut && operations[index].promise == Promise::Unchanged && trial.Show() != before) ++counts[Changed];
    const std::uint64_t end = trial.Conclude();
    if (!isOut && !isHook && end != answer) ++counts[Strange];
    trial.Run(operations[index]);
    trial.Run(operations[(index + next.first + next.hook) % operations.size()]);
    trial.Conclude();
    trial.state->Fill();
    trial.Conclude();
}

/// Calls visit(k) for some or all k from 1 to a count.
template <class Visit>
void VisitSome(unsigned long count, Visit visit)
{
    const unsigned long step = std::max(1ul, (count - std::min(count, mostInTurn)) / mostInTurn);
    for (unsigned long k = 1; k <= count; k += k < mostInTurn ? 1 : step) visit(k);
}

Counts FailAll(const Instance& instance, std::size_t index, unsigned int seed)
{
    Counts counts{};
    std::uint64_t answer;
    {
        Trial trial(instance, seed);
        Set({});
        trial.Run(instance.operations[index]);
        counts[Allocations] = allocations;
        counts[Hooks] = hooks;
        answer = trial.Conclude();
    }
    const auto fail = [&](const Failure& next) {
        running = instance.name + "::" + instance.operations[index].name + " on state " + std::to_string(seed) +
                  (next.hook != 0 ? " with hook " : " with allocation ") + std::to_string(next.first + next.hook) +
                  (next.last > next.first ? " and those after it" : "") + " failing";
        const long blocks = blocksInUse;
        Fail(instance, index, seed, next, answer, counts);
        counts[Lost] += static_cast<unsigned long>(std::max(0l, blocksInUse - blocks));
    };
    VisitSome(counts[Allocations], [&](unsigned long k) {
        fail({k, k, 0});
        fail({k, ~0ul, 0});
    });
    VisitSome(counts[Hooks], [&](unsigned long k) { fail({0, 0, k}); });
    return counts;
}

} // namespace

void* operator new(std::size_t size)
{
    return Allocate(size);
}
void* operator new[](std::size_t size)
{
    return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
try {
    return Allocate(size);
} catch (const std::bad_alloc&) {
    return nullptr;
}
void operator delete(void* block) noexcept
{
    Release(block);
}
void operator delete[](void* block) noexcept
{
    Release(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    Release(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    Release(block);
}

int main(int argumentCount, char** arguments)
{
    const int states = argumentCount > 1 ? std::atoi(arguments[1]) : 1;
    unsigned int part = 0, parts = 1, number = 0;
    if (argumentCount > 2) std::sscanf(arguments[2], "%u/%u", &part, &parts);
    const std::string start = argumentCount > 3 ? arguments[3] : "";
    running.reserve(1000);
    tellAside = &StepAside;
    tellHook = &CallHook;

    Counts total{};
    for (const Instance& instance : GetCatalogue()) {
        if (number++ % parts != part % parts) continue;
        for (std::size_t index = 0; index < instance.operations.size(); ++index) {
            const std::string name = instance.name + "::" + instance.operations[index].name;
            if (name.compare(0, start.size(), start) != 0) continue;
            Counts all{};
            for (int seed = 0; seed < states; ++seed) {
                const Counts counts = FailAll(instance, index, static_cast<unsigned int>(seed));
                for (unsigned int i = 0; i < countOfCounts; ++i) all[i] += counts[i], total[i] += counts[i];
            }
            Print(name.c_str(), all);
        }
    }
    Print("all", total);
    return total[Lost] + total[Changed] + total[Strange] == 0 ? 0 : 1;
}

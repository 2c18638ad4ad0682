#include "Rows.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Peers
{

/// What the others are held to; made when it is first asked for.
struct Row::Reference
{
    std::function<Work()> make;
    double bound;
    Values values = {};

    const Values& Get()
    {
        if (values.empty()) {
            const Work work = make();
            if (work.prepare) work.prepare();
            work.run();
            values = work.result();
        }
        return values;
    }

    /// Empty if the values agree, else what does not.
    std::string Compare(const Values& others)
    {
        const Values& ours = Get();
        if (others.size() != ours.size() || ours.empty())
            return std::to_string(others.size()) + " values against our " + std::to_string(ours.size());
        double scale = 0;
        for (const double value : ours) scale = std::max(scale, std::abs(value));
        for (std::size_t i = 0; i < ours.size(); ++i) {
            // Written so that NaN disagrees.
            if (std::abs(others[i] - ours[i]) <= bound * scale) continue;
            return "value " + std::to_string(i) + " is " + std::to_string(others[i]) + " against our " +
                   std::to_string(ours[i]);
        }
        return {};
    }
};

Row::Row(std::string rowName, double bound, double itemCount)
    : name(std::move(rowName)), items(itemCount), reference(std::make_shared<Reference>(Reference{nullptr, bound}))
{}

const Row& Row::Add(const std::string& who, std::function<Work()> make) const
{
    if (!reference->make) reference->make = make;
    const auto time = [make, shared = reference, count = items](benchmark::State& state) {
        const Work work = make();
        const auto prepare = [&] {
            if (work.prepare) work.prepare();
        };
        prepare();
        work.run();
        const std::string disagreement = shared->Compare(work.result());
        if (!disagreement.empty()) {
            state.SkipWithError(disagreement.c_str());
            return;
        }
        for (auto _ : state) {
            if (work.prepare) {
                state.PauseTiming();
                prepare();
                state.ResumeTiming();
            }
            work.run();
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) * count));
    };
    benchmark::RegisterBenchmark((name + "/" + who).c_str(), time);
    return *this;
}

} // namespace Peers

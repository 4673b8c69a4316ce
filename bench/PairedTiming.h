// Times the work under test and a baseline doing the bare same work in every
// iteration, one right after the other, so that both see the same machine at
// the same moment. Which of the two goes first alternates: whatever the
// first leaves in the caches (the input both read, the allocator's free
// memory) then helps each of them equally often. The benchmark's time is the
// work's; the counter "ratio" is the work's total time over the baseline's,
// "baseline_us" the baseline's time per iteration.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

class PairedTiming {
public:
    explicit PairedTiming(benchmark::State& state) : state_(state) {}
    PairedTiming(const PairedTiming&) = delete;
    PairedTiming& operator=(const PairedTiming&) = delete;

    // One iteration: the work and the baseline. Anything the caller does
    // outside these two calls is not timed (the benchmark uses manual time).
    template <typename Work, typename Baseline>
    void Iteration(Work&& work, Baseline&& baseline) {
        Seconds workTime{};
        if (iterations_ % 2 == 0) {
            workTime = Time(work);
            baselineTotal_ += Time(baseline);
        } else {
            baselineTotal_ += Time(baseline);
            workTime = Time(work);
        }
        workTotal_ += workTime;
        ++iterations_;
        state_.SetIterationTime(workTime.count());
    }

    ~PairedTiming() {
        if (iterations_ > 0 && baselineTotal_.count() > 0) {
            state_.counters["ratio"] = workTotal_ / baselineTotal_;
            state_.counters["baseline_us"] = baselineTotal_.count() * 1e6 / static_cast<double>(iterations_);
        }
    }

private:
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;

    template <typename Run>
    static Seconds Time(Run& run) {
        const Clock::time_point start = Clock::now();
        run();
        return Clock::now() - start;
    }

    benchmark::State& state_;
    Seconds workTotal_{0};
    Seconds baselineTotal_{0};
    long iterations_ = 0;
};

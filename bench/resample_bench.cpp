/// Scaling against copying the same source in the same run: the counter `copies` is how many times
/// the source picture could be copied in the time that scaling it takes.

#include "cocoa/CoreGraphics/resample.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

using namespace cocoa::cg;

namespace {

struct Job {
    const char* name;
    int fromWidth, fromHeight, toWidth, toHeight;
};

constexpr Job jobs[] = {
    {"photo to screen", 4000, 3000, 1000, 750},
    {"photo to thumbnail", 4000, 3000, 160, 120},
    {"screen to half", 1920, 1080, 960, 540},
    {"icon to screen", 256, 256, 1024, 1024},
};

class MemoryRows final : public RowSource {
public:
    MemoryRows(const std::vector<std::uint8_t>& samples, int width, int height, int channels)
        : RowSource(width, height, channels)
        , samples(samples) {}

    const std::uint8_t* row(int y, std::uint8_t*) override {
        return samples.data() + static_cast<std::size_t>(y) * rowBytes();
    }

private:
    const std::vector<std::uint8_t>& samples;
};

std::vector<std::uint8_t> pattern(const Job& job, int channels) {
    std::vector<std::uint8_t> samples(static_cast<std::size_t>(job.fromWidth) * job.fromHeight *
                                      channels);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::uint8_t>(i * i >> 7 | 128);
    }
    return samples;
}

void scale(const Job& job, const std::vector<std::uint8_t>& from, std::vector<std::uint8_t>& to,
           int channels, const ResampleKernels& kernels) {
    const Axis x = {0, double(job.toWidth), 0, job.toWidth};
    const Axis y = {0, double(job.toHeight), 0, job.toHeight};
    ScaledRows rows(std::make_unique<MemoryRows>(from, job.fromWidth, job.fromHeight, channels),
                    horizontalBank(Filter::Lanczos3, job.fromWidth, x, channels),
                    verticalBank(Filter::Lanczos3, job.fromHeight, y), kernels);
    for (int line = 0; line < rows.height; ++line) {
        rows.row(line, to.data() + static_cast<std::size_t>(line) * rows.rowBytes());
    }
}

/// Of this thread alone: the machine may be busy with other things.
double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <typename Work>
double secondsOf(const Work& work) {
    const double start = processorSeconds();
    work();
    benchmark::ClobberMemory();
    return processorSeconds() - start;
}

double secondsOfCopy(const std::vector<std::uint8_t>& from) {
    std::vector<std::uint8_t> copy(from.size());
    double best = 1e9;
    for (int i = 0; i < 9; ++i) {
        best =
            std::min(best, secondsOf([&] { std::memcpy(copy.data(), from.data(), from.size()); }));
    }
    return best;
}

void run(benchmark::State& state, const Job& job, int channels, const ResampleKernels& kernels) {
    const std::vector<std::uint8_t> from = pattern(job, channels);
    std::vector<std::uint8_t> to(static_cast<std::size_t>(job.toWidth) * job.toHeight * channels);
    double best = 1e9;
    for (auto _ : state) {
        best = std::min(best, secondsOf([&] { scale(job, from, to, channels, kernels); }));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * from.size()));
    state.counters["copies"] = best / secondsOfCopy(from);
}

const bool registered = [] {
    for (const Job& job : jobs) {
        for (const int channels : {4, 1}) {
            for (const ResampleKernels* kernels : availableResampleKernels()) {
                const std::string name = std::string(job.name) + ", " + std::to_string(channels) +
                                         " channels, " + kernels->name;
                benchmark::RegisterBenchmark(name.c_str(), run, job, channels, *kernels)
                    ->Unit(benchmark::kMillisecond);
            }
        }
    }
    return true;
}();

} // namespace

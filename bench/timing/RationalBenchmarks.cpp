#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <vector>

#include <Corvex/timing/CommonVideoFrameRate.h>
#include <Corvex/timing/NumericRational.h>

#if __has_include(<libavutil/rational.h>)
extern "C" {
#include <libavutil/rational.h>
}
#define CORVEX_BENCH_LIBAV 1
#endif
#if __has_include(<boost/rational.hpp>)
#include <boost/rational.hpp>
#define CORVEX_BENCH_BOOST 1
#endif

namespace {

struct Pair {
    std::int64_t numerator, denominator;
};

/// So many pairs that a branch predictor cannot learn them.
using Pairs = std::array<Pair, 4096>;

/// Terms of at most `numeratorBits` and `denominatorBits` bits times a common factor of up to 8 bits.
Pairs randomPairs(unsigned numeratorBits, unsigned denominatorBits) {
    Pairs result{};
    std::uint64_t random = 88172645463325252U;  // Marsaglia's xorshift
    const auto next = [&random](unsigned bits) {
        random ^= random << 13U;
        random ^= random >> 7U;
        random ^= random << 17U;
        return static_cast<std::int64_t>(random >> (64U - bits)) + 1;
    };
    for (auto& pair : result) {
        const std::int64_t common = next(8);
        pair = {next(numeratorBits) * common, next(denominatorBits) * common};
    }
    return result;
}

/// Picture sizes, aspects and rates; and time stamps of hours over fine time scales.
const Pairs pairs = randomPairs(13, 12);
const Pairs longPairs = randomPairs(48, 24);

/// Runs `step` on one of the terms and the next, for one after the other.
template <class Step, class Terms = Pairs>
void overPairs(benchmark::State& state, Step&& step, const Terms& terms = pairs) {
    std::size_t at = 0;
    for (auto _ : state) {
        auto result = step(terms[at % terms.size()], terms[(at + 1) % terms.size()]);
        benchmark::DoNotOptimize(result);
        ++at;
    }
    state.SetItemsProcessed(state.iterations());
}

corvex::NumericRational numeric(const Pair& pair) { return {pair.numerator, pair.denominator}; }

void reduce_corvex(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair&) { return reduced(numeric(a)); });
}
BENCHMARK(reduce_corvex);

void reduceLong_corvex(benchmark::State& state) {
    overPairs(
        state, [](const Pair& a, const Pair&) { return reduced(numeric(a)); }, longPairs);
}
BENCHMARK(reduceLong_corvex);

void multiply_corvex(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) { return numeric(a) * numeric(b); });
}
BENCHMARK(multiply_corvex);

void compare_corvex(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) { return numeric(a) == numeric(b); });
}
BENCHMARK(compare_corvex);

#ifdef CORVEX_BENCH_LIBAV
void reduce_libavutil(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair&) {
        AVRational result{};
        av_reduce(&result.num, &result.den, a.numerator, a.denominator, INT32_MAX);
        return result;
    });
}
BENCHMARK(reduce_libavutil);

void reduceLong_libavutil(benchmark::State& state) {
    overPairs(
        state,
        [](const Pair& a, const Pair&) {
            AVRational result{};
            av_reduce(&result.num, &result.den, a.numerator, a.denominator, INT32_MAX);
            return result;
        },
        longPairs);
}
BENCHMARK(reduceLong_libavutil);

AVRational narrow(const Pair& pair) { return {static_cast<int>(pair.numerator), static_cast<int>(pair.denominator)}; }

void multiply_libavutil(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) { return av_mul_q(narrow(a), narrow(b)); });
}
BENCHMARK(multiply_libavutil);

/// Compares by cross-multiplication and reduces nothing.
void compare_libavutil(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) { return av_cmp_q(narrow(a), narrow(b)) == 0; });
}
BENCHMARK(compare_libavutil);
#endif

#ifdef CORVEX_BENCH_BOOST
using Rational = boost::rational<std::int64_t>;

void reduce_boost(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair&) { return Rational(a.numerator, a.denominator); });
}
BENCHMARK(reduce_boost);

void reduceLong_boost(benchmark::State& state) {
    overPairs(
        state, [](const Pair& a, const Pair&) { return Rational(a.numerator, a.denominator); }, longPairs);
}
BENCHMARK(reduceLong_boost);

/// From the pairs as they come, as the others do it.
void multiply_boost(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) {
        return Rational(a.numerator, a.denominator) * Rational(b.numerator, b.denominator);
    });
}
BENCHMARK(multiply_boost);

/// With operands that are reduced beforehand, as this peer always keeps them.
template <class Ratio, class Reduce>
void multiplyReducedBefore(benchmark::State& state, Reduce&& reduce) {
    std::vector<Ratio> values;
    for (const Pair& pair : pairs) values.push_back(reduce(pair));
    overPairs(
        state, [](const Ratio& a, const Ratio& b) { return a * b; }, values);
}

void multiply_boostReducedBefore(benchmark::State& state) {
    multiplyReducedBefore<Rational>(state, [](const Pair& pair) { return Rational(pair.numerator, pair.denominator); });
}
BENCHMARK(multiply_boostReducedBefore);

void multiply_corvexReducedBefore(benchmark::State& state) {
    multiplyReducedBefore<corvex::NumericRational>(state,
                                                   [](const Pair& pair) { return numeric(pair).inLowestTerms(); });
}
BENCHMARK(multiply_corvexReducedBefore);

void compare_boost(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair& b) {
        return Rational(a.numerator, a.denominator) == Rational(b.numerator, b.denominator);
    });
}
BENCHMARK(compare_boost);
#endif

void closestFrameRate(benchmark::State& state) {
    double value = 1;
    for (auto _ : state) {
        value = value < 1100 ? value * 1.37 : 1;
        benchmark::DoNotOptimize(corvex::closestFrameRate(value, 1.0));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(closestFrameRate);

void definedFrameRate(benchmark::State& state) {
    overPairs(state, [](const Pair& a, const Pair&) {
        return corvex::definedFrameRate(corvex::MediaRational(a.numerator, a.denominator));
    });
}
BENCHMARK(definedFrameRate);

}  // namespace

// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What a pair costs the matchers, over the number of entries. The catalogues are made up: domains
// of a wild type and two mutants of one base, cores of 31 to 49 bases as in the shipped one.
#include <memory>
#include <random>

#include <benchmark/benchmark.h>

#include "matching/fast_matcher.h"
#include "matching/matcher.h"
#include "matching/reverse_complement.h"
#include "support/batch_of_pairs.h"
#include "support/catalogue_builder.h"

namespace {

using support::PairTexts;
using support::Target;

constexpr std::size_t kPairs = 8'000;
constexpr std::size_t kReadLength = 150;
constexpr std::size_t kFragmentLength = 200;

class Maker {
public:
    catalogue::MutDomains makeCatalogue(std::size_t entries) {
        std::vector<std::shared_ptr<catalogue::MutDomain>> domains;
        while (m_cores.size() < entries) {
            const std::string strand = below(4) == 0 ? "R2" : "R1R2";
            const std::string wildType = bases(31 + below(19));
            std::vector<Target> targets = {{strand, wildType}};
            for (int mutants = 0; mutants < 2; ++mutants) {
                targets.push_back({strand, wildType});
                std::string& core = targets.back().core;
                core[core.size() / 2 + static_cast<std::size_t>(mutants)] = bases(1)[0];
            }
            for (const Target& target : targets) {
                m_cores.push_back(target.core);
            }
            if (domains.size() % 30 == 3) {
                targets[0].core[8] = 'R';
                targets[0].wildCard = true;
            }
            domains.push_back(support::domainOf(targets, below(2) == 0));
        }
        return support::catalogueOf(std::move(domains));
    }

    PairTexts makePair(bool carrying) {
        std::string fragment = bases(kFragmentLength);
        if (carrying && below(10) < 6) {
            const std::string& core = m_cores[below(m_cores.size())];
            fragment.replace(55 + below(40), core.size(), core);
        }
        for (char& base : fragment) {
            base = below(1000) == 0 ? "ACGTN"[below(5)] : base;
        }
        PairTexts pair = {fragment.substr(0, kReadLength),
                          fragment.substr(kFragmentLength - kReadLength),
                          std::string(kReadLength, 'I'), std::string(kReadLength, 'I')};
        matching::reverseComplement(pair.read2.data(), pair.read2.size());
        return pair;
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }
    std::string bases(std::size_t length) {
        std::string made;
        while (made.size() < length) {
            made += "ACGT"[below(4)];
        }
        return made;
    }

    std::mt19937 m_random{20};
    std::vector<std::string> m_cores;
};

struct Case {
    catalogue::MutDomains domains;
    std::vector<reads::ReadPairBatch> batches;
};

Case makeCase(std::size_t entries, bool carrying, std::size_t pairs) {
    Maker maker;
    Case made;
    made.domains = maker.makeCatalogue(entries);
    for (std::size_t done = 0; done < pairs; done += reads::kPairsPerBatch) {
        std::vector<PairTexts> texts(reads::kPairsPerBatch);
        for (PairTexts& pair : texts) {
            pair = maker.makePair(carrying);
        }
        made.batches.push_back(support::batchOf(texts));
    }
    return made;
}

void matchPairs(benchmark::State& state, const Case& made, const matching::Matcher& matcher) {
    matching::BatchResult result;
    result.keepUnassigned = false;
    result.counts.resize(matching::mutationCount(made.domains));
    for (auto _ : state) {
        for (const reads::ReadPairBatch& batch : made.batches) {
            matcher.match(batch, result);
        }
        benchmark::DoNotOptimize(result.failed);
    }
    const auto pairs = static_cast<double>(made.batches.size() * reads::kPairsPerBatch);
    state.counters["per_pair"] = benchmark::Counter(
        pairs, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["mapped"] = static_cast<double>(result.processed - result.failed) /
                               static_cast<double>(result.processed);
}

template <class SomeMatcher>
void match(benchmark::State& state, bool carrying, std::size_t pairs) {
    const Case made = makeCase(static_cast<std::size_t>(state.range(0)), carrying, pairs);
    matchPairs(state, made, SomeMatcher(made.domains));
}

void fastCarrying(benchmark::State& state) {
    match<matching::FastMatcher>(state, true, kPairs);
}
void fastRandom(benchmark::State& state) {
    match<matching::FastMatcher>(state, false, kPairs);
}
void plainCarrying(benchmark::State& state) {
    match<matching::PlainMatcher>(state, true, reads::kPairsPerBatch);
}
BENCHMARK(fastCarrying)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(fastRandom)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(plainCarrying)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void buildFast(benchmark::State& state) {
    Maker maker;
    const auto domains = maker.makeCatalogue(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::make_unique<matching::FastMatcher>(domains));
    }
}
BENCHMARK(buildFast)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

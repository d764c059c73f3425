// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "calling/report_rows.h"
#include "catalogue/mut_domain.h"
#include "settings/settings_store.h"

namespace run {
class MainRoutine;
}

namespace calling {

/// Turns read counts into calls, and calls into report rows.
class ResultCalc {
public:
    /// `settings` must outlive the calculator; it is read whenever a rule needs a value.
    explicit ResultCalc(settings::SettingsStore& settings) : m_settings(settings) {}

    /// The run driver that owns this calculator; not owned, never used by the statistics.
    run::MainRoutine* mainRoutine = nullptr;

    // --- Binomial statistics (statistics.cpp). k and n count read pairs; frequencies and rates are
    // fractions. None of these reports an error; rates outside (0, 1) are not validated.

    /// Standard normal distribution function, by its Taylor series about 0 (99 terms at most).
    /// Deliberate: where the series does not settle (|x| about 9 to 38) exactly 1.0 or 0.0; where
    /// its first term underflows (|x| from about 39) 0.5, which read counts of a deep run do reach.
    static double p_nor(double x);
    /// 1.0 - p_nor(x).
    static double q_nor(double x);
    /// P(X = k) for X ~ Binomial(n, p), from P(X = 0) = pow(1 - p, n) upwards. Values for k > n are
    /// not special-cased: 0 at n + 1, then 0 or negative.
    static double binomialValueAt(std::int64_t k, std::int64_t n, double p);
    /// P(X <= k), summed from 0. Deliberate: stops past the mode at the first term below 1e-10,
    /// which is not added.
    static double cumBinomialToNumberOfReads(std::int64_t k, std::int64_t n, double p);
    /// The number of mutant reads that background alone can explain: `f` background frequency,
    /// `alpha` allowed false-positive rate. A whole number, or -1.0. Deliberate: where n f and n f
    /// (1 - f) exceed 5 the normal approximation gives one less than the first count that reaches 1
    /// - alpha, else the exact sum gives that count itself. An exact search that never reaches 1 -
    /// alpha returns n; a normal one ends where the distribution function is exactly 1.0.
    static double noMutantReadsAtFalsePositiveThresholdForTotalNoReads(std::int64_t n, double f,
                                                                       double alpha);
    /// The largest number of mutant reads whose lower tail is still below `beta`: `f` frequency of
    /// a real mutation, `beta` allowed false-negative rate. A whole number, or -1.0 when there is
    /// none.
    static double noMutantReadsAtFalseNegativeThresholdForTotalNoReads(std::int64_t n, double f,
                                                                       double beta);

    // --- Calls (calls.cpp)

    /// Writes the call of every mutation of the domain into its result texts, by the domain's type.
    /// Leaves a domain alone if its type has no rule, or if it has fewer mutations than its rule
    /// needs. Repairs the two thresholds in the settings where they are below 1.
    void calculateResult(catalogue::MutDomain& domain);

    /// Least informative reads for a somatic call, as calculateResult() would use it now; repairs
    /// nothing.
    static std::int64_t readThreshold(const settings::SettingsStore& settings);
    /// Whether calculateResult() can call the mutation positive with no mutant read, at any number
    /// of reads that is not below `readThreshold` (positive_without_reads.cpp).
    static bool callsPositiveWithoutMutantReads(const catalogue::Mutation& mutation,
                                                std::int64_t readThreshold);
    /// The least number of informative reads, `from` or more, with which calculateResult() calls
    /// the mutation negative if none of them is mutant; nullopt if there is none
    /// (negative_without_reads.cpp).
    static std::optional<std::int64_t> readsForNegative(const catalogue::Mutation& mutation,
                                                        std::int64_t from);

    // --- Report rows (patient_report.cpp)

    /// Builds the rows of a patient's four result tables from the called catalogue. A germline row
    /// replaces its list; somatic rows are appended to theirs.
    void summarizeResultForPatient(const archive::Text& patientNo,
                                   const catalogue::MutDomains& mutDomains, PatientRows& rows);

private:
    settings::SettingsStore& m_settings;
};

} // namespace calling

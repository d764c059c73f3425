// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Somebody else who may write in the folder of the inputs, while working copies are made there.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <unistd.h>

#include "document/document_test.h"
#include "support/gzip.h"

namespace document {
namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 40;
constexpr auto kPause = std::chrono::microseconds(300);
constexpr int kPairs = 3;
constexpr int kPlantedPairs = 5;

/// Puts something under the copies' names again and again, on a thread of its own, while it lives.
class Attacker {
public:
    /// What stands under `bait` gets the copies' names, by a link or as a file that takes the
    /// place of whatever is there.
    enum class Way { symbolicLink, hardLink, replacement };

    Attacker(Way way, std::string bait, std::vector<std::string> copies)
        : m_way(way), m_bait(std::move(bait)), m_copies(std::move(copies)),
          m_thread([this] { attack(); }) {}
    ~Attacker() {
        m_ended = true;
        m_thread.join();
    }
    Attacker(const Attacker&) = delete;
    Attacker& operator=(const Attacker&) = delete;

    void waitUntilItBegan() const {
        while (m_planted == 0) {
            std::this_thread::yield();
        }
    }

private:
    void attack() {
        while (!m_ended) {
            for (const std::string& copy : m_copies) {
                plant(copy);
            }
            // Without a pause it would hit nothing but the first moment in which a name is free.
            std::this_thread::sleep_for(kPause);
        }
    }

    void plant(const std::string& copy) {
        // Most of these fail, as the name is taken: an attacker does not mind.
        switch (m_way) {
        case Way::symbolicLink:
            m_planted += ::symlink(m_bait.c_str(), copy.c_str()) == 0 ? 1 : 0;
            break;
        case Way::hardLink:
            m_planted += ::link(m_bait.c_str(), copy.c_str()) == 0 ? 1 : 0;
            break;
        case Way::replacement: {
            std::error_code failure;
            const std::string next = m_bait + ".next";
            fs::copy_file(m_bait, next, fs::copy_options::overwrite_existing, failure);
            m_planted += ::rename(next.c_str(), copy.c_str()) == 0 ? 1 : 0;
            break;
        }
        }
    }

    const Way m_way;
    const std::string m_bait;
    const std::vector<std::string> m_copies;
    std::atomic<int> m_planted{0};
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

class WorkingCopiesUnderAttack : public VextaDocumentTest {
protected:
    void SetUp() override {
        VextaDocumentTest::SetUp();
        fs::permissions(dir.path(), fs::perms::all);
        // One of each kind: expanded and copied.
        dir.write("p_S1_L001_R1_001.fastq.gz", support::gzipMember(support::reads(kPairs)));
        dir.write("p_S1_L001_R2_001.fastq", support::reads(kPairs));
    }

    /// The patient again and again, while that goes on. What is counted is what the inputs hold.
    void analyzeUnder(Attacker::Way way, const std::string& bait) {
        const Lines copies = {dir.file("_p_S1_L001_R1_001.fastq"),
                              dir.file("_p_S1_L001_R2_001.fastq")};
        for (const std::string& copy : copies) {
            fs::remove(copy); // what the last attack left
        }
        const Attacker attacker(way, bait, copies);
        attacker.waitUntilItBegan();
        for (int round = 0; round < kRounds; ++round) {
            if (analyze(dir.file("p_S1_L001_R1_001.fastq.gz")).patientsFailed == 0) {
                EXPECT_EQ(driver().summaryForEachPatient->totalNumberOfReads, kPairs);
            }
        }
    }
};

TEST_F(WorkingCopiesUnderAttack, AVictimOfALinkKeepsItsContent) {
    const std::string victim = own.write("victim", "precious");
    analyzeUnder(Attacker::Way::symbolicLink, victim);
    EXPECT_EQ(support::readFile(victim), "precious");
    const std::string linked = dir.write("linked", "precious"); // one file system for both
    analyzeUnder(Attacker::Way::hardLink, linked);
    EXPECT_EQ(support::readFile(linked), "precious");
}

TEST_F(WorkingCopiesUnderAttack, NothingThatWasPlantedIsCounted) {
    const std::string planted = own.write("planted", support::reads(kPlantedPairs));
    analyzeUnder(Attacker::Way::symbolicLink, planted);
    EXPECT_EQ(support::readFile(planted), support::reads(kPlantedPairs));
    analyzeUnder(Attacker::Way::replacement, planted);
    EXPECT_EQ(support::readFile(planted), support::reads(kPlantedPairs));
}

TEST_F(WorkingCopiesUnderAttack, TheNextRunAfterItSucceeds) {
    analyzeUnder(Attacker::Way::symbolicLink, own.write("victim", "precious"));
    EXPECT_EQ(analyze(dir.file("p_S1_L001_R1_001.fastq.gz")).patientsFailed, 0U);
    EXPECT_EQ(driver().summaryForEachPatient->totalNumberOfReads, kPairs);
}

} // namespace
} // namespace document

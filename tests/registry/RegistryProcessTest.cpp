// The registry under several processes and sudden death.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/registry/RegistryTransaction.h"
#include "tests/registry/RegistryFixture.h"

namespace {

using RegistryProcess = RegistryFixture;

constexpr int kValues = 20;

std::string ValueName(int i) { return std::string("v").append(std::to_string(i)); }

// Writes generation after generation of twenty equal values, each in one transaction, and acknowledges each
// after its end. Never returns.
void WriteGenerations(int acknowledge) {
    CRegKey key;
    key.Create(HKEY_CURRENT_USER, "Software\\Maker\\App\\View");
    for (DWORD generation = 1;; ++generation) {
        {
            const RegistryTransaction transaction;
            for (int i = 0; i < kValues; ++i) PutNumber(key, ValueName(i).c_str(), generation);
        }
        if (write(acknowledge, &generation, sizeof generation) < 0) _exit(1);
    }
}

// Kills a writer after it acknowledged `until` generations; the last generation acknowledged.
DWORD LastAcknowledged(DWORD until) {
    int ends[2];
    if (pipe(ends) != 0) return 0;
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        WriteGenerations(ends[1]);
    }
    close(ends[1]);
    DWORD generation = 0;
    DWORD last = 0;
    while (last < until && read(ends[0], &generation, sizeof generation) == sizeof generation)
        last = generation;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &generation, sizeof generation) == sizeof generation) last = generation;
    close(ends[0]);
    return last;
}

TEST_F(RegistryProcess, AKilledWriterLosesNothingAcknowledgedAndTearsNoTransaction) {
    for (DWORD round = 1; round <= 12; ++round) {
        Reopen();
        const DWORD acknowledged = LastAcknowledged(round * 5);
        ASSERT_GE(acknowledged, round * 5);
        CRegKey key;
        ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\Maker\\App\\View"), ERROR_SUCCESS);
        const std::int64_t first = GetNumber(key, "v0");
        EXPECT_GE(first, acknowledged) << "round " << round;
        for (int i = 1; i < kValues; ++i) EXPECT_EQ(GetNumber(key, ValueName(i).c_str()), first) << round;
        EXPECT_EQ(PutNumber(key, "after", 1), ERROR_SUCCESS);
    }
    EXPECT_TRUE(messages_.empty());
}

TEST_F(RegistryProcess, TwoWritersLoseNoStepOfEachOther) {
    constexpr int kSteps = 2000;
    int gate[2];
    ASSERT_EQ(pipe(gate), 0);
    pid_t children[2];
    for (pid_t& child : children) {
        child = fork();
        if (child != 0) continue;
        char none = 0;
        close(gate[1]);
        if (read(gate[0], &none, 1) != 0) _exit(1);  // until the parent opens the gate for both
        for (int step = 0; step < kSteps; ++step) {
            const RegistryTransaction transaction;
            CRegKey key;
            key.Create(HKEY_CURRENT_USER, "Software\\Shared");
            const auto count = GetNumber(key, "count");
            PutNumber(key, "count", static_cast<DWORD>(count < 0 ? 1 : count + 1));
        }
        SetRegistryFile(nullptr);
        _exit(0);
    }
    close(gate[0]);
    close(gate[1]);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\Shared"), ERROR_SUCCESS);
    EXPECT_EQ(GetNumber(key, "count"), 2 * kSteps);
    EXPECT_TRUE(messages_.empty());
}

}  // namespace

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "platform/registry/RegistryTransaction.h"
#include "tests/registry/RegistryFixture.h"

namespace {

// Runs `act` in a process without the administrator's rights, which no file mode stops.
int AsOrdinaryUser(const std::function<int()>& act) {
    return InChild([&] {
        const bool ordinary = geteuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
        return ordinary ? act() : 99;
    });
}

class RegistryDamage : public RegistryFixture {
  protected:
    // The bytes of a healthy store with one number "n" in the root and many more.
    std::string HealthyFile() {
        PutNumber(HKEY_CURRENT_USER, "n", 1);
        for (int i = 0; i < 400; ++i) PutNumber(HKEY_CURRENT_USER, ("value " + std::to_string(i)).c_str(), 2);
        SetRegistryFile(nullptr);
        return ReadWhole(file_);
    }
    // Puts a big-endian number at `offset` of the file's header.
    static std::string Patched(std::string bytes, std::size_t offset, unsigned char number) {
        return bytes.replace(offset, 4, std::string{0, 0, 0, static_cast<char>(number)});
    }
};

TEST_F(RegistryDamage, ADamagedFileIsSetAsideUntouchedAndReportedOnce) {
    const std::string healthy = HealthyFile();
    ASSERT_GT(healthy.size(), 20000u);
    std::string overwritten = healthy;
    overwritten.replace(overwritten.size() / 2, 6000, 6000, '\xA5');
    std::string lastPage = healthy;
    lastPage.replace(lastPage.size() - 4096, 4096, 4096, '\x5A');
    std::string withoutTables = healthy;
    const std::size_t table = withoutTables.find("CREATE TABLE rvalue");
    ASSERT_NE(table, std::string::npos);
    withoutTables[table + 13] = 'q';
    const std::pair<const char*, std::string> cases[] = {{"cut short", healthy.substr(0, healthy.size() / 2)},
                                                         {"overwritten in the middle", overwritten},
                                                         {"last page overwritten", lastPage},
                                                         {"a table renamed", withoutTables}};
    for (const auto& [what, bytes] : cases) {
        messages_.clear();
        WriteFile(bytes);
        Reopen();
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), -1) << what;
        EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 3), ERROR_SUCCESS) << what;
        const auto aside = SetAside();
        ASSERT_EQ(aside.size(), 1u) << what;
        EXPECT_EQ(ReadWhole(aside[0]), bytes) << what;
        ASSERT_EQ(messages_.size(), 1u) << what;
        EXPECT_NE(messages_[0].find(file_.string() + " is damaged"), std::string::npos) << messages_[0];
        EXPECT_NE(messages_[0].find(aside[0].string()), std::string::npos) << messages_[0];
        Reopen();
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 3) << what;
        EXPECT_EQ(messages_.size(), 1u) << what;
        SetRegistryFile(nullptr);
        std::filesystem::remove(aside[0]);
    }
}

TEST_F(RegistryDamage, AtItsOwnPlaceAFileOfAnyContentIsSetAside) {
    const std::string kept = getenv("TAVIN_REGISTRY");
    unsetenv("TAVIN_REGISTRY");
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    std::filesystem::create_directory(folder_ / "tavin");
    home_.Write("tavin/registry.sqlite", "[settings]\ncolor=red\n");
    SetRegistryFile(nullptr);
    EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 3), ERROR_SUCCESS);
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_NE(messages_[0].find("registry.sqlite is damaged"), std::string::npos) << messages_[0];
    SetRegistryFile(nullptr);
    EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 3);
    unsetenv("XDG_CONFIG_HOME");
    setenv("TAVIN_REGISTRY", kept.c_str(), 1);
}

TEST_F(RegistryDamage, OnlyOneOfTwoProcessesSetsTheFileAside) {
    const std::string cutShort = HealthyFile().substr(0, 5000);
    for (int round = 0; round < 5; ++round) {
        SetRegistryFile(nullptr);
        for (const auto& path : SetAside()) std::filesystem::remove(path);
        WriteFile(cutShort);
        pid_t children[2];
        for (int i = 0; i < 2; ++i) {
            children[i] = fork();
            if (children[i] != 0) continue;
            Reopen();
            const LONG status = PutNumber(HKEY_CURRENT_USER, i == 0 ? "first" : "second", 1);
            SetRegistryFile(nullptr);
            _exit(status == ERROR_SUCCESS ? 0 : 1);
        }
        for (const pid_t child : children) {
            int status = 0;
            waitpid(child, &status, 0);
            EXPECT_EQ(status, 0);
        }
        Reopen();
        EXPECT_EQ(SetAside().size(), 1u);
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "first"), 1);
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "second"), 1);
    }
}

TEST_F(RegistryDamage, FilesOfNewerVersionsAndOtherProgramsStayAsTheyAre) {
    const std::string healthy = HealthyFile();
    const std::pair<const char*, std::string> cases[] = {
        // where SQLite's header keeps the user's version and the application's number
        {"newer version", Patched(healthy, 60, 2)},
        {"another program", Patched(healthy, 68, 7)},
        {"another program", "[settings]\ncolor=red\n" + std::string(2000, '#')},
        {"another program", "short"}};
    for (const auto& [what, bytes] : cases) {
        messages_.clear();
        WriteFile(bytes);
        Reopen();
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), -1) << what;
        EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 5), ERROR_SUCCESS) << what;
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 5) << what;
        ASSERT_EQ(messages_.size(), 1u) << what;
        EXPECT_NE(messages_[0].find(what), std::string::npos) << messages_[0];
        SetRegistryFile(nullptr);
        EXPECT_EQ(ReadWhole(file_), bytes) << what;
        EXPECT_TRUE(SetAside().empty()) << what;
    }
}

TEST_F(RegistryDamage, AStoreThatCannotBeCreatedLivesInMemory) {
    WriteFile("a file where the folder should be");
    std::filesystem::create_directory(folder_ / "folder");
    for (const auto& path : {file_ / "registry.sqlite", folder_ / "folder"}) {
        messages_.clear();
        SetRegistryFile(path.c_str());
        CRegKey key;
        EXPECT_EQ(key.Create(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS) << path;
        EXPECT_EQ(PutNumber(key, "n", 5), ERROR_SUCCESS) << path;
        EXPECT_EQ(GetNumber(key, "n"), 5) << path;
        ASSERT_EQ(messages_.size(), 1u) << path;
        EXPECT_NE(messages_[0].find(path.string() + " cannot be opened"), std::string::npos) << messages_[0];
    }
}

TEST_F(RegistryDamage, AWriteProtectedFileIsReadAndAnUnreadableOneLeftAlone) {
    const std::string healthy = HealthyFile();
    ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
    ASSERT_EQ(chmod(file_.c_str(), 0444), 0);
    EXPECT_EQ(AsOrdinaryUser([&] {
                  Reopen();
                  if (GetNumber(HKEY_CURRENT_USER, "n") != 1) return 1;
                  if (PutNumber(HKEY_CURRENT_USER, "n", 4) != ERROR_SUCCESS) return 2;
                  if (GetNumber(HKEY_CURRENT_USER, "n") != 4) return 3;
                  return messages_.size() == 1 && messages_[0].find("write-prot") != std::string::npos ? 0
                                                                                                       : 4;
              }),
              0);
    EXPECT_EQ(ReadWhole(file_), healthy);
    // An empty one, too, leaves a store to work with.
    WriteFile("");
    EXPECT_EQ(AsOrdinaryUser([&] {
                  Reopen();
                  return PutNumber(HKEY_CURRENT_USER, "n", 4) == ERROR_SUCCESS && messages_.size() == 1 ? 0
                                                                                                        : 1;
              }),
              0);
    ASSERT_EQ(chmod(file_.c_str(), 0), 0);
    EXPECT_EQ(AsOrdinaryUser([&] {
                  Reopen();
                  if (PutNumber(HKEY_CURRENT_USER, "n", 4) != ERROR_SUCCESS) return 1;
                  if (!SetAside().empty() || messages_.size() != 1) return 2;
                  return messages_[0].find("may not be read: it belongs to") != std::string::npos ? 0 : 3;
              }),
              0);
    EXPECT_EQ(ReadWhole(file_), "");
}

TEST_F(RegistryDamage, AFullDiskUndoesTheWholeTransactionAndIsReportedOnce) {
    // A long value reaches the disk before the end of its transaction, a shorter one with it.
    for (const std::size_t size : {200000, 20000000}) {
        EXPECT_EQ(InChild([&] {
                      Reopen();
                      PutNumber(HKEY_CURRENT_USER, "n", 1);
                      signal(SIGXFSZ, SIG_IGN);
                      rlimit before{};
                      getrlimit(RLIMIT_FSIZE, &before);
                      const rlimit small{100000, before.rlim_max};
                      CRegKey key;
                      for (int i = 0; i < 2; ++i) {
                          setrlimit(RLIMIT_FSIZE, &small);
                          RegistryTransaction transaction;
                          PutNumber(HKEY_CURRENT_USER, "n", 2);
                          key.Create(HKEY_CURRENT_USER, "K");
                          Put(HKEY_CURRENT_USER, "long", REG_BINARY, std::string(size, 'x'));
                          PutNumber(HKEY_CURRENT_USER, "n", 3);
                          if (transaction.Commit() == ERROR_SUCCESS) return 1;
                      }
                      setrlimit(RLIMIT_FSIZE, &before);
                      if (GetNumber(HKEY_CURRENT_USER, "n") != 1) return 2;
                      if (NamesOf(HKEY_CURRENT_USER).size() != 1) return 3;
                      if (PutNumber(key, "n", 1) != ERROR_INVALID_HANDLE) return 4;
                      if (messages_.size() != 1) return 5;
                      if (messages_[0].find("not be written to " + file_.string()) == std::string::npos)
                          return 6;
                      return PutNumber(HKEY_CURRENT_USER, "n", 1) == ERROR_SUCCESS ? 0 : 7;
                  }),
                  0)
            << size;
    }
}

TEST_F(RegistryDamage, AFileRemovedWhileOpenIsBegunAnew) {
    PutNumber(HKEY_CURRENT_USER, "n", 1);
    for (const char* companion : {"", "-wal", "-shm"}) std::filesystem::remove(file_.string() + companion);
    EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 2), ERROR_SUCCESS);
    Reopen();
    EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 2);
    EXPECT_TRUE(messages_.empty());
}

}  // namespace

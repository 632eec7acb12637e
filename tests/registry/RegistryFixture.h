// A registry in a folder of its own, and the messages shown meanwhile.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/core/MessageBox.h"
#include "platform/registry/CRegKey.h"
#include "tests/core/TestFolder.h"

class RegistryFixture : public testing::Test {
  protected:
    void SetUp() override {
        previous_ = SetMessageBoxHandler([this](const char* text, UINT) {
            messages_.emplace_back(text);
            return IDOK;
        });
        Reopen();
    }
    void TearDown() override {
        SetRegistryFile(nullptr);
        SetMessageBoxHandler(previous_);
    }

    // Closes the store; the next use opens the file again.
    void Reopen() { SetRegistryFile(file_.c_str()); }
    void WriteFile(const std::string& bytes) const { home_.Write("registry.sqlite", bytes); }
    // The files that were set aside, without their journals.
    std::vector<std::filesystem::path> SetAside() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            const std::string name = entry.path().filename().string();
            const bool journal = name.ends_with("-wal") || name.ends_with("-shm");
            if (!journal && name.find(".damaged-") != std::string::npos) found.push_back(entry.path());
        }
        return found;
    }

    const TestFolder home_;
    const std::filesystem::path folder_ = home_.Root();
    const std::filesystem::path file_ = folder_ / "registry.sqlite";
    std::vector<std::string> messages_;
    MessageBoxHandler previous_;
};

// Runs `act` in a process of its own; its result. The store must be closed.
inline int InChild(const std::function<int()>& act) {
    const pid_t child = fork();
    if (child == 0) {
        const int result = act();
        SetRegistryFile(nullptr);
        _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Shorthands on values of one key.
inline LONG Put(HKEY key, const char* name, DWORD kind, const std::string& bytes) {
    return RegSetValueExA(key, name, 0, kind, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(bytes.size()));
}
inline LONG PutNumber(HKEY key, const char* name, DWORD number) {
    return Put(key, name, REG_DWORD, std::string(reinterpret_cast<const char*>(&number), sizeof number));
}
// -1 where there is no number of that name.
inline std::int64_t GetNumber(HKEY key, const char* name) {
    DWORD number = 0;
    DWORD size = sizeof number;
    DWORD kind = 0;
    const LONG status = RegQueryValueExA(key, name, nullptr, &kind, reinterpret_cast<BYTE*>(&number), &size);
    return status == ERROR_SUCCESS && kind == REG_DWORD ? std::int64_t{number} : -1;
}
inline std::string GetBytes(HKEY key, const char* name) {
    DWORD size = 0;
    if (RegQueryValueExA(key, name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) return "(missing)";
    std::string bytes(size, '?');
    RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()), &size);
    return bytes;
}
template <class Enumerate>
std::vector<std::string> EnumeratedNames(Enumerate enumerate, HKEY key) {
    std::vector<std::string> names;
    char name[256];
    for (DWORD i = 0;; ++i) {
        DWORD length = sizeof name;
        const LONG status = enumerate(key, i, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) return names;
        names.emplace_back(name, length);
    }
}
inline std::vector<std::string> NamesOf(HKEY key) { return EnumeratedNames(RegEnumValueA, key); }
inline std::vector<std::string> SubKeysOf(HKEY key) { return EnumeratedNames(RegEnumKeyExA, key); }

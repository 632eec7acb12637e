// What keeping settings costs: single writes, sets saved in one transaction, and reading.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "platform/registry/CRegKey.h"
#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"

namespace {

constexpr int kSetSize = 20;

// A store in a folder of its own with one open key.
class Store {
  public:
    Store() {
        mkdtemp(folder_);
        SetRegistryFile((std::string(folder_) + "/registry.sqlite").c_str());
        key.Create(HKEY_CURRENT_USER, "Software\\Maker\\App\\View 1");
    }
    ~Store() {
        key.Close();
        SetRegistryFile(nullptr);
        std::filesystem::remove_all(folder_);
    }
    bool Write(int name, DWORD number) {
        return RegSetValueExA(key, std::to_string(name).c_str(), 0, REG_DWORD,
                              reinterpret_cast<const BYTE*>(&number), sizeof number) == ERROR_SUCCESS;
    }
    DWORD Read(int name) {
        DWORD number = 0;
        DWORD size = sizeof number;
        RegQueryValueExA(key, std::to_string(name).c_str(), nullptr, nullptr,
                         reinterpret_cast<BYTE*>(&number), &size);
        return number;
    }
    void Reopen() {
        SetRegistryFile((std::string(folder_) + "/registry.sqlite").c_str());
        key.Open(HKEY_CURRENT_USER, "Software\\Maker\\App\\View 1");
    }
    // Writes the set and sees whether another opening of the file finds it.
    bool Works() {
        for (int i = 0; i < kSetSize; ++i) Write(i, 1000u + static_cast<DWORD>(i));
        Reopen();
        for (int i = 0; i < kSetSize; ++i)
            if (Read(i) != 1000u + static_cast<DWORD>(i)) return false;
        return true;
    }

    CRegKey key;

  private:
    char folder_[32] = "/tmp/tavin-bench-XXXXXX";
};

void WriteSingleValues(benchmark::State& state) {
    Store store;
    if (!store.Works()) return state.SkipWithError("values are not read back");
    DWORD number = 0;
    for (auto _ : state) store.Write(static_cast<int>(number % kSetSize), number), ++number;
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WriteSingleValues);

void SaveSetInTransaction(benchmark::State& state) {
    Store store;
    if (!store.Works()) return state.SkipWithError("values are not read back");
    DWORD number = 0;
    for (auto _ : state) {
        const RegistryTransaction together;
        for (int i = 0; i < kSetSize; ++i) store.Write(i, number++);
    }
    state.SetItemsProcessed(state.iterations() * kSetSize);
}
BENCHMARK(SaveSetInTransaction);

void ReadValues(benchmark::State& state) {
    Store store;
    if (!store.Works()) return state.SkipWithError("values are not read back");
    int name = 0;
    for (auto _ : state) benchmark::DoNotOptimize(store.Read(name++ % kSetSize));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ReadValues);

void ReadProfileIntegers(benchmark::State& state) {
    const Store store;
    CWinApp app("App");
    app.SetRegistryKey("Maker");
    app.WriteProfileInt("View 1", "Color", 77);
    if (app.GetProfileInt("View 1", "Color", 0) != 77) return state.SkipWithError("value is not read back");
    for (auto _ : state) benchmark::DoNotOptimize(app.GetProfileInt("View 1", "Color", 0));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ReadProfileIntegers);

// Opening checks the whole file, so that damage is found before it is added to.
void OpenStore(benchmark::State& state) {
    Store store;
    if (!store.Works()) return state.SkipWithError("values are not read back");
    for (int i = 0; i < 2000; ++i) store.Write(i, 1);
    for (auto _ : state) {
        store.Reopen();
        benchmark::DoNotOptimize(store.Read(1));
    }
}
BENCHMARK(OpenStore)->Unit(benchmark::kMillisecond);

}  // namespace

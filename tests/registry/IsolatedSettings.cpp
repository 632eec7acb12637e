// Keeps every test of this program away from the settings of the user who runs it, and of the other tests.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "platform/registry/Registry.h"

namespace {

std::filesystem::path folder;

void UseStore(int number) {
    setenv("TAVIN_REGISTRY", (folder / (std::to_string(number) + ".sqlite")).c_str(), 1);
}

class IsolatedSettings : public testing::Environment {
  public:
    void SetUp() override {
        char made[] = "/tmp/tavin-settings-XXXXXX";
        ASSERT_NE(mkdtemp(made), nullptr);
        folder = made;
        UseStore(0);
    }
    void TearDown() override {
        SetRegistryFile(nullptr);
        std::filesystem::remove_all(folder);
    }
};

// A test that needs what an earlier one left in the settings, or must not find it, fails in another order.
class FreshSettings : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { UseStore(++tests_); }

    int tests_ = 0;
};

const auto* const isolated = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new FreshSettings);
    return testing::AddGlobalTestEnvironment(new IsolatedSettings);
}();

}  // namespace

// Keeps every test of this program away from the settings of the user who runs it, and of the other tests.
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/registry/Registry.h"
#include "tests/core/TestFolder.h"

namespace {

// A test that needs what an earlier one left in the settings, or must not find it, fails in another order:
// each starts with a store of its own.
class IsolatedSettings : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        setenv("TAVIN_REGISTRY", folder_.Path(std::to_string(++tests_) + ".sqlite").c_str(), 1);
    }
    void OnTestProgramEnd(const testing::UnitTest&) override { SetRegistryFile(nullptr); }

    const TestFolder folder_;
    int tests_ = 0;
};

[[maybe_unused]] const bool isolated = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new IsolatedSettings);
    return true;
}();

}  // namespace

// Keeps every test of this program away from the settings of the user who runs it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/registry/Registry.h"
#include "tests/core/TestFolder.h"

namespace {

class IsolatedSettings : public testing::Environment {
  public:
    void SetUp() override { setenv("TAVIN_REGISTRY", folder_.Path("registry.sqlite").c_str(), 1); }
    void TearDown() override { SetRegistryFile(nullptr); }

  private:
    const TestFolder folder_;
};

const auto* const isolated = testing::AddGlobalTestEnvironment(new IsolatedSettings);

}  // namespace

// Keeps every test of this program away from the settings of the user who runs it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "platform/registry/Registry.h"

namespace {

class IsolatedSettings : public testing::Environment {
  public:
    void SetUp() override {
        char folder[] = "/tmp/tavin-settings-XXXXXX";
        ASSERT_NE(mkdtemp(folder), nullptr);
        folder_ = folder;
        setenv("TAVIN_REGISTRY", (folder_ / "registry.sqlite").c_str(), 1);
    }
    void TearDown() override {
        SetRegistryFile(nullptr);
        std::filesystem::remove_all(folder_);
    }

  private:
    std::filesystem::path folder_;
};

const auto* const isolated = testing::AddGlobalTestEnvironment(new IsolatedSettings);

}  // namespace

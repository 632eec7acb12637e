// Keeps every test of this program away from the settings of the user who runs it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

namespace {

class IsolatedSettings : public testing::Environment {
  public:
    void SetUp() override {
        ASSERT_NE(mkdtemp(folder_), nullptr);
        setenv("TAVIN_REGISTRY", (std::string(folder_) + "/registry.sqlite").c_str(), 1);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

  private:
    char folder_[32] = "/tmp/tavin-settings-XXXXXX";
};

const auto* const isolated = testing::AddGlobalTestEnvironment(new IsolatedSettings);

}  // namespace

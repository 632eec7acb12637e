// The store when memory runs out at any place: nothing is thrown and no transaction stays open.
#include "settings/Configuration.h"
#include "tests/core/FailingMemory.h"
#include "tests/registry/RegistryFixture.h"

namespace {

using RegistryNoMemory = RegistryFixture;

constexpr const char* kPath = "A\\A name that no small buffer has room for\\B";

TEST_F(RegistryNoMemory, AKeyThatFailsLeavesTheNextWritesTheirOwn) {
    HKEY key = nullptr;
    LONG status = ERROR_SUCCESS;
    WithEveryFailure([&] { RegDeleteTreeA(HKEY_CURRENT_USER, "A"); },
                     [&] {
                         EXPECT_NO_THROW(status = RegCreateKeyExA(HKEY_CURRENT_USER, kPath, 0, nullptr, 0,
                                                                  KEY_WRITE, nullptr, &key, nullptr));
                     },
                     [&](bool failed) {
                         EXPECT_TRUE(failed ? status == ERROR_NOT_ENOUGH_MEMORY : status == ERROR_SUCCESS);
                         if (status == ERROR_SUCCESS) RegCloseKey(key);
                     });
    WithEveryFailure([] {}, [&] { EXPECT_NO_THROW(status = RegDeleteTreeA(HKEY_CURRENT_USER, kPath)); },
                     [](bool) {});
    CRegKey kept;
    kept.Create(HKEY_CURRENT_USER, "Kept");
    EXPECT_EQ(PutNumber(kept, "number", 1), ERROR_SUCCESS);
    Reopen();
    kept.Open(HKEY_CURRENT_USER, "Kept");
    EXPECT_EQ(GetNumber(kept, "number"), 1);
}

struct NameRecord : Configuration {
    CString name = "a name that no small buffer has room for";
    void readwrite() override { readwriteValue("name", name); }
    bool Idle() const { return !key && !buffer && bufferSize == 0; }
};

TEST_F(RegistryNoMemory, ARecordIsIdleAfterwardsAndSaysSo) {
    NameRecord record;
    for (const bool writing : {true, false}) {
        bool done = false;
        WithEveryFailure(
            [] { RegDeleteTreeA(HKEY_CURRENT_USER, "Record"); },
            [&] { EXPECT_NO_THROW(done = record.exchange(HKEY_CURRENT_USER, "Record", writing)); },
            [&](bool failed) {
                EXPECT_TRUE(record.Idle());
                EXPECT_EQ(done, record.error == 0);
                EXPECT_TRUE(done || failed);
            });
    }
}

}  // namespace

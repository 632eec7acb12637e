#include "platform/registry/Registry.h"

#include "platform/database/Database.h"
#include "platform/registry/FoldCase.h"
#include "platform/registry/RegistryTransaction.h"
#include "tests/registry/RegistryFixture.h"

namespace {

using Registry = RegistryFixture;
using Names = std::vector<std::string>;

TEST(FoldCaseTest, IgnoresCaseLetterByLetter) {
    const std::pair<const char*, const char*> same[] = {{"Depth [m]", "DEPTH [M]"}, {"Ærø", "ÆRØ"},
                                                        {"Ωμέγα", "ΩΜΈΓΑ"},         {"ΣΑΣ", "σας"},
                                                        {"\xC3", "\xc3"},           {"ẞ", "ß"}};
    for (const auto& [a, b] : same) EXPECT_EQ(FoldCase(a), FoldCase(b));
    const std::pair<const char*, const char*> different[] = {
        {"Maße", "Masse"}, {"a", "ä"}, {"\xC3X", "\xC3x"}};
    for (const auto& [a, b] : different) EXPECT_NE(FoldCase(a), FoldCase(b)) << a;
}

TEST_F(Registry, CreatingTellsNewFromExistingAndMakesAncestors) {
    CRegKey key;
    DWORD disposition = 0;
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\Maker"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key.Create(HKEY_CURRENT_USER, "Software\\Maker\\Ærø", KEY_READ, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    EXPECT_EQ(key.Create(HKEY_CURRENT_USER, "\\SOFTWARE\\\\maker\\ÆRØ\\", KEY_READ, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    CRegKey parent;
    ASSERT_EQ(parent.Open(HKEY_CURRENT_USER, "software"), ERROR_SUCCESS);
    EXPECT_EQ(key.Open(parent, "maker"), ERROR_SUCCESS);
    EXPECT_EQ(key.Open(parent, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(key.Open(parent, "maker\\other"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key.m_hKey, nullptr);
}

TEST_F(Registry, ValuesKeepBytesOrderAndSpellingAcrossARestart) {
    {
        CRegKey key;
        ASSERT_EQ(key.Create(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS);
        EXPECT_EQ(PutNumber(key, "Zeta", 5), ERROR_SUCCESS);
        EXPECT_EQ(Put(key, "alpha", REG_SZ, std::string("text\0", 5)), ERROR_SUCCESS);
        EXPECT_EQ(Put(key, "Mid", REG_BINARY, std::string("\0\1\0", 3)), ERROR_SUCCESS);
        EXPECT_EQ(Put(key, "shown", REG_SZ, ""), ERROR_SUCCESS);
        EXPECT_EQ(PutNumber(key, nullptr, 9), ERROR_SUCCESS);
        EXPECT_EQ(PutNumber(key, "ZETA", 7), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteValueA(key, "ALPHA"), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteValueA(key, "alpha"), ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(Put(key, "Alpha", REG_EXPAND_SZ, "x"), ERROR_SUCCESS);
    }
    Reopen();
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "K", KEY_READ), ERROR_SUCCESS);
    EXPECT_EQ(NamesOf(key), (Names{"Zeta", "Mid", "shown", "", "Alpha"}));
    EXPECT_EQ(GetNumber(key, "zeta"), 7);
    EXPECT_EQ(GetNumber(key, ""), 9);
    EXPECT_EQ(GetBytes(key, "mid"), std::string("\0\1\0", 3));
    EXPECT_EQ(GetBytes(key, "SHOWN"), "");
    EXPECT_TRUE(messages_.empty());
}

TEST_F(Registry, QueriesTellTheSizeAndNeverWritePastTheRoomGiven) {
    CRegKey key;
    ASSERT_EQ(key.Create(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS);
    ASSERT_EQ(Put(key, "name", REG_BINARY, "12345"), ERROR_SUCCESS);
    DWORD kind = 0;
    DWORD size = 4;
    BYTE data[8] = {'-', '-', '-', '-', '-'};
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, &kind, data, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(kind, REG_BINARY);
    EXPECT_EQ(data[0], '-');
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExA(key, "other", nullptr, &kind, data, &size), ERROR_FILE_NOT_FOUND);

    char name[5];
    DWORD nameSize = 4;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &nameSize, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    nameSize = 5;
    size = 5;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &nameSize, nullptr, &kind, data, &size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "name");
    EXPECT_EQ(nameSize, 4u);
    EXPECT_EQ(data[4], '5');
    EXPECT_EQ(RegEnumValueA(key, 1, name, &nameSize, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
}

TEST_F(Registry, SubKeysComeInTheOrderOfTheirMaking) {
    CRegKey key;
    ASSERT_EQ(key.Create(HKEY_CURRENT_USER, "Lines"), ERROR_SUCCESS);
    for (const char* name : {"[1]", "b\\Deep", "[0]", "B"}) CRegKey().Create(key, name);
    PutNumber(key, "a value", 1);
    EXPECT_EQ(SubKeysOf(key), (std::vector<std::string>{"[1]", "b", "[0]"}));
    char name[4];
    DWORD size = 3;
    EXPECT_EQ(RegEnumKeyExA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    ASSERT_EQ(RegDeleteKeyA(key, "[1]"), ERROR_SUCCESS);
    EXPECT_EQ(SubKeysOf(key).front(), "b");
}

TEST_F(Registry, DeletingAKeyNeedsTheTreeFormWhenItHasSubKeys) {
    CRegKey key;
    CRegKey below;
    ASSERT_EQ(key.Create(HKEY_CURRENT_USER, "A\\B"), ERROR_SUCCESS);
    ASSERT_EQ(below.Create(key, "C\\D"), ERROR_SUCCESS);
    PutNumber(below, "n", 1);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "A\\B"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(GetNumber(below, "n"), 1);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "A\\B"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, "A\\B"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "A"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeA(HKEY_CURRENT_USER, ""), ERROR_ACCESS_DENIED);
    // A key made again is another key: the old handles do not reach it.
    CRegKey again;
    ASSERT_EQ(again.Create(HKEY_CURRENT_USER, "A\\B\\C\\D"), ERROR_SUCCESS);
    EXPECT_EQ(PutNumber(below, "n", 2), ERROR_KEY_DELETED);
    EXPECT_EQ(CRegKey().Create(below, "E"), ERROR_KEY_DELETED);
    EXPECT_TRUE(NamesOf(again).empty());
}

TEST_F(Registry, RefusesMissingRightsForeignHandlesAndBadArguments) {
    CRegKey reading;
    CRegKey writing;
    ASSERT_EQ(reading.Create(HKEY_CURRENT_USER, "K", KEY_READ), ERROR_SUCCESS);
    ASSERT_EQ(writing.Create(HKEY_CURRENT_USER, "K", KEY_WRITE), ERROR_SUCCESS);
    EXPECT_EQ(PutNumber(reading, "n", 1), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueA(reading, "n"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(PutNumber(writing, "n", 1), ERROR_SUCCESS);
    EXPECT_EQ(GetNumber(writing, "n"), -1);
    EXPECT_EQ(Put(writing, "n", 11, "x"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegSetValueExA(writing, "n", 0, REG_SZ, nullptr, 3), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "K", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(PutNumber(nullptr, "n", 1), ERROR_INVALID_HANDLE);
    const HKEY closed = writing;
    writing.Close();
    EXPECT_EQ(PutNumber(closed, "n", 1), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(closed), ERROR_INVALID_HANDLE);
    SetRegistryFile((folder_ / "other.sqlite").c_str());
    EXPECT_EQ(GetNumber(reading, "n"), -1);
    EXPECT_EQ(RegCloseKey(reading), ERROR_SUCCESS);
    reading.m_hKey = nullptr;
}

TEST_F(Registry, TransactionsNestAndEndWithTheirOwnStore) {
    std::filesystem::path other = folder_ / "other.sqlite";
    {
        const RegistryTransaction outer;
        CRegKey key;
        ASSERT_EQ(key.Create(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS);
        RegistryTransaction inner;
        PutNumber(key, "a", 1);
        EXPECT_EQ(inner.Commit(), ERROR_SUCCESS);
        EXPECT_EQ(inner.Commit(), ERROR_SUCCESS);
        // The environment counts only between transactions, a host's own choice at once.
        setenv("TAVIN_REGISTRY", other.c_str(), 1);
        PutNumber(key, "b", 2);
        SetRegistryFile(other.c_str());
        EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "c", 3), ERROR_SUCCESS);
    }
    Reopen();
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS);
    EXPECT_EQ(NamesOf(key), (Names{"a", "b"}));
}

TEST_F(Registry, AWriteInATransactionForReadingIsStored) {
    {
        const RegistryTransaction reading(TransactionFor::Reading);
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), -1);
        Database other;
        other.Open(file_.c_str());
        ASSERT_EQ(other.Execute(
                      "INSERT INTO rvalue(key, name, fold, kind, data) VALUES(1, 'n', 'n', 4, x'01000000')"),
                  DatabaseResult::Done);
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), -1) << "what stood when the reading began";
        EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "m", 2), ERROR_SUCCESS);
        EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 1);
    }
    Reopen();
    EXPECT_EQ(NamesOf(HKEY_CURRENT_USER), (Names{"n", "m"}));
}

TEST_F(Registry, FollowsTheEnvironment) {
    const char* const before = getenv("TAVIN_REGISTRY");
    const std::string kept = before ? before : "";
    SetRegistryFile(nullptr);
    setenv("TAVIN_REGISTRY", file_.c_str(), 1);
    EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 1), ERROR_SUCCESS);
    setenv("TAVIN_REGISTRY", (folder_ / "second.sqlite").c_str(), 1);
    EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), -1);
    setenv("TAVIN_REGISTRY", file_.c_str(), 1);
    EXPECT_EQ(GetNumber(HKEY_CURRENT_USER, "n"), 1);

    unsetenv("TAVIN_REGISTRY");
    setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
    EXPECT_EQ(PutNumber(HKEY_CURRENT_USER, "n", 2), ERROR_SUCCESS);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "config/tavin/registry.sqlite"));
    for (const char* part : {"", "-wal", "-shm"}) {
        const auto mode = std::filesystem::status((folder_ / "config/tavin/registry.sqlite").string() + part);
        EXPECT_EQ(mode.permissions(), std::filesystem::perms(0600)) << "nobody else's business" << part;
    }
    unsetenv("XDG_CONFIG_HOME");
    setenv("TAVIN_REGISTRY", kept.c_str(), 1);
    EXPECT_TRUE(messages_.empty());
}

}  // namespace

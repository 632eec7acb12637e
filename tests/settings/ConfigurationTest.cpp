#include "settings/Configuration.h"

#include <locale.h>
#include <signal.h>
#include <sys/resource.h>

#include <cmath>
#include <cstring>
#include <random>

#include "settings/StoredNumber.h"
#include "tests/registry/RegistryFixture.h"

namespace {

struct Record : Configuration {
    int count = 7;
    unsigned long color = 0x825B00;
    float ratio = 2.5f;
    double range = -0.25;
    char letter = 'q';
    CString name = "old";
    char label[8] = "label";
    bool shown = true;
    unsigned char block[4] = {1, 2, 3, 4};

    void readwrite() override {
        readwriteValue("count", count);
        readwriteValue("color", color);
        readwriteValue("ratio", ratio);
        readwriteValue("range", range);
        readwriteValue("letter", letter);
        readwriteValue("name", name);
        readwriteValue("label", label);
        readwriteValue("shown", shown);
        readwriteValue("block", block, sizeof block);
    }
    bool Idle() const { return !key && !buffer && bufferSize == 0; }
};

std::string Terminated(const std::string& text) { return text + '\0'; }

class ConfigurationTest : public RegistryFixture {
  protected:
    void SetUp() override {
        RegistryFixture::SetUp();
        ASSERT_EQ(key_.Create(HKEY_CURRENT_USER, "Record"), ERROR_SUCCESS);
    }
    // Loads a fresh record after storing `bytes` as the value `name`; the record's outcome in `loaded`.
    void LoadWith(const char* name, DWORD kind, const std::string& bytes, Record& loaded) {
        RegDeleteTreeA(HKEY_CURRENT_USER, "Record");
        key_.Create(HKEY_CURRENT_USER, "Record");
        ASSERT_EQ(Put(key_, name, kind, bytes), ERROR_SUCCESS);
        loaded.exchange(HKEY_CURRENT_USER, "Record", false);
    }
    CRegKey key_;
};

TEST_F(ConfigurationTest, StoresTheTextsOfTheTableAndLoadsThemBack) {
    Record stored;
    stored.count = -12;
    stored.color = 0xFFFFFFFF;
    stored.ratio = 1.5f;
    stored.range = 1e10 / 3;
    stored.name = "Tiefe, Ærø";
    stored.shown = false;
    std::memcpy(stored.block, "\0\xFF\0\1", 4);
    EXPECT_TRUE(stored.exchange(HKEY_CURRENT_USER, "Record", true));
    EXPECT_TRUE(stored.Idle());
    const std::pair<const char*, const char*> texts[] = {
        {"count", "-12"}, {"color", "-1"},        {"ratio", "1.500000"}, {"range", "3333333333.333333"},
        {"letter", "q"},  {"name", "Tiefe, Ærø"}, {"label", "label"},    {"shown", "No"},
    };
    for (const auto& [name, text] : texts) EXPECT_EQ(GetBytes(key_, name), Terminated(text)) << name;
    EXPECT_EQ(NamesOf(key_).size(), 9u);

    Record loaded;
    std::strcpy(loaded.label, "other");
    EXPECT_TRUE(loaded.exchange(HKEY_CURRENT_USER, "Record", false));
    EXPECT_EQ(loaded.count, -12);
    EXPECT_EQ(loaded.color, 0xFFFFFFFFul);
    EXPECT_EQ(loaded.ratio, 1.5f);
    EXPECT_EQ(loaded.range, 3333333333.333333);
    EXPECT_EQ(loaded.name, "Tiefe, Ærø");
    EXPECT_STREQ(loaded.label, "label");
    EXPECT_FALSE(loaded.shown);
    EXPECT_EQ(std::memcmp(loaded.block, stored.block, 4), 0);
}

TEST_F(ConfigurationTest, LoadingAMissingRecordCreatesItsKeyAndChangesNothing) {
    Record record;
    EXPECT_TRUE(record.exchange(HKEY_CURRENT_USER, "New\\Record", false));
    CRegKey made;
    EXPECT_EQ(made.Open(HKEY_CURRENT_USER, "New\\Record"), ERROR_SUCCESS);
    EXPECT_TRUE(NamesOf(made).empty());
    EXPECT_EQ(record.name, "old");
    EXPECT_FALSE(record.exchange(nullptr, "Record", true));
    EXPECT_EQ(record.error, ERROR_INVALID_HANDLE);
    EXPECT_TRUE(record.Idle());
}

TEST_F(ConfigurationTest, ReadsWhatPeopleWriteByHand) {
    const struct {
        const char* text;
        int count;
        unsigned long color;
        int error;
    } numbers[] = {{"0x10", 16, 16, 0},
                   {"010", 8, 8, 0},
                   {"  +5 cm", 5, 5, 0},
                   {"-1", -1, 0xFFFFFFFF, 0},
                   {"4294967295", 2147483647, 0xFFFFFFFF, 0},
                   {"99999999999999999999", 2147483647, 0xFFFFFFFF, 0},
                   {"-99999999999999999999", -2147483647 - 1, 0x80000000, 0},
                   {"", 7, 0x825B00, -11},
                   {"red", 7, 0x825B00, -11}};
    for (const auto& one : numbers) {
        Record record;
        LoadWith("count", REG_SZ, Terminated(one.text), record);
        EXPECT_EQ(record.count, one.count) << one.text;
        EXPECT_EQ(record.error, one.error) << one.text;
        LoadWith("color", REG_EXPAND_SZ, Terminated(one.text), record);
        EXPECT_EQ(record.color, one.color) << one.text;
    }
    const std::pair<const char*, bool> words[] = {
        {"NO", false},  {"false", false}, {"0", false},   {"off", false},    {"no WAY", false},
        {"No!", false}, {"00", false},    {"000", false}, {"nein", false},   {"NON", false},
        {"Nej", false}, {"Yes", true},    {"yes", true},  {"1", true},       {"True", true},
        {"n", true},    {"", true},       {"0000", true}, {"No way!", true}, {" No", true}};
    for (const auto& [word, value] : words) {
        Record record;
        record.shown = !value;
        LoadWith("shown", REG_SZ, Terminated(word), record);
        EXPECT_EQ(record.shown, value) << word;
    }
}

TEST_F(ConfigurationTest, TextThatIsNoNumberSetsItsCodeAndTheOtherFieldsStillLoad) {
    const struct {
        const char* name;
        const char* text;
        int error;
    } cases[] = {{"ratio", "wide", -21}, {"ratio", "inf", -21}, {"ratio", "1e39", -21},
                 {"range", "", -31},     {"range", "nan", -31}, {"range", "1e999", -31},
                 {"letter", "", -41},    {"count", "-", -11}};
    for (const auto& one : cases) {
        Record record;
        LoadWith(one.name, REG_SZ, Terminated(one.text), record);
        EXPECT_EQ(record.error, one.error) << one.name << one.text;
        EXPECT_EQ(record.ratio, 2.5f) << one.text;
        EXPECT_EQ(record.range, -0.25) << one.text;
        EXPECT_EQ(record.letter, 'q') << one.text;
        Put(key_, "name", REG_SZ, Terminated("new"));
        EXPECT_FALSE(record.exchange(HKEY_CURRENT_USER, "Record", false));
        EXPECT_EQ(record.name, "new") << one.name;
    }
}

TEST_F(ConfigurationTest, OtherKindsUnterminatedAndOverlongTextsLeaveTheFieldAlone) {
    const struct {
        DWORD kind;
        std::string bytes;
        const char* name;
    } cases[] = {{REG_SZ, Terminated(std::string(4095, 'x')), nullptr},
                 {REG_SZ, "", ""},
                 {REG_SZ, Terminated(std::string(4096, 'x')), "old"},
                 {REG_SZ, "unterminated", "old"},
                 {REG_BINARY, Terminated("bytes"), "old"},
                 {REG_DWORD, std::string(4, '\0'), "old"}};
    for (const auto& one : cases) {
        Record record;
        LoadWith("name", one.kind, one.bytes, record);
        EXPECT_EQ(record.name, one.name ? CString(one.name) : CString(std::string(4095, 'x')));
        EXPECT_EQ(record.error, 0);
    }
    Record record;
    LoadWith("label", REG_SZ, Terminated("1234567"), record);
    EXPECT_STREQ(record.label, "1234567");
    LoadWith("label", REG_SZ, Terminated("12345678"), record);
    EXPECT_STREQ(record.label, "1234567");
}

struct Essay : Configuration {
    char text[5000] = "";
    void readwrite() override { readwriteValue("text", text); }
};

TEST_F(ConfigurationTest, RefusesToStoreWhatItCouldNotLoad) {
    Record record;
    record.name = std::string(4095, 'x');
    EXPECT_TRUE(record.exchange(HKEY_CURRENT_USER, "Record", true));
    record.name = std::string(4096, 'y');
    std::memset(record.label, 'z', sizeof record.label);
    record.count = 8;
    EXPECT_FALSE(record.exchange(HKEY_CURRENT_USER, "Record", true));
    EXPECT_EQ(record.error, -50);
    EXPECT_EQ(GetBytes(key_, "name"), Terminated(std::string(4095, 'x')));
    EXPECT_EQ(GetBytes(key_, "label"), Terminated("label"));
    EXPECT_EQ(GetBytes(key_, "count"), Terminated("8"));

    Essay essay;
    for (const std::size_t length : {4095, 4096, 4999}) {
        std::memset(essay.text, 'e', length);
        essay.exchange(HKEY_CURRENT_USER, "Record", true);
        EXPECT_EQ(GetBytes(key_, "text"), Terminated(std::string(4095, 'e'))) << length;
    }
}

TEST_F(ConfigurationTest, BlocksOfAnotherSizeOrKindAreLeftAlone) {
    Record record;
    for (const std::string& bytes : {std::string(3, 'x'), std::string(5, 'x'), std::string()}) {
        LoadWith("block", REG_BINARY, bytes, record);
        EXPECT_EQ(record.block[0], 1) << bytes.size();
        EXPECT_EQ(record.error, 0);
    }
    LoadWith("block", REG_SZ, "xxxx", record);
    EXPECT_EQ(record.block[0], 1);
    LoadWith("block", REG_BINARY, "wxyz", record);
    EXPECT_EQ(record.block[3], 'z');
}

struct Bulky : Configuration {
    int first = 1;
    std::vector<char> block = std::vector<char>(200000, 'x');
    void readwrite() override {
        readwriteValue("first", first);
        readwriteValue("block", block.data(), static_cast<DWORD>(block.size()));
    }
};

TEST_F(ConfigurationTest, ARecordTheDiskHasNoRoomForIsNotStoredInPart) {
    SetRegistryFile(nullptr);
    EXPECT_EQ(InChild([&] {
                  Reopen();
                  Bulky record;
                  if (!record.exchange(HKEY_CURRENT_USER, "Bulky", true)) return 1;
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit small{100000, RLIM_INFINITY};
                  setrlimit(RLIMIT_FSIZE, &small);
                  record.first = 2;
                  if (record.exchange(HKEY_CURRENT_USER, "Bulky", true) || record.error <= 0) return 2;
                  CRegKey key;
                  key.Open(HKEY_CURRENT_USER, "Bulky", KEY_READ);
                  return GetBytes(key, "first") == Terminated("1") ? 0 : 3;
              }),
              0);
}

struct Nest : Configuration {
    Record inner;
    bool result = false;
    bool own = false;
    void readwrite() override {
        result = readwriteSection("Inner", inner);
        own = readwriteSection("Own", *this);
    }
};

TEST_F(ConfigurationTest, NestedRecordsLiveInASubKey) {
    Nest nest;
    nest.inner.count = 99;
    EXPECT_TRUE(nest.exchange(HKEY_CURRENT_USER, "Record", true));
    EXPECT_TRUE(nest.result);
    EXPECT_FALSE(nest.own);
    Record inner;
    EXPECT_TRUE(inner.exchange(key_, "Inner", false));
    EXPECT_EQ(inner.count, 99);
    CRegKey sub;
    ASSERT_EQ(sub.Open(key_, "inner"), ERROR_SUCCESS);
    Put(sub, "count", REG_SZ, Terminated("many"));
    // The nested failure is the nested record's.
    EXPECT_TRUE(nest.exchange(HKEY_CURRENT_USER, "Record", false));
    EXPECT_FALSE(nest.result);
    EXPECT_EQ(nest.inner.error, -11);
}

TEST_F(ConfigurationTest, RandomValuesLoadWithinTheRulesOfTheirFields) {
    const char* const names[] = {"count", "color", "ratio", "range", "letter",
                                 "name",  "label", "shown", "block"};
    const std::string alphabet = std::string("0123456789+-.eExXnNaAiIfF oO\xC3\xB8%s\\") + '\0' + '\0';
    std::mt19937 random(20240511);
    for (int round = 0; round < 400; ++round) {
        for (const char* name : names) {
            std::string bytes(random() % 12 == 0 ? random() % 9000 : random() % 12, ' ');
            const bool wild = random() % 3 == 0;
            for (char& byte : bytes)
                byte = wild ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
            if (random() % 2) bytes += '\0';
            const DWORD kind = random() % 2 ? REG_SZ : 1 + random() % 4;
            ASSERT_EQ(Put(key_, name, kind, bytes), ERROR_SUCCESS);
        }
        Record record;
        const bool fine = record.exchange(HKEY_CURRENT_USER, "Record", false);
        EXPECT_EQ(fine, record.error == 0);
        EXPECT_TRUE(std::isfinite(record.ratio) && std::isfinite(record.range)) << round;
        EXPECT_LE(record.color, 0xFFFFFFFFul) << round;
        EXPECT_NE(record.letter, '\0') << round;
        EXPECT_LT(record.name.GetLength(), 4096) << round;
        EXPECT_LT(strnlen(record.label, sizeof record.label), sizeof record.label) << round;
        ASSERT_TRUE(record.Idle());
    }
}

TEST(StoredNumber, FollowsNoLocale) {
    const std::string before = setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8", "C"}) {
        if (!setlocale(LC_ALL, locale)) continue;
        EXPECT_EQ(FormatReal("%.02f", 12.345f), "12.35") << locale;  // 12.3450002670288
        EXPECT_EQ(FormatReal("%f", 1.5), "1.500000") << locale;
        double value = 0.0;
        EXPECT_TRUE(ParseReal("2.75", value)) << locale;
        EXPECT_EQ(value, 2.75) << locale;
    }
    setlocale(LC_ALL, before.c_str());
}

}  // namespace

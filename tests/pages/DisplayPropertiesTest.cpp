// Which series are shown, and the setups of instruments' series.
#include <limits>

#include "pages/KDataAcqProperties.h"
#include "settings/ApplicationKey.h"
#include "settings/KDrawPropertyManager.h"
#include "settings/StoredNames.h"
#include "sources/KDataAcqSource.h"
#include "tests/pages/SeriesFixture.h"

namespace {

class ShownSeries : public SeriesFixture {
  protected:
    KPointSourceProperties set{hidden, shown, nullptr};
};

TEST_F(ShownSeries, TakesOverWhatWasStored) {
    using List = std::list<IPointSource*>;
    struct Case {
        List hidden, shown;
        std::vector<CString> stored;
        const char* hiddenThen;
        const char* shownThen;
    };
    const Case cases[] = {
        {{c.get()}, {a.get(), b.get()}, {"C", "A"}, "B ", "C A "},
        {{b.get(), c.get()}, {a.get()}, {"C"}, "B ", "A C "},
        {{c.get()}, {a.get(), b.get()}, {}, "C A B ", ""},
        {{c.get()}, {a.get(), b.get()}, {"c", "", "other", "A"}, "C B ", "A "},
        {{c.get()}, {a.get(), b.get()}, {std::string(300, 'x'), "B"}, "C A ", "B "},
        {{}, {}, {"A"}, "", ""},
    };
    for (const Case& one : cases) {
        hidden = one.hidden;
        shown = one.shown;
        settings::SaveNames(ShownKey("View"), one.stored);
        set.LoadFromRegistry("View");
        EXPECT_EQ(NamesIn(hidden), one.hiddenThen) << NamesIn(one.shown);
        EXPECT_EQ(NamesIn(shown), one.shownThen) << NamesIn(one.shown);
    }
}

TEST_F(ShownSeries, ASectionWithoutAListChangesNothing) {
    hidden = {c.get()};
    shown = {a.get(), b.get()};
    set.LoadFromRegistry("View");
    EXPECT_EQ(NamesIn(shown), "A B ");
    EXPECT_EQ(ValuesBelow(ShownKey("View")), "(no key)");
}

TEST_F(ShownSeries, StoresKeysInTheirOrderAndNothingElse) {
    const auto slash = NewSeries("depth\\raw");
    shown = {c.get(), slash.get(), a.get()};
    set.SaveToRegistry("View");
    EXPECT_EQ(ValuesBelow("Software\\Maker\\Viewer\\View\\Shown"), "C depth\\raw A ");
    CRegKey key;
    key.Open(HKEY_CURRENT_USER, ShownKey("View"));
    EXPECT_EQ(GetBytes(key, "C"), "");
    shown.reverse();
    set.SaveToRegistry("View");
    EXPECT_EQ(ValuesBelow(ShownKey("View")), "A depth\\raw C ");
    set.LoadFromRegistry("View");
    EXPECT_EQ(NamesIn(shown), "A depth\\raw C ");
    shown.clear();
    set.SaveToRegistry("View");
    EXPECT_EQ(ValuesBelow(ShownKey("View")), "");
}

TEST_F(ShownSeries, SavesAndCopiesHowSeriesAreDrawn) {
    auto& manager = KDrawPropertyManager::Instance();
    manager.Reset();
    KPointSourceProperties managed(hidden, shown, &manager);
    hidden = {b.get()};
    shown = {a.get()};
    manager.GetProperty("A").setColor(0x010203);
    managed.CopyProperties(a.get(), b.get());
    managed.CopyProperties(a.get(), nullptr);
    set.CopyProperties(a.get(), c.get());
    manager.GetProperty("A").setColor(0x040506);
    EXPECT_EQ(manager.GetProperty("B").getColor(), 0x010203u) << "by value";
    EXPECT_NE(manager.GetProperty("C").getColor(), 0x010203u) << "no manager";
    managed.SaveToRegistry("View");
    manager.Reset();
    EXPECT_EQ(manager.GetProperty("A").getColor(), 0x040506u);
    EXPECT_EQ(manager.GetProperty("B").getColor(), 0x010203u) << "hidden series are saved too";
    manager.Reset();
}

class AcqSetup : public SeriesFixture {
  protected:
    CString PathOf(const char* below) const { return DataAcqKey() + "\\" + below; }

    KDataAcqSource gauge{"Gauge", 1, 100, 8, COnlineSource::Absolute};
    KDataAcqProperties set{hidden, shown, nullptr};
};

TEST_F(AcqSetup, ComesBackAsItWasStored) {
    hidden = {&gauge, c.get()};
    shown = {a.get(), b.get()};
    gauge.setInvertY(true);
    gauge.setFixedOffsetY(-0.1);
    KDataAcqSource::Sources added{c.get(), a.get()};
    gauge.setAdd(added);
    gauge.Subtract(b.get());
    set.SaveToRegistry("View");
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Software\\Maker\\Viewer\\DataAcqSource\\Gauge"), ERROR_SUCCESS);
    EXPECT_EQ(GetBytes(key, "InvertY"), std::string("\1\0\0\0", 4));
    // -0.1 = -1.6 * 2^-4, its fraction 0x999999999999A.
    EXPECT_EQ(GetBytes(key, "Offset"), "\x9A\x99\x99\x99\x99\x99\xB9\xBF");
    EXPECT_EQ(ValuesBelow(PathOf("Gauge\\Add")), "C A ");
    EXPECT_EQ(ValuesBelow(PathOf("Gauge\\Sub")), "B ");

    gauge.setInvertY(false);
    gauge.setFixedOffsetY(7);
    gauge.getAdd().clear();
    gauge.Subtract(c.get());
    set.LoadFromRegistry("View");
    EXPECT_TRUE(gauge.getInvertY());
    EXPECT_EQ(gauge.getFixedOffsetY(), -0.1);
    EXPECT_EQ(NamesIn(gauge.getAdd()), "C A ");
    EXPECT_EQ(NamesIn(gauge.getSubtract()), "B ");

    // A series that left is passed over, and nothing points to it.
    shown.remove(b.get());
    b.reset();
    set.LoadFromRegistry("View");
    EXPECT_EQ(NamesIn(gauge.getSubtract()), "");
}

TEST_F(AcqSetup, WhatCannotBeReadLeavesTheSeriesAsItIs) {
    shown = {&gauge, a.get()};
    gauge.setInvertY(true);
    gauge.setFixedOffsetY(2.5);
    gauge.Add(a.get());
    set.LoadFromRegistry("View");
    EXPECT_EQ(NamesIn(gauge.getAdd()), "A ") << "without a key";
    EXPECT_EQ(ValuesBelow(PathOf("Gauge")), "(no key)") << "made by looking";

    CRegKey key;
    ASSERT_EQ(key.Create(HKEY_CURRENT_USER, PathOf("Gauge")), ERROR_SUCCESS);
    const double infinite = std::numeric_limits<double>::infinity();
    const std::string bad[] = {"", "1234567", "123456789",
                               std::string(reinterpret_cast<const char*>(&infinite), sizeof infinite)};
    for (const std::string& bytes : bad) {
        Put(key, "InvertY", REG_BINARY, bytes);
        Put(key, "Offset", REG_BINARY, bytes);
        set.LoadFromRegistry("View");
        EXPECT_TRUE(gauge.getInvertY()) << bytes.size();
        EXPECT_EQ(gauge.getFixedOffsetY(), 2.5) << bytes.size();
    }
    PutNumber(key, "InvertY", 0);
    set.LoadFromRegistry("View");
    EXPECT_TRUE(gauge.getInvertY()) << "a number, not bytes";
    EXPECT_EQ(NamesIn(gauge.getAdd()), "") << "the key is there, its list is not";
}

TEST_F(AcqSetup, NamesWithABackslashAndNamesThatDifferInCaseStayHarmless) {
    KDataAcqSource nested("Gauge\\deep", 1, 100, 8, COnlineSource::Absolute);
    const auto lower = NewSeries("a");
    shown = {&gauge, &nested, a.get(), lower.get()};
    nested.setFixedOffsetY(3);
    nested.Add(a.get());
    gauge.setFixedOffsetY(4);
    gauge.Add(lower.get());
    gauge.Add(a.get());
    gauge.Add(a.get());
    set.SaveToRegistry("View");
    nested.setFixedOffsetY(0);
    gauge.setFixedOffsetY(0);
    set.LoadFromRegistry("View");
    EXPECT_EQ(nested.getFixedOffsetY(), 3);
    EXPECT_EQ(gauge.getFixedOffsetY(), 4);
    EXPECT_EQ(NamesIn(nested.getAdd()), "A ");
    EXPECT_EQ(NamesIn(gauge.getAdd()), "a ") << "one name in the store";
}

}  // namespace
